// Where the offset lines of a pallet stand. The end-of-job check, the crossings the report
// names and the drawing all take the lines from here, each with its own comparison.
#pragma once

#include <array>

#include "app/JobModel.h"

namespace kesto {

// The four lines in the order of a part's sensitive sides (its Text4 flags 1..4).
enum class OffsetSide { Upper, Lower, Left, Right };

struct OffsetLine {
    OffsetSide Side = OffsetSide::Upper;
    double Distance = 0;  // from the pallet's edge: OffsetA, OffsetB, LimitLeft, LimitRight
    double Position = 0;  // y of Upper and Lower, x of Left and Right, in the pallet's lengths
    // A line of 0.01 or less is not drawn, and so nothing is named as crossing it.
    bool Drawn() const { return Distance > 0.01; }
    bool Horizontal() const { return Side == OffsetSide::Upper || Side == OffsetSide::Lower; }
};

// Upper at LengthY - OffsetA, Lower at OffsetB, Left at LimitLeft, Right at LengthX - LimitRight.
std::array<OffsetLine, 4> OffsetLinesOf(const PalletInfo& pallet);

}  // namespace kesto
