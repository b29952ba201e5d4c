#include "rules/ListLines.h"

#include <gtest/gtest.h>

#include "common/PartFields.h"

namespace kesto {
namespace {

// The bracket of these lines: DisplayName "Bracket", 200 x 150.5, DirText "UD", the rest as
// named.
PartsInfo Bracket(test::PartFields fields) {
    fields.DisplayName = "Bracket";
    fields.SizeX = 200;
    fields.SizeY = 150.5;
    PartsInfo part = test::MakePart(fields);
    part.DirText = "UD";
    return part;
}

TEST(AllPartsLine, FullyPlacedPalletPartShowsPAndBlank) {
    EXPECT_EQ(AllPartsLine(Bracket({.Seq = 7, .Quantity = 5, .PiecesPlaced = 5, .Destination = 1})),
              "007    5/5    P  UD Bracket                           200.0000 x  150.5000");
}

TEST(AllPartsLine, MissingPiecesShowPMinus) {
    EXPECT_EQ(StateMark(Bracket({.Seq = 7, .Quantity = 5, .PiecesPlaced = 3, .Destination = 1})),
              "P-");
    EXPECT_EQ(AllPartsLine(Bracket({.Seq = 7, .Quantity = 5, .PiecesPlaced = 3, .Destination = 1}))
                  .substr(0, 15),
              "007    3/5    P");
}

TEST(AllPartsLine, SetAsidePartCountsAsPallet) {
    EXPECT_EQ(StateMark(Bracket({.Seq = 1, .Quantity = 4, .Destination = 1000})), "P-");
}

TEST(AllPartsLine, SmallBoxPartShowsBlankMark) {
    EXPECT_EQ(StateMark(Bracket({.Seq = 1, .Quantity = 4, .Destination = 100})), "  ");
}

TEST(AllPartsLine, LongTextIsCutTo32Characters) {
    PartsInfo part = Bracket({.Seq = 1, .Quantity = 1, .PiecesPlaced = 1, .Destination = 1});
    part.DisplayName = std::string(40, 'x');
    const std::string line = AllPartsLine(part);
    EXPECT_NE(line.find(std::string(32, 'x') + " "), std::string::npos);
    EXPECT_EQ(line.find(std::string(33, 'x')), std::string::npos);
}

// "A" and sixteen katakana in Shift_JIS: 33 bytes, the 32-byte cut falls inside the last one.
std::string ShiftJisNameOf33Bytes() {
    std::string name = "A";
    for (int i = 0; i < 16; ++i)
        name += "\x83\x65";
    return name;
}

TEST(AllPartsLine, ShiftJisNameKeepsTheColumnWidthWithoutHalfACharacter) {
    PartsInfo part = Bracket({.Seq = 1, .Quantity = 1, .PiecesPlaced = 1, .Destination = 1});
    part.DisplayName = ShiftJisNameOf33Bytes();
    const std::string line = AllPartsLine(part);
    EXPECT_EQ(line,
              AllPartsLine(Bracket({.Seq = 1, .Quantity = 1, .PiecesPlaced = 1, .Destination = 1}))
                  .replace(20, 32, part.DisplayName.substr(0, 31) + " "));
}

TEST(AllPartsLine, Utf8NameIsCutBetweenCharacters) {
    PartsInfo part = Bracket({.Seq = 1, .Quantity = 1, .PiecesPlaced = 1, .Destination = 1});
    part.DisplayName.clear();
    for (int i = 0; i < 11; ++i)
        part.DisplayName += "\xE3\x83\x86";  // 33 bytes: the cut keeps ten characters
    const std::string line = AllPartsLine(part);
    EXPECT_EQ(line.substr(20, 32), part.DisplayName.substr(0, 30) + "  ");
}

TEST(SmallBoxLine, ShiftJisNameIsCutBeforeTheCharacterThatDoesNotFit) {
    PartsInfo part = Bracket({.Seq = 12, .Quantity = 3, .Destination = 100});
    part.DisplayName = ShiftJisNameOf33Bytes();
    EXPECT_EQ(SmallBoxLine(part), "012    3 " + part.DisplayName.substr(0, 31));
    EXPECT_EQ(ToriokiLine(part), "012    3/3    " + part.DisplayName.substr(0, 31));
}

TEST(SmallBoxLine, SeqCountAndText) {
    EXPECT_EQ(SmallBoxLine(Bracket({.Seq = 12, .Quantity = 3, .Destination = 100})),
              "012    3 Bracket");
}

TEST(ToriokiLine, ShowsRemainingPiecesOfQuantity) {
    EXPECT_EQ(ToriokiLine(Bracket({.Seq = 3, .Quantity = 5, .PiecesPlaced = 3, .Destination = 1})),
              "003    2/5    Bracket");
}

TEST(ToriokiLine, SeqOf1000PrintsFourDigits) {
    EXPECT_EQ(ToriokiLine(Bracket({.Seq = 1000, .Quantity = 1, .Destination = 1000})).substr(0, 5),
              "1000 ");
}

TEST(InTorioki, OnlySetAsideAndShortPalletParts) {
    EXPECT_TRUE(InTorioki(Bracket({.Seq = 1, .Quantity = 5, .PiecesPlaced = 3, .Destination = 1})));
    EXPECT_FALSE(
        InTorioki(Bracket({.Seq = 1, .Quantity = 5, .PiecesPlaced = 5, .Destination = 1})));
    EXPECT_TRUE(InTorioki(Bracket({.Seq = 1, .Quantity = 5, .Destination = 1000})));
    EXPECT_FALSE(InTorioki(Bracket({.Seq = 1, .Quantity = 5, .Destination = 100})));
    EXPECT_FALSE(InTorioki(Bracket({.Seq = 1, .Quantity = 5, .Destination = 99999})));
}

TEST(InSmallBox, MatchesTheBoxCodeOnly) {
    EXPECT_TRUE(InSmallBox(Bracket({.Seq = 1, .Quantity = 1, .Destination = 101}), 101));
    EXPECT_FALSE(InSmallBox(Bracket({.Seq = 1, .Quantity = 1, .Destination = 101}), 100));
}

TEST(ScheduleLine, UsesThePalletsScheduleTextWhenPresent) {
    CKestoApp app;
    PalletInfo& pallet = app.PalletList.Append();
    pallet.Name = "PAL1";
    pallet.ScheduleText = "Pallet-One";
    KouteiInfo koutei;
    koutei.No = 3;
    koutei.Name = "Cut";
    koutei.PalletName = "PAL1";
    EXPECT_EQ(ScheduleLine(app, koutei), "03 Cut Pallet-One");
    pallet.ScheduleText.clear();
    EXPECT_EQ(ScheduleLine(app, koutei), "03 Cut PAL1");
    koutei.PalletName = "NONE";
    EXPECT_EQ(ScheduleLine(app, koutei), "03 Cut NONE");
}

TEST(PalletSelectLine, PrefixDashTwoDigits) {
    EXPECT_EQ(PalletSelectLine("P", 4), "P-04");
    EXPECT_EQ(PalletSelectLine("P", 123), "P-123");
}

TEST(SeqOfLine, ReadsTheLeadingNumber) {
    EXPECT_EQ(SeqOfLine("012    3 Bracket"), 12);
    EXPECT_EQ(SeqOfLine("Bracket"), 0);
}

}  // namespace
}  // namespace kesto
