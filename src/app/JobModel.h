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

struct PalletInfo {
    int32_t No = 0;
    std::string Name;  // 32
    std::array<double, 11> Dims{};
    int32_t Param1 = 0;
    int32_t Param2 = 0;
    double Len1 = 0;
    double Len2 = 0;
    std::string Text2;  // 32
    double OffsetA = 0;
    double OffsetB = 0;
    double Work1 = 0;
    double Work2 = 0;
    int32_t RackXCount = 0;
    int32_t RackYCount = 0;
    std::array<double, 5> RackX{};
    std::array<double, 5> RackY{};
    double RackPitch = 0;
};

struct BoxInfo {
    std::string Name;  // 32
    int32_t No = 0;
    int32_t Kind = 0;
    std::array<double, 4> Size{};
    double Used = 0;
};

struct KouteiInfo {
    int32_t No = 0;
    std::string Name1;  // 32
    std::string Name2;  // 32
    PalletInfo* Mark = nullptr;
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

struct ShapeElement {
    int32_t Kind = kShapeNone;
    uint32_t Color = 0;  // red | green << 8 | blue << 16
    std::array<double, 15> P{};
};

struct PartsInfo {
    int32_t Seq = 0;
    int32_t No = 0;
    std::string Code;  // 8
    int32_t KouteiNo = 0;
    std::string Name;   // 64
    std::string Text1;  // 52
    double SizeX = 0;
    double SizeY = 0;
    int32_t DirCode = 0;
    int32_t Num1 = 0;
    std::array<int32_t, 3> Work{};
    int32_t Num2 = 0;
    int32_t Num3 = 0;
    int32_t Num4 = 0;
    std::string Text2;  // 32
    std::string Text3;  // 64
    double Thick = 0;
    std::string GroupKey;  // 8
    int32_t SortDone = 0;
    std::string Text4;             // 5
    std::string SortCode = "0000";  // 5
    int32_t HasOutline = 0;
    std::string OutlinePath;  // 256
    int32_t ShapeCount = 0;
    std::vector<ShapeElement> Shapes;
    std::string DirText;  // 8
    int32_t Num5 = 0;
    double Value1 = 0;
};

struct HaichiInfo {
    PartsInfo* Part = nullptr;
    int32_t Value = 0;
    int32_t BlockIndex = -1;
    int32_t Level = 0;
    uint8_t Flag = 0;
    double X = 0;
    double Y = 0;
};

// Corner codes of CornerMask and HaichiInfo::Flag.
inline constexpr uint8_t kCornerMinMin = 1;  // (MinX, MinY)
inline constexpr uint8_t kCornerMinMax = 2;  // (MinX, MaxY)
inline constexpr uint8_t kCornerMaxMin = 4;  // (MaxX, MinY)
inline constexpr uint8_t kCornerMaxMax = 8;  // (MaxX, MaxY)

struct BlockInfo {
    int32_t KouteiNo = 0;
    int32_t PalletNo = 0;
    double MinX = 0;
    double MinY = 0;
    double MaxX = 0;
    double MaxY = 0;
    uint8_t CornerMask = 0;
    PartsInfo* Occupant = nullptr;
    int32_t PixLeft = 0;
    int32_t PixTop = 0;
    int32_t PixRight = 0;
    int32_t PixBottom = 0;
};

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
