// The dice of the random operators that edit a job step by step (the session's and the
// window's): one seeded engine, so that a seed repeats a run step for step.
#pragma once

#include <cstdint>
#include <functional>
#include <random>
#include <vector>

namespace kesto::test {

// One kind of step and how often it comes, relative to the other kinds.
struct WeightedStep {
    int Weight = 0;
    std::function<void()> Run;
};

class RandomOperator {
  public:
    explicit RandomOperator(uint32_t seed) : rng_(seed) {}

    int Uniform(int lo, int hi) { return std::uniform_int_distribution<int>(lo, hi)(rng_); }
    bool Chance(int percent) { return Uniform(0, 99) < percent; }

    // Runs one of the steps, drawn with a chance of its weight over all the weights.
    void RunOneOf(const std::vector<WeightedStep>& steps) {
        int total = 0;
        for (const WeightedStep& step : steps)
            total += step.Weight;
        int roll = Uniform(0, total - 1);
        for (const WeightedStep& step : steps) {
            if (roll < step.Weight) {
                step.Run();
                return;
            }
            roll -= step.Weight;
        }
    }

  private:
    std::mt19937 rng_;
};

}  // namespace kesto::test
