// What the sheet-count dialog decides: the count that fits under the pallet's height limit,
// the counts its five buttons propose, what a typed count becomes, and whether OK hands a new
// count back. The dialog only shows these values; it changes no job data.
#pragma once

#include <cstdint>
#include <string>

#include "app/CKestoApp.h"
#include "view/MaiPicture.h"

namespace kesto {

// The proposal buttons, by control id.
enum class MaiButton : int32_t {
    Max = kMaiMaxButton,          // "BTKAI": as many as fit under the height limit
    Even = kMaiEvenButton,        // "BT1": the fewest stacks, then the count that fills them
    Half = kMaiHalfButton,        // "BT2": the quantity over twice the part's stacks
    Third = kMaiThirdButton,      // "BT3": ... three times
    Quarter = kMaiQuarterButton,  // "BT4": ... four times
};

class MaiChoice {
  public:
    static constexpr int32_t kNoChange = -1;

    // Opens on the picked stack with the limit heightLimit (the pallet's greatest stack
    // height): Count, StartCount and CompareCount are LimitCount of the part's PerStackLimit,
    // and the edit box shows Count.
    MaiChoice(CKestoApp& app, const HaichiInfo& picked, double heightLimit);

    // The count that fits under the height limit; n below 1 asks for as many as fit.
    int32_t LimitCount(int32_t n) const;
    // q over stacks x k, rounded up, but at most cap.
    static int32_t EvenCount(int32_t q, int32_t cap, int32_t stacks, int32_t k);
    // The part's stacks in HaichiList.
    int32_t StackCount() const;
    // The count a button writes into the edit box.
    int32_t Proposal(MaiButton button) const;

    // A button: Count and CompareCount as the button decides, then the proposal is written
    // into the edit box, which reports it like typing.
    void Press(MaiButton button);
    // The edit box changed to text: Count is the height-limited value of it (read as atol
    // does); the text itself stays as it is.
    void Type(const std::string& text);
    // OK: the new count, or kNoChange when nothing changed or the operator said Cancel to the
    // question. The edit box shows the result.
    int32_t Confirm(Operator& op);

    int32_t Count() const { return count_; }
    int32_t StartCount() const { return startCount_; }
    int32_t CompareCount() const { return compareCount_; }
    const std::string& EditText() const { return editText_; }
    const HaichiInfo& Picked() const { return picked_; }
    const PartsInfo& Part() const;
    double HeightLimit() const { return heightLimit_; }

  private:
    struct EvenSplit {
        int32_t Count = 0;
        int32_t Stacks = 0;
    };
    EvenSplit SplitEvenly() const;
    void WriteEdit(int32_t value);

    CKestoApp& app_;
    const HaichiInfo& picked_;
    double heightLimit_;
    int32_t count_ = 0;
    int32_t startCount_ = 0;
    int32_t compareCount_ = 0;
    std::string editText_;
};

}  // namespace kesto
