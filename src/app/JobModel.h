// The records of one job. Lists keep file and append order; records never move in memory,
// so the links between them (a stack's part, a block's occupant, a process's pallet) hold.
#pragma once

#include <array>
#include <cstdint>
#include <list>
#include <string>
#include <vector>

namespace kesto {

// Widths of the text fields, terminator included; longer input is cut to width - 1 bytes.
inline constexpr size_t kName32 = 32;
inline constexpr size_t kCode8 = 8;
inline constexpr size_t kName64 = 64;
inline constexpr size_t kText52 = 52;
inline constexpr size_t kText5 = 5;
inline constexpr size_t kPath256 = 256;

// Two lengths closer than this are equal in every comparison of the placement, the drawing, the
// sorting and the offset lines.
inline constexpr double kLengthTolerance = 0.0001;

// A length beyond any pallet: a least value not found yet starts at kNoBound, a greatest
// at -kNoBound.
inline constexpr double kNoBound = 9999.999;

// One pallet type: a 'P' line of the pallet definition file, completed by its 'R' lines.
// Lengths are millimetres, or inches when the job runs in inch mode.
struct PalletInfo {
    int32_t No = 0;          // column 1 without its 'P'
    std::string Name;        // column 2 (32); the processes name their pallet by it
    double SaveOffsetX = 0;  // column 3, Dims[0]: subtracted from x in the placement save file
    double SaveOffsetY = 0;  // column 4, Dims[1]: added to y in the save file; enters the offsets
    double LengthX = 0;      // column 5, Dims[2]: x extent, the greatest x a stack may reach
    double LengthY = 0;      // column 6, Dims[3]: y extent, the greatest y a stack may reach
    double MaxStackHeight = 0;  // column 7, Dims[4]: greatest stack height
    double MarginX = 0;         // column 8, Dims[5]: x margin of the cell grid (right end)
    double MarginY = 0;         // column 9, Dims[6]: y margin, the smallest y of a stack
    double CellWidth = 0;       // column 10, Dims[7]: cell width
    double CellDepth = 0;       // column 11, Dims[8]: cell depth
    double CellGapX = 0;        // column 12, Dims[9]: gap between cells in x
    double CellGapY = 0;        // column 13, Dims[10]: gap between cells in y
    int32_t CellsX = 0;         // column 14, Param1: number of cells in x
    int32_t CellsY = 0;         // column 15, Param2: number of cells in y
    double StackGapX = 0;       // column 16, Len1: clearance kept beside a stack in x
    double StackGapY = 0;       // column 17, Len2: clearance kept beside a stack in y
    std::string ScheduleText;   // column 18 (32), Text2: shown for the pallet in the schedule list
    double OffsetA = 0;         // upper limit of the offset check (computed from the command line)
    double OffsetB = 0;         // lower limit of the offset check (the command-line value itself)
    double LimitLeft = 0;       // Work1: left limit of the offset check; 0 when read
    double LimitRight = 0;      // Work2: right limit of the offset check; 0 when read
    int32_t RackXCount = 0;
    int32_t RackYCount = 0;
    std::array<double, 5> RackX{};
    std::array<double, 5> RackY{};
    double RackPitch = 0;  // how far rack lines run past the pallet edge
};

// Columns 3 to 13 of a 'P' line (Dims[0..10]) in file order.
inline constexpr std::array<double PalletInfo::*, 11> kPalletDims{
    &PalletInfo::SaveOffsetX, &PalletInfo::SaveOffsetY,    &PalletInfo::LengthX,
    &PalletInfo::LengthY,     &PalletInfo::MaxStackHeight, &PalletInfo::MarginX,
    &PalletInfo::MarginY,     &PalletInfo::CellWidth,      &PalletInfo::CellDepth,
    &PalletInfo::CellGapX,    &PalletInfo::CellGapY};

// Sets columns 3 to 13 of a pallet from values in file order.
inline void SetDims(PalletInfo& pallet, const std::array<double, 11>& values) {
    for (size_t i = 0; i < kPalletDims.size(); ++i)
        pallet.*kPalletDims[i] = values[i];
}

// The part sizes a box takes, bounds included.
struct SizeRange {
    double MinX = 0;
    double MaxX = 0;
    double MinY = 0;
    double MaxY = 0;
};

// One line of the #BoxInfo section: a pallet box (No below 100) or a small box.
struct BoxInfo {
    std::string Name;     // column 1 (32)
    int32_t No = 0;       // column 2; 100 or more: linked but not counted
    int32_t Kind = 0;     // column 3; written as the box kind of the save file
    SizeRange PartSizes;  // columns 4-7, Size[0..3]: least and greatest SizeX, then SizeY
};

// One line of the #KouteiInfo section: a process and the pallet type its parts go on.
struct KouteiInfo {
    int32_t No = 0;                // column 1
    std::string Name;              // column 2 (32), Name1: shown in the lists and panels
    std::string PalletName;        // column 3 (32), Name2: the Name of its pallet type
    PalletInfo* Pallet = nullptr;  // Mark: that pallet type, found before placement
};

enum ShapeKind : int32_t {
    kShapeNone = 0,
    kShapeLine = 1,
    kShapeCcwArc = 2,
    kShapeCircle = 3,
    kShapeNoAngRect = 4,
    kShapeAngRect = 5,
    kShapePixel = 6,
    kShapeNoScalePixel = 7,
    kShapeNoScaleCircle = 8,
};

// One line of an outline file. Params holds the line's numbers in order, in the part's
// coordinates, the unused rest zero:
//   Line           0,1 start; 2,3 end
//   CcwArc         0,1 start; 2,3 end; 4,5 centre; 6 radius; 7,8 and 9,10 corners of its box
//   Circle         0,1 centre; 2 radius
//   NoAngRect      0,1 and 2,3 opposite corners
//   AngRect        0,1  2,3  4,5  6,7 the four corners, each beside the next
//   Pixel          0,1 the point
//   NoScalePixel   0,1 the point; 2 a size
//   NoScaleCircle  0,1 centre; 2 a size
// The drawing draws the first five kinds.
struct ShapeElement {
    int32_t Kind = kShapeNone;
    uint32_t Color = 0;               // red | green << 8 | blue << 16
    std::array<double, 15> Params{};  // P: the numbers, as listed above for each kind
};

// One line of the #PartsInfo section: one finished part.
struct PartsInfo {
    int32_t Seq = 0;          // 1-based line number among the parts read
    int32_t No = 0;           // column 1 as a number (from its second character when that gives 0)
    std::string Code;         // column 1 as written (8)
    int32_t KouteiNo = 0;     // column 2: the process the part belongs to
    std::string Name;         // column 3 (64)
    std::string DisplayName;  // column 4 (52), Text1: the part's name in the lists
    double SizeX = 0;         // column 5: footprint of one piece in x
    double SizeY = 0;         // column 6: footprint of one piece in y
    int32_t DirCode = 0;      // column 7: 1, 10 or 11 (see DirText)
    int32_t Quantity = 0;     // column 8, Num1: pieces to put down
    int32_t PartialQuantity = 0;  // Work[0]: quantity Auto carries over for a partial placement
    int32_t PiecesPlaced = 0;     // Work[1]: pieces in the part's stacks on the pallets
    int32_t PiecesSetAside = 0;   // Work[2]: pieces accounted for elsewhere (set aside)
    int32_t Destination = 0;      // column 9, Num2: pallet, small box, set-aside or direct code
    int32_t SaveNumber = 0;       // column 10, Num3: carried into the save file
    int32_t PerStackLimit = 0;    // column 11, Num4: greatest pieces in one stack; 0 = no limit
    std::string SheetText;        // column 12 (32), Text2: shown in the part panel
    std::string MaterialName;     // column 13 (64), Text3: shown and sorted by in the part lists
    double Thickness = 0;         // column 14, Thick
    std::string GroupKey;         // column 15 (8): groups the parts of a process when sorted
    int32_t SortDone = 0;         // 1 once the sort has put the part in its place
    std::string SensitiveSides;   // column 16 (5), Text4: '1' per side the offset check covers
    int32_t HasOutline = 0;       // column 18: 1 when the outline file is to be read
    std::string OutlinePath;      // column 17 (256)
    int32_t ShapeCount = 0;
    std::vector<ShapeElement> Shapes;
    std::string DirText;     // "U", "D", "UD" or "" from DirCode (8)
    int32_t SaveKey = 0;     // column 20 from its second character, Num5: key in the save file
    double PieceHeight = 0;  // column 21, Value1: height one piece adds to a stack
    // Pieces per stack the operator last stacked the part again at ("Sheets"); 0 when the
    // placement's own count holds. Never written to a file.
    int32_t OperatorPerStack = 0;
};

// A part fits a box when both its sizes lie within the box's ranges, bounds included.
inline bool PartFitsBox(const PartsInfo& part, const BoxInfo& box) {
    const SizeRange& r = box.PartSizes;
    return r.MinX <= part.SizeX && part.SizeX <= r.MaxX && r.MinY <= part.SizeY &&
           part.SizeY <= r.MaxY;
}

// The name of a stack that stays the same while the stack exists, through undo and redo:
// what the selection, the drawing's tags and the history keep between commands. Ids are
// handed out in list order and never twice in one run; kNoStack names none.
enum class StackId : int32_t {};
inline constexpr StackId kNoStack{0};

// One stack of a part's pieces in a block corner.
struct HaichiInfo {
    StackId Id = kNoStack;  // given by the stack list
    PartsInfo* Part = nullptr;
    int32_t Pieces = 0;       // Value: pieces in the stack
    int32_t BlockIndex = -1;  // the block it stands in (CKestoApp::BlockOf)
    int32_t Level = 0;
    uint8_t Corner = 0;  // Flag: the block corner it stands in (kCorner...)
    uint8_t Edits = 0;   // what the operator did to the stack (kEdit...); never written to a file
    double X = 0;
    double Y = 0;
};

// Bits of HaichiInfo::Edits, for the sort sheet's marks.
inline constexpr uint8_t kEditMoved = 1;      // dropped somewhere by the operator
inline constexpr uint8_t kEditRestacked = 2;  // made by the operator's sheet-count change
inline constexpr uint8_t kEditReturned = 4;   // brought back from the set-aside list

// Corner codes of CornerMask and HaichiInfo::Corner.
inline constexpr uint8_t kCornerMinMin = 1;  // (MinX, MinY)
inline constexpr uint8_t kCornerMinMax = 2;  // (MinX, MaxY)
inline constexpr uint8_t kCornerMaxMin = 4;  // (MaxX, MinY)
inline constexpr uint8_t kCornerMaxMax = 8;  // (MaxX, MaxY)

// BlockInfo::Occupant of a block no part holds. Parts are numbered from 1.
inline constexpr int32_t kNoOccupant = 0;

struct BlockInfo {
    int32_t KouteiNo = 0;
    int32_t PalletNo = 0;
    double MinX = 0;
    double MinY = 0;
    double MaxX = 0;
    double MaxY = 0;
    uint8_t CornerMask = 0;
    // The Seq of the part whose stacks hold the block; kNoOccupant while free.
    int32_t Occupant = kNoOccupant;
};

// The Occupant naming part (none: kNoOccupant).
inline int32_t OccupantOf(const PartsInfo* part) {
    return part != nullptr ? part->Seq : kNoOccupant;
}

// A list of records in append order with the system's own count, which is not always the
// number of records (boxes numbered 100 or more are not counted; removing a stack does not
// lower the count). Records have stable addresses.
template <class T>
struct RecordList {
    std::list<T> Items;
    int32_t Count = 0;

    bool Empty() const { return Items.empty(); }
    T* Head() { return Items.empty() ? nullptr : &Items.front(); }
    auto begin() { return Items.begin(); }
    auto end() { return Items.end(); }
    auto begin() const { return Items.begin(); }
    auto end() const { return Items.end(); }
    // Appends a default record at the tail (the count is the caller's business).
    T& Append() { return Items.emplace_back(); }
    void Clear() { Items.clear(); }
};

}  // namespace kesto
