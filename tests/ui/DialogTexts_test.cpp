// The texts a screen reader gets, set on the widgets of a dialog.
#include "ui/dialogs/DialogTexts.h"

#include <gtest/gtest.h>

#include <QLineEdit>
#include <QPushButton>

#include "common/TestFiles.h"
#include "common/TestServices.h"
#include "common/WindowJob.h"

namespace kesto {
namespace {

TEST(DialogTexts, SpeakSetsTheNameAndTheDescription) {
    test::EnsureQApplication();
    QLineEdit edit;
    Speak(edit, ControlText{"Sheet count", "Sheets a stack takes"});
    EXPECT_EQ(edit.accessibleName(), "Sheet count");
    EXPECT_EQ(edit.accessibleDescription(), "Sheets a stack takes");
}

TEST(DialogTexts, AButtonWithoutANameKeepsItsCaptionAsItsName) {
    test::EnsureQApplication();
    QPushButton button("Accept");
    Speak(button, ControlText{"", "Stacks the part again"});
    EXPECT_TRUE(button.accessibleName().isEmpty());
    EXPECT_EQ(button.accessibleDescription(), "Stacks the part again");
}

// The section's own texts come first: "AN-" and "AD-" of the control's key.
TEST(DialogTexts, EveryNamedChildGetsItsSectionsTexts) {
    test::EnsureQApplication();
    test::TempFolder folder;
    test::RecordingOperator op;
    test::WriteFile(folder / "Kesto.ini", "[MaihenDlg]\nAN-MaiSet=1,\"Sheets\"\n");
    MessageTable messages;
    ASSERT_EQ(messages.Load(folder / "Kesto.ini", op), 0);
    QWidget dialog;
    auto* count = new QLineEdit(&dialog);
    count->setObjectName("MaiSet");
    auto* ok = new QPushButton("OK", &dialog);
    ok->setObjectName("ButtonOk");
    auto* other = new QLineEdit(&dialog);
    other->setObjectName("Other");
    SpeakDialogControls(dialog, "MaihenDlg", messages);
    EXPECT_EQ(count->accessibleName(), "Sheets");
    EXPECT_FALSE(count->accessibleDescription().isEmpty());
    EXPECT_FALSE(ok->accessibleDescription().isEmpty());
    EXPECT_TRUE(other->accessibleDescription().isEmpty());
}

}  // namespace
}  // namespace kesto
