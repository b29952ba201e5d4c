// The controls of the main window: their ids and the one table from which the window is built,
// labelled and laid out.
#pragma once

#include <cstddef>
#include <iterator>
#include <string_view>

namespace kesto {

// The control ids of the dialog template.
enum ControlId : int {
    kOk = 1,
    kCancel = 2,
    kSmallBoxList = 1000,
    kScheduleList = 1001,
    kToriokiList = 1002,
    kAllPartsList = 1003,
    kSmallBoxLabel = 1004,
    kToriokiLabel = 1005,
    kAllPartsLabel = 1006,
    kDownButton = 1007,   // small box to set-aside
    kUpButton = 1008,     // set-aside to small box
    kLeftButton = 1012,   // pallets to set-aside
    kRightButton = 1013,  // set-aside to pallets
    kPartViewPlace = 1014,
    kScheduleLabel = 1015,
    kRetryButton = 1016,
    kAutoButton = 1017,
    kMaiChgButton = 1018,
    kHitLabel = 1019,
    kInfoButton = 1024,
    kFlatButton = 1025,
    kDanmenButton = 1026,
    kTwoPalletButton = 1027,
    kGridToggle = 1028,
    k3DToggle = 1029,
    kFourPalletButton = 1030,
    kNestToggle = 1031,  // IsDirect on/off
    kBlockDrawToggle = 1032,
    kHitByBlock = 1035,
    kHitSingle = 1036,
    kBoxButton1 = 1037,
    kBoxButton2 = 1038,
    kBoxButton3 = 1039,
    kInfoPlace = 1040,
    kPageNext = 1041,
    kPagePrevious = 1042,
    kPalletCombo = 1044,
};

// The system-menu command of the version box.
constexpr int kAboutCommand = 16;

enum class ControlKind {
    Label,
    Button,
    Toggle,     // checkable push button
    List,       // one line selectable
    MultiList,  // several lines selectable
    Combo,
    Frame,          // hidden placeholder whose rectangle a panel takes
    SecondCaption,  // a second key of a control made by an earlier entry
};

struct ControlEntry {
    ControlId Id;
    const char* Key;      // message-file key of section "MainDlg"; none for the frames
    const char* Caption;  // the template's caption; none for lists, combo and frames
    ControlKind Kind;
};

// The label pass walks the 36 keyed entries in this order; the two frames follow.
inline constexpr ControlEntry kControls[] = {
    {kSmallBoxLabel, "L-SMALLBOX", "SmallBox", ControlKind::Label},
    {kScheduleLabel, "L-SCH", "Sch", ControlKind::Label},
    {kToriokiLabel, "L-TORIOKI", "Torioki", ControlKind::Label},
    {kAllPartsLabel, "L-ALLPARTS", "AllParts", ControlKind::Label},
    {kBoxButton1, "B-SBOX1", "B1", ControlKind::Toggle},
    {kBoxButton2, "B-SBOX2", "B2", ControlKind::Toggle},
    {kBoxButton3, "B-SBOX3", "B3", ControlKind::Toggle},
    {kDownButton, "B-STOT", "Down", ControlKind::Button},
    {kUpButton, "B-TTOS", "Up", ControlKind::Button},
    {kLeftButton, "B-PTOT", "left", ControlKind::Button},
    {kRightButton, "B-TTOP", "right", ControlKind::Button},
    {kRetryButton, "B-RETRY", "Retry", ControlKind::Button},
    {kAutoButton, "B-AUTO", "Auto", ControlKind::Button},
    {kMaiChgButton, "B-MAICHG", "MaiChg", ControlKind::Button},
    {kHitLabel, "L-HIT", "Hit", ControlKind::Label},
    {kHitByBlock, "B-HITB", "Block", ControlKind::Toggle},
    {kHitSingle, "B-HITS", "Single", ControlKind::Toggle},
    {k3DToggle, "B-3D", "3D", ControlKind::Toggle},
    {kGridToggle, "B-GRID", "Grid", ControlKind::Toggle},
    {kInfoButton, "B-INFO", "Info", ControlKind::Button},
    {kFlatButton, "B-FLAT", "FLAT", ControlKind::Button},
    {kDanmenButton, "B-DANMEN", "DANMEN", ControlKind::Button},
    {kTwoPalletButton, "B-PALLET2", "2PALLET", ControlKind::Button},
    {kOk, "B-OK", "OK", ControlKind::Button},
    {kAllPartsList, "LIST-PTALL", nullptr, ControlKind::MultiList},
    {kScheduleList, "LIST-SCH", nullptr, ControlKind::List},
    {kSmallBoxList, "LIST-SBOX", nullptr, ControlKind::List},
    {kToriokiList, "LIST-TORIOKI", nullptr, ControlKind::List},
    {kPalletCombo, "LIST-PALLET-SEL", nullptr, ControlKind::Combo},
    {kFourPalletButton, "B-PALLET4", "4PALLET", ControlKind::Button},
    {kPagePrevious, "B-SBOXP", "<<", ControlKind::Toggle},
    {kPageNext, "B-SBOXN", ">>", ControlKind::Toggle},
    {kNestToggle, "B-NEST-A", "Direct", ControlKind::Toggle},
    {kNestToggle, "B-NEST-D", "Direct", ControlKind::SecondCaption},
    {kBlockDrawToggle, "B-BLOCKDRAW", "Block", ControlKind::Toggle},
    {kCancel, "B-CAN", "Can", ControlKind::Button},
    {kPartViewPlace, nullptr, nullptr, ControlKind::Frame},
    {kInfoPlace, nullptr, nullptr, ControlKind::Frame},
};

// Entries of the label pass, index 0 to 35.
inline constexpr size_t kLabelledControls = 36;
// Its text is also the caption prefix of the small-box buttons.
inline constexpr size_t kBoxCaptionIndex = 4;
// The captions of kNestToggle for IsDirect 0 and not 0.
inline constexpr size_t kNestAIndex = 32;
inline constexpr size_t kNestDIndex = 33;

static_assert(std::size(kControls) == kLabelledControls + 2);
static_assert(std::string_view(kControls[kLabelledControls - 1].Key) == "B-CAN");
static_assert(std::string_view(kControls[kBoxCaptionIndex].Key) == "B-SBOX1");
static_assert(std::string_view(kControls[kNestAIndex].Key) == "B-NEST-A");
static_assert(std::string_view(kControls[kNestDIndex].Key) == "B-NEST-D");

// The small-box buttons of a page, first to third.
inline constexpr ControlId kBoxButtons[3] = {kBoxButton1, kBoxButton2, kBoxButton3};

// Horizontal scroll extents of the lists, in pixels.
inline constexpr int kSmallBoxListExtent = 650;
inline constexpr int kListExtent = 720;

}  // namespace kesto
