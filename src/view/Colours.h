// The colours of the pallet drawing and the part panels. The operators know the picture by
// them, so they are fixed here and nowhere else: the screen's as named constants, and the
// two palettes the pallet drawing is drawn with (the screen's, and the print's for paper).
#pragma once

#include <optional>

#include "view/Canvas.h"

namespace kesto::colour {

// Drawing area.
inline constexpr Rgb kAreaBackground{69, 79, 122};
inline constexpr Rgb kPalletFrame{87, 156, 159};  // also the cross-section band
// The pallet outside the blocks of the process in view: no stack of it can stand there.
inline constexpr Rgb kOutsideZone{58, 104, 107};
// Where a dragged stack would land, shown before the release.
inline constexpr Rgb kLanding{0, 229, 255};
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

// Every colour the pallet drawing paints with. The drawing takes one palette and reads all
// its colours from it, so the same drawing comes out on the screen or on paper.
struct Palette {
    Rgb AreaBackground;
    Rgb PalletFrame;     // fill of the pallet frames and the cross-section bands
    Rgb PalletFramePen;  // their outline
    Rgb Separator;
    Rgb BlockMarked;
    Rgb BlockPlain;
    Rgb BlockPen;  // every cell's outline
    Rgb GridMark;
    Rgb RackLine;
    Rgb HeightLimit;
    Rgb PartNormal;
    Rgb Layer10;
    Rgb Layer20;
    Rgb Picked;
    Rgb SamePart;
    Rgb SamePartLine;
    Rgb PartPen;
    Rgb LabelText;
    Rgb OffsetLine;
    Rgb MarkedNormal;
    Rgb MarkedPicked;
    // The pen of outline elements drawn in no colour of the drawing's own; none keeps each
    // element's colour from its outline file.
    std::optional<Rgb> OutlinePen;
    // The pallet outside the zone of the process's blocks; the frame's own fill: not shaded.
    Rgb OutsideZone;
    // The landing of a dragged stack.
    Rgb Landing;
};

inline constexpr Palette kScreenPalette{
    kAreaBackground, kPalletFrame,  kPalletFrame,  kSeparator,    kBlockMarked, kBlockPlain,
    kBlockPlain,     kGridMark,     kRackLine,     kHeightLimit,  kPartNormal,  kLayer10,
    kLayer20,        kPicked,       kSamePart,     kSamePartLine, kPartPen,     kLabelText,
    kOffsetLine,     kMarkedNormal, kMarkedPicked, std::nullopt,  kOutsideZone, kLanding};

// White paper and dark outlines; stacks are filled light enough that black labels on them
// read in black and white, and the marked parts stay a shade apart from the others.
inline constexpr Palette kPrintPalette{
    .AreaBackground = {255, 255, 255},
    .PalletFrame = {246, 246, 246},
    .PalletFramePen = {40, 40, 40},
    .Separator = {160, 160, 160},
    .BlockMarked = {232, 232, 232},
    .BlockPlain = {255, 255, 255},
    .BlockPen = {150, 150, 150},
    .GridMark = {0, 0, 0},
    .RackLine = {120, 120, 120},
    .HeightLimit = {170, 0, 40},
    .PartNormal = {204, 224, 244},
    .Layer10 = {222, 234, 246},
    .Layer20 = {238, 238, 222},
    .Picked = {200, 240, 200},
    .SamePart = {250, 250, 190},
    .SamePartLine = {180, 40, 40},
    .PartPen = {20, 20, 20},
    .LabelText = {0, 0, 0},
    .OffsetLine = {200, 0, 0},
    .MarkedNormal = {246, 208, 232},
    .MarkedPicked = {250, 224, 242},
    .OutlinePen = Rgb{20, 20, 20},
    // The sheet's white cells on the grey pallet already tell the zone apart.
    .OutsideZone = {246, 246, 246},
    .Landing = {0, 110, 190},
};

}  // namespace kesto::colour
