// The colours of the pallet drawing and the part panels. The operators know the picture by
// them, so they are fixed here and nowhere else.
#pragma once

#include "view/Canvas.h"

namespace kesto::colour {

// Drawing area.
inline constexpr Rgb kAreaBackground{69, 79, 122};
inline constexpr Rgb kPalletFrame{87, 156, 159};  // also the cross-section band
inline constexpr Rgb kSeparator{192, 192, 192};
inline constexpr int32_t kSeparatorWidth = 4;
inline constexpr Rgb kBlockMarked{190, 143, 152};  // a cell with corner bits set
inline constexpr Rgb kBlockPlain{163, 95, 118};    // other cells, and every cell's outline
inline constexpr Rgb kGridMark{0, 0, 0};
inline constexpr Rgb kRackLine{255, 255, 255};
inline constexpr Rgb kHeightLimit{254, 48, 115};

// Parts and stacks.
inline constexpr Rgb kPartNormal{96, 141, 191};     // also stacked layers 2 to 9
inline constexpr Rgb kLayer10{150, 180, 207};       // layers 10 to 19, and the side-view bars
inline constexpr Rgb kLayer20{213, 215, 191};       // layers 20 and more
inline constexpr Rgb kPicked{130, 255, 139};        // the picked record, or each in the band
inline constexpr Rgb kSamePart{252, 255, 108};      // other pieces of the picked part
inline constexpr Rgb kSamePartLine{252, 100, 108};  // their outlines
inline constexpr Rgb kPartPen{255, 255, 255};
inline constexpr Rgb kLabelText{0, 0, 0};
inline constexpr Rgb kOffsetLine{255, 0, 0};
inline constexpr int32_t kOffsetLineWidth = 2;

// Parts whose sensitive sides are marked: what MarkColour turns the fills into.
inline constexpr Rgb kMarkedNormal{224, 48, 186};
inline constexpr Rgb kMarkedPicked{233, 113, 207};

// Part panels.
inline constexpr Rgb kPanelBackground{136, 146, 172};
inline constexpr Rgb kPanelText{255, 255, 255};
inline constexpr Rgb kPanelShort{255, 236, 96};  // why a part is short
inline constexpr Rgb kPanelPart{96, 141, 191};
inline constexpr Rgb kPanelPartPen{0, 0, 0};

// The sheet-count dialog's picture of the stack height.
inline constexpr Rgb kMaiBackground{136, 146, 172};
inline constexpr Rgb kMaiDark{0, 0, 0};         // top and left frame edges
inline constexpr Rgb kMaiLight{255, 255, 255};  // other edges, floor, new stack, labels
inline constexpr Rgb kMaiLimit{255, 0, 0};      // the height limit and its value
inline constexpr Rgb kMaiCurrentStack{150, 180, 207};
inline constexpr Rgb kMaiValue{72, 255, 255};  // the current stack's tick and texts, values

}  // namespace kesto::colour
