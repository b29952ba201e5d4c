// The names and descriptions the main window's controls give assistive technology: from the
// message file where it has them, else a word for a sign caption, the caption, English.
#include "view/ControlTexts.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>

#include "common/TestFiles.h"
#include "common/TestServices.h"
#include "view/Controls.h"

namespace kesto {
namespace {

class ControlTextsTest : public testing::Test {
  protected:
    void Load(const std::string& lines) {
        {
            std::ofstream out(folder / "Kesto.ini");
            out << "[MainDlg]\n" << lines;
        }
        ASSERT_EQ(messages.Load(folder / "Kesto.ini", op), 0);
    }
    test::TempFolder folder;
    test::RecordingOperator op;
    MessageTable messages;
};

TEST_F(ControlTextsTest, TheMessageFilesOwnNameAndDescriptionComeFirst) {
    Load("B-PTOT=3,\"<\"\nAN-B-PTOT=3,\"Aside\"\nAD-B-PTOT=3,\"Puts the pick aside\"\n");
    const ControlText text = AccessibleText("B-PTOT", messages);
    EXPECT_EQ(text.Name, "Aside");
    EXPECT_EQ(text.Description, "Puts the pick aside");
}

TEST_F(ControlTextsTest, ACaptionThatIsASignIsNamedInWords) {
    Load("B-PTOT=3,\"<\"\nB-SBOXN=3,\">>\"\n");
    EXPECT_EQ(AccessibleText("B-PTOT", messages).Name, "Set aside");
    EXPECT_EQ(AccessibleText("B-PTOT", messages).Description,
              "Sets the picked stacks aside (Delete)");
    EXPECT_EQ(AccessibleText("B-SBOXN", messages).Name, "Next small boxes");
}

TEST_F(ControlTextsTest, AControlIsNamedByItsCaptionOrElseTheBuiltInOne) {
    Load("B-RETRY=3,\"Again\"\nB-GRID=3,\"?????\"\nLIST-SCH=2,\"Processes\"\n");
    EXPECT_EQ(AccessibleText("B-RETRY", messages).Name, "Again");
    EXPECT_EQ(AccessibleText("B-RETRY", messages).Description,
              "Places the job again from the input files");
    // "?????" keeps the caption the program was built with, and so does a missing key.
    EXPECT_EQ(AccessibleText("B-GRID", messages).Name, "Grid");
    EXPECT_EQ(AccessibleText("B-AUTO", messages).Name, "Auto");
    EXPECT_EQ(AccessibleText("LIST-SCH", messages).Name, "Processes");
}

TEST_F(ControlTextsTest, TheDrawingAndThePanelsHaveTextsToo) {
    Load("INFO-STRING=1,\"Part information\"\n");
    EXPECT_EQ(AccessibleText("DRAWING", messages).Name, "Pallet drawing");
    EXPECT_NE(AccessibleText("DRAWING", messages).Description.find("Escape"), std::string::npos);
    EXPECT_EQ(AccessibleText("INFO-STRING", messages).Name, "Part information");
    EXPECT_FALSE(AccessibleText("VIEW-STRING", messages).Description.empty());
}

TEST_F(ControlTextsTest, EveryKeyedControlIsSpokenOfAndNoOtherKey) {
    Load("");
    const std::vector<std::string_view> keys = AccessibleKeys();
    for (const ControlEntry& entry : kControls) {
        if (entry.Key == nullptr || entry.Kind == ControlKind::SecondCaption)
            continue;
        EXPECT_NE(std::find(keys.begin(), keys.end(), entry.Key), keys.end()) << entry.Key;
        const ControlText text = AccessibleText(entry.Key, messages);
        EXPECT_FALSE(text.Name.empty()) << entry.Key;
        EXPECT_FALSE(text.Description.empty()) << entry.Key;
    }
    EXPECT_EQ(AccessibleText("B-NEST-D", messages).Name, "");
    EXPECT_EQ(AccessibleText("NO-SUCH-KEY", messages).Description, "");
}

// --- the dialogs over the main window ---

TEST_F(ControlTextsTest, ADialogsOwnSectionNamesAndDescribesItsControls) {
    {
        std::ofstream out(folder / "Kesto.ini");
        out << "[MaihenDlg]\nAN-MaiSet=1,\"Sheets\"\nAD-BT1=1,\"Evenly\"\n"
            << "[MainDlg]\nAN-MaiSet=1,\"Wrong section\"\n";
    }
    ASSERT_EQ(messages.Load(folder / "Kesto.ini", op), 0);
    EXPECT_EQ(DialogControlText("MaihenDlg", "MaiSet", messages).Name, "Sheets");
    EXPECT_EQ(DialogControlText("MaihenDlg", "BT1", messages).Description, "Evenly");
    // A button has no name of its own: its caption is read.
    EXPECT_EQ(DialogControlText("MaihenDlg", "BT1", messages).Name, "");
    EXPECT_EQ(DialogControlText("PartsAlInfDlg", "LIST", messages).Name, "All parts");
    // The same key in another dialog is another control.
    EXPECT_EQ(DialogControlText("PartsAlInfDlg", "BT1", messages).Description,
              "Sorts the lines by material");
    EXPECT_EQ(DialogControlText("KakuDlg", "NO-SUCH-KEY", messages).Description, "");
    EXPECT_EQ(DialogControlText("NoSuchDlg", "LIST", messages).Description, "");
}

TEST_F(ControlTextsTest, EveryDialogControlHasADescription) {
    Load("");
    for (const char* section : {"MaihenDlg", "PartsAlInfDlg", "KakuDlg", "About"}) {
        const std::vector<std::string_view> keys = DialogControlKeys(section);
        EXPECT_FALSE(keys.empty()) << section;
        for (const std::string_view key : keys)
            EXPECT_FALSE(DialogControlText(section, key, messages).Description.empty()) << key;
    }
}

}  // namespace
}  // namespace kesto
