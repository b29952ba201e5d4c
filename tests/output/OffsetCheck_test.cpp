#include "common/OutputTestKit.h"
#include "output/CKs_FileSave.h"
#include "support/MessageFile.h"

namespace kesto::test {
namespace {

// Pallet "PAL" 1000 wide and 800 long: a stack must stay below y 750, above y 30, right of
// x 20 and left of x 960.
class OffsetCheck : public OutputTest {
  protected:
    void SetUp() override {
        OutputTest::SetUp();
        app_->Settings.OffsetSet = 1;
        AddKoutei(1, "PAL");
        PalletInfo& pallet = AddPallet(1, "PAL");
        pallet.LengthX = 1000;
        pallet.LengthY = 800;
        pallet.OffsetA = 50;
        pallet.OffsetB = 30;
        pallet.LimitLeft = 20;
        pallet.LimitRight = 40;
        WriteFile(dir_ / "sys" / "Kesto.ini",
                  "[KakuDlg]\nMsg209=1,\"Offset over\"\nMsg210=NoFont\n");
    }
    // A 100 x 100 stack whose right edge is x and lower edge y, of a part whose sensitive sides
    // are `sides` (set after the part is made, so that "" stays empty).
    void AddStackAt(const std::string& sides, double x, double y) {
        PartsInfo& part = AddPart({.Code = "P" + std::to_string(app_->PartsList.Count + 1),
                                   .SizeX = 100,
                                   .SizeY = 100,
                                   .Quantity = 1});
        part.SensitiveSides = sides;
        AddStack(*app_, part,
                 {.Block = AddBlock(1, 1), .Pieces = 1, .X = x, .Y = y, .CountOnPart = true});
    }
    int Check() { return FileSave().CheckOffsets(processOnView_); }
    int32_t processOnView_ = 1;
};

TEST_F(OffsetCheck, StacksExactlyOnTheLimitsRaiseNoWarning) {
    AddStackAt("1111", 960, 650);
    AddStackAt("1111", 120, 30);
    AddStackAt("1111", 960.00005, 29.99995);

    EXPECT_EQ(Check(), 1);

    EXPECT_TRUE(operator_.Warnings.empty());
}

TEST_F(OffsetCheck, EachSideBeyondItsLimitWarnsWithMessage209) {
    const struct {
        const char* SensitiveSides;
        double X, Y;
    } cases[] = {{"1000", 500, 650.001},
                 {"0100", 500, 29.999},
                 {"0010", 119.999, 300},
                 {"0001", 960.001, 300}};
    for (const auto& c : cases) {
        app_->HaichiList.Clear();
        operator_.Warnings.clear();
        AddStackAt(c.SensitiveSides, c.X, c.Y);
        EXPECT_EQ(Check(), 1) << c.SensitiveSides;
        EXPECT_EQ(operator_.Warnings, (std::vector<std::string>{"Offset over"}))
            << c.SensitiveSides;
    }
}

TEST_F(OffsetCheck, Text4Of0100IsCheckedOnlyAgainstOffsetB) {
    AddStackAt("0100", 2000, 900);
    AddStackAt("0100", 0, 30);
    EXPECT_EQ(Check(), 1);
    EXPECT_TRUE(operator_.Warnings.empty());

    AddStackAt("0100", 500, 10);
    EXPECT_EQ(Check(), 1);
    EXPECT_EQ(operator_.Warnings.size(), 1u);
}

TEST_F(OffsetCheck, CancelAtTheWarningAsksToEndTheProcess) {
    AddStackAt("1111", 2000, 300);
    operator_.Answer = OkCancel::Cancel;

    EXPECT_EQ(Check(), 0);

    EXPECT_EQ(operator_.Warnings.size(), 1u);
}

TEST_F(OffsetCheck, OffsetSetZeroChecksNothing) {
    AddStackAt("1111", 2000, 2000);
    app_->Settings.OffsetSet = 0;

    EXPECT_EQ(Check(), 1);

    EXPECT_TRUE(operator_.Warnings.empty());
}

TEST_F(OffsetCheck, PartsMarked0000OrWithoutStacksAreNotChecked) {
    AddStackAt("0000", 2000, 2000);
    AddStackAt("", 2000, 2000);
    AddStackAt("1", 2000, 0);
    AddPart({.Code = "NoStack", .Quantity = 1, .SensitiveSides = "1111"});

    EXPECT_EQ(Check(), 1);

    EXPECT_TRUE(operator_.Warnings.empty());
}

TEST_F(OffsetCheck, ProcessWithoutAPalletOfItsNameChecksNothing) {
    AddStackAt("1111", 2000, 2000);
    app_->KouteiList.Head()->PalletName = "OTHER";

    EXPECT_EQ(Check(), 1);

    EXPECT_TRUE(operator_.Warnings.empty());
}

TEST_F(OffsetCheck, PalletFoundByNameAnywhereInTheList) {
    AddStackAt("1111", 2000, 300);
    app_->PalletList.Items.push_front(PalletInfo{});
    app_->PalletList.Head()->Name = "FIRST";

    EXPECT_EQ(Check(), 1);

    EXPECT_EQ(operator_.Warnings.size(), 1u);
}

TEST_F(OffsetCheck, CurrentProcessOutsideTheListChecksNothing) {
    AddStackAt("1111", 2000, 2000);
    for (int32_t position : {0, 2, -1}) {
        processOnView_ = position;
        EXPECT_EQ(Check(), 1);
    }
    processOnView_ = 1;
    app_->KouteiList.Clear();
    EXPECT_EQ(Check(), 1);
    AddKoutei(1, "PAL");
    app_->PalletList.Clear();
    EXPECT_EQ(Check(), 1);

    EXPECT_TRUE(operator_.Warnings.empty());
}

TEST_F(OffsetCheck, KakuTextIsTheTextFieldOfItsOwnTable) {
    CKs_FileSave save = FileSave();

    EXPECT_EQ(save.GetKakuText("Msg209"), "Offset over");
    EXPECT_EQ(save.GetKakuText("Msg210"), "NoFont");
    EXPECT_EQ(save.GetKakuText("Msg999"), "Message Not Define");
    EXPECT_FALSE(testServices_.Messages.Loaded());
    EXPECT_TRUE(operator_.Messages.empty());
}

TEST_F(OffsetCheck, MissingSettingsFileShowsAnEmptyWarning) {
    fs::remove(dir_ / "sys" / "Kesto.ini");
    AddStackAt("1111", 2000, 300);

    EXPECT_EQ(Check(), 1);

    EXPECT_EQ(operator_.Messages, (std::vector<std::string>{"Initial File Not found"}));
    EXPECT_EQ(operator_.Warnings, (std::vector<std::string>{""}));
}

TEST_F(OffsetCheck, SettingsFileThatCannotBeReadIsAnInitialError) {
    // It exists but cannot be opened as a file.
    fs::remove(dir_ / "sys" / "Kesto.ini");
    const std::string path = (dir_ / "sys" / "Kesto.ini").string();
    ASSERT_NO_FATAL_FAILURE(test::MakeUnopenable(path));

    EXPECT_EQ(FileSave().GetKakuText("Msg209"), "");

    ASSERT_FALSE(operator_.Messages.empty());
    EXPECT_EQ(operator_.Messages.back(), "Initial File Initial Error");
}

}  // namespace
}  // namespace kesto::test
