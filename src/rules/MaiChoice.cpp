#include "rules/MaiChoice.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "app/Codes.h"
#include "support/TextFile.h"
#include "support/TextFormat.h"

namespace kesto {

namespace {

// A record without a part (never opened so by the window) reads as a part with nothing set.
const PartsInfo kNoPart{};

// q / d rounded up, for q of 0 or more and d of 1 or more.
int64_t DivideUp(int64_t q, int64_t d) {
    return (q + d - 1) / d;
}

// How many whole pieces a height ratio allows: truncated toward zero, and never negative or
// beyond int32 (a negative limit, or a tiny piece height under a large one, cannot wrap).
int32_t WholePieces(double ratio) {
    if (std::isnan(ratio) || ratio <= 0)
        return 0;
    constexpr double kMax = std::numeric_limits<int32_t>::max();
    return static_cast<int32_t>(std::min(std::trunc(ratio), kMax));
}

}  // namespace

MaiChoice::MaiChoice(CKestoApp& app, const HaichiInfo& picked, double heightLimit)
    : app_(app), picked_(picked), heightLimit_(heightLimit) {
    count_ = LimitCount(Part().PerStackLimit);
    startCount_ = count_;
    compareCount_ = count_;
    WriteEdit(count_);
}

const PartsInfo& MaiChoice::Part() const {
    return picked_.Part != nullptr ? *picked_.Part : kNoPart;
}

int32_t MaiChoice::LimitCount(int32_t n) const {
    const double h = Part().PieceHeight;
    // Pieces without height never reach the limit: any count fits, and "as many as fit" is
    // the part's whole quantity, the most one stack can ever need.
    if (h == 0 || !std::isfinite(h))
        return n >= 1 ? n : std::max(Part().Quantity, 0);
    if (n >= 1 && !(heightLimit_ < n * h))
        return n;
    return WholePieces(heightLimit_ / h);
}

int32_t MaiChoice::EvenCount(int32_t q, int32_t cap, int32_t stacks, int32_t k) {
    // No stacks (or no share) leaves nothing to divide by: the quantity goes into one stack.
    // A negative quantity counts as none.
    const int64_t divisor = std::max<int64_t>(int64_t{stacks} * k, 1);
    const int64_t c = DivideUp(std::max(q, 0), divisor);
    return c < cap ? static_cast<int32_t>(c) : cap;
}

int32_t MaiChoice::StackCount() const {
    int32_t stacks = 0;
    for (const HaichiInfo& h : app_.HaichiList) {
        if (h.Part == picked_.Part)
            ++stacks;
    }
    return stacks;
}

MaiChoice::EvenSplit MaiChoice::SplitEvenly() const {
    const int32_t q = std::max(Part().Quantity, 0);
    const int32_t cap = LimitCount(Part().PerStackLimit);
    // When not one piece fits under the limit (or there is nothing to place) the split falls
    // back to one piece a stack, the floor of the largest-count button too.
    const int32_t c = std::max(EvenCount(q, cap, 1, 1), 1);
    EvenSplit split{c, static_cast<int32_t>(DivideUp(q, c))};
    if (q % c != 0)
        split.Count = static_cast<int32_t>(DivideUp(q, split.Stacks));
    return split;
}

int32_t MaiChoice::Proposal(MaiButton button) const {
    const PartsInfo& part = Part();
    switch (button) {
        case MaiButton::Max:
            return std::max(LimitCount(part.PerStackLimit), 1);
        case MaiButton::Even:
            return SplitEvenly().Count;
        case MaiButton::Half:
            return EvenCount(part.Quantity, part.PerStackLimit, StackCount(), 2);
        case MaiButton::Third:
            return EvenCount(part.Quantity, part.PerStackLimit, StackCount(), 3);
        case MaiButton::Quarter:
            return EvenCount(part.Quantity, part.PerStackLimit, StackCount(), 4);
    }
    return count_;
}

void MaiChoice::Press(MaiButton button) {
    count_ = Proposal(button);
    if (button == MaiButton::Even) {
        // The even split that gives back exactly the stacks there are is no change.
        const EvenSplit split = SplitEvenly();
        if (split.Stacks == StackCount() && split.Count == picked_.Pieces)
            compareCount_ = kNoChange;
    } else if (button != MaiButton::Max) {
        compareCount_ = startCount_;
    }
    WriteEdit(count_);
}

void MaiChoice::Type(const std::string& text) {
    editText_ = text;
    count_ = LimitCount(AtoL(text));
}

int32_t MaiChoice::Confirm(Operator& op) {
    WriteEdit(count_);
    int32_t result = count_;
    if (compareCount_ == kNoChange || compareCount_ == count_) {
        result = kNoChange;
    } else if (op.AskKaku(kaku::kAskCountChange, kaku::kAskCountChange2) != OkCancel::Ok) {
        result = kNoChange;
    }
    // The result goes into the edit box, and the dialog's data exchange reads it back from
    // there: whatever the box's change notice made of it, the count is the written value.
    editText_ = FormatText("%ld", static_cast<long>(result));
    count_ = result;
    return result;
}

void MaiChoice::WriteEdit(int32_t value) {
    Type(FormatText("%ld", static_cast<long>(value)));
}

}  // namespace kesto
