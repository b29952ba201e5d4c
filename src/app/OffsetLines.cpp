#include "app/OffsetLines.h"

namespace kesto {

std::array<OffsetLine, 4> OffsetLinesOf(const PalletInfo& p) {
    return {{{OffsetSide::Upper, p.OffsetA, p.LengthY - p.OffsetA},
             {OffsetSide::Lower, p.OffsetB, p.OffsetB},
             {OffsetSide::Left, p.LimitLeft, p.LimitLeft},
             {OffsetSide::Right, p.LimitRight, p.LengthX - p.LimitRight}}};
}

}  // namespace kesto
