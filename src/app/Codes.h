// The codes of the job: error codes, the numbered messages the program raises, destination
// codes, and the states and modes several layers share. One catalogue, so that no number
// stands bare in two places.
#pragma once

#include <cstdint>

namespace kesto {

// The error codes of start-up, input, placement and output (Outcome::Code).
namespace error {
inline constexpr int32_t kNone = 0;
inline constexpr int32_t kSettingsFileMissing = 9001;  // "Kesto.ini" not found
inline constexpr int32_t kJobFileMissing = 9010;
inline constexpr int32_t kJobFileUnreadable = 9011;
inline constexpr int32_t kNoMemoryForBox = 9012;
inline constexpr int32_t kNoMemoryForKoutei = 9013;
inline constexpr int32_t kNoMemoryForPart = 9014;
inline constexpr int32_t kNoMemoryForStack = 9015;
inline constexpr int32_t kPalletFileMissing = 9020;
inline constexpr int32_t kPalletFileUnreadable = 9021;
inline constexpr int32_t kNoMemoryForPallet = 9022;
// The result file reuses the pallet file's two numbers, as the machine's hosts expect.
inline constexpr int32_t kResultFileUnopened = 9021;
inline constexpr int32_t kResultFileUnwritten = 9022;
inline constexpr int32_t kSaveFileUnopened = 9023;
inline constexpr int32_t kSaveFileStackLine = 9024;
inline constexpr int32_t kSaveFileUnplacedLine = 9025;
inline constexpr int32_t kOutlineUnreadable = 9026;
inline constexpr int32_t kBlockTableAlloc = 9101;
inline constexpr int32_t kBlockTableOverflow = 9102;
}  // namespace error

// Numbers of the confirmation dialog's messages ("Msg%.3d" of section "KakuDlg"). Up to 200
// they inform, above 200 they ask.
namespace kaku {
inline constexpr int32_t kNone = 0;
inline constexpr int32_t kNoPalletForKoutei = 1;
inline constexpr int32_t kUnknownBox = 2;
inline constexpr int32_t kDestinationNotAllowed = 3;
inline constexpr int32_t kNotASmallBox = 4;
inline constexpr int32_t kOutsideSmallBoxSize = 5;  // with its second line 6
inline constexpr int32_t kOutsideSmallBoxSize2 = 6;
inline constexpr int32_t kNoLineSelected = 7;
inline constexpr int32_t kPartsLeftShort = 8;
inline constexpr int32_t kNothingPlacedBack = 9;
inline constexpr int32_t kPartlyPlaced = 10;
inline constexpr int32_t kPiecesOnPallets = 11;  // with its second line 12
inline constexpr int32_t kPiecesOnPallets2 = 12;
inline constexpr int32_t kOutsidePalletBoxSize = 13;  // with its second line 14
inline constexpr int32_t kOutsidePalletBoxSize2 = 14;
inline constexpr int32_t kBandSelectionActive = 15;
inline constexpr int32_t kLastInforming = 200;
// Numbers up to kLastInforming only inform: their box has OK alone, which is the answer.
inline constexpr bool OnlyInforms(int32_t no1) {
    return no1 >= 1 && no1 <= kLastInforming;
}
inline constexpr int32_t kAskRetry = 202;  // with its second line 203
inline constexpr int32_t kAskRetry2 = 203;
inline constexpr int32_t kAskAuto = 204;  // with its second line 205
inline constexpr int32_t kAskAuto2 = 205;
inline constexpr int32_t kAskCountChange = 206;  // with its second line 207
inline constexpr int32_t kAskCountChange2 = 207;
inline constexpr int32_t kAskDeleteResult = 208;
inline constexpr const char* kOffsetWarningKey = "Msg209";
}  // namespace kaku

// Destination codes of a part (PartsInfo::Destination).
namespace destination {
inline constexpr int32_t kFirstSmallBox = 100;  // small box 1
inline constexpr int32_t kLastSmallBox = 198;   // small box 99
inline constexpr int32_t kTorioki = 1000;       // the set-aside area
inline constexpr int32_t kDirectA = 99998;      // special codes, allowed only by the command line
inline constexpr int32_t kDirectB = 99999;
}  // namespace destination

// Below 100: the pallets of the part's process.
inline bool IsPalletCode(int32_t code) {
    return code < destination::kFirstSmallBox;
}
inline bool IsSmallBox(int32_t code) {
    return code >= destination::kFirstSmallBox && code <= destination::kLastSmallBox;
}
inline bool IsTorioki(int32_t code) {
    return code == destination::kTorioki;
}
inline bool IsDirectCode(int32_t code) {
    return code == destination::kDirectA || code == destination::kDirectB;
}
// Small box n (1..99) has code n + 99.
inline int32_t SmallBoxCode(int32_t n) {
    return n + destination::kFirstSmallBox - 1;
}
inline int32_t SmallBoxNumber(int32_t code) {
    return code - destination::kFirstSmallBox + 1;
}
inline constexpr int32_t kSmallBoxSlots = 99;

// The view of the drawing area (ViewState::Mode), numbered as its buttons.
enum class PalletView : int32_t {
    Flat = 0,        // one pallet from above
    Danmen = 1,      // one pallet, the cross-section below it
    FourPallet = 2,  // four pallets from above
    TwoPallet = 3,   // two pallets, each with its cross-section
};

// The modes of CKs_Haichi::StackPart and PlaceOnePart.
enum class Stacking {
    AllPallets,        // every pallet of the process
    PalletsInView,     // the current pallet and its neighbours by view
    AllPalletsCapped,  // every pallet, capped and shared as in view
};

// Whether a part placed in view or capped has its quantity shared out over the stacks made.
enum class QuantityShare {
    SharedOut,
    AsPlaced,  // the pieces placed back from the set-aside area join the stacks as they are
};

// Which count of each part a placement run stacks (JobSession::LoadAndPlace,
// CKs_Haichi::PlaceAll).
enum class PlacedCounts : int {
    Quantity = 0,  // the part's Quantity; a part left short is reported
    Kept = 1,      // the count kept from the run before (PartialQuantity), reported by nobody
};

// Whether a placement run starts from the placement save file.
enum class SavedPlacement : int {
    Ignore = 0,   // every part is placed
    Restore = 1,  // the file is restored, trimmed and filled first; parts it placed in full are
                  // passed over
};

}  // namespace kesto
