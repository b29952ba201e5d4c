// SHA-256 (FIPS 180-4) of a stream of bytes, for naming a job by what it is made of. Small and
// self-contained: the core uses only the standard library.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace kesto {

class Sha256 {
  public:
    Sha256();
    // Adds bytes to the message; pieces fed one after the other hash as their concatenation.
    void Update(std::string_view bytes);
    // Pads the message and returns its digest. Call it once: the object is spent afterwards,
    // and a later Update or Finish gives no meaningful result.
    std::array<uint8_t, 32> Finish();

  private:
    void Compress(const uint8_t* block);

    std::array<uint32_t, 8> state_;
    std::array<uint8_t, 64> block_{};
    size_t used_ = 0;          // bytes of block_ waiting for the next compression
    uint64_t totalBytes_ = 0;  // the message's length so far
};

// The digest as 64 lowercase hexadecimal digits.
std::string ToHex(const std::array<uint8_t, 32>& digest);
// The digest of bytes as 64 lowercase hexadecimal digits.
std::string Sha256Hex(std::string_view bytes);

}  // namespace kesto
