// The job's journal in the window: the commands written into the state folder, an unfinished
// journal of an earlier run offered back (Return restores it), set aside on No, and a journal
// that cannot be written told in the status line.
#include "ui/main/WindowJournal.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QTimer>
#include <QtTest/QTest>
#include <filesystem>
#include <string>

#include "common/TestFiles.h"
#include "common/WindowJob.h"
#include "history/Journal.h"
#include "ui/draw/CKs_DrawArea.h"

namespace kesto {
namespace {

namespace fs = std::filesystem;

// The question, once it is up: its text and default button, answered with a key.
struct Answerer {
    void Arm(int key) {
        QTimer::singleShot(0, [this, key] {
            auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            if (box == nullptr)
                return;
            Asked = box->objectName();
            Text = box->text();
            DefaultIsYes = static_cast<QAbstractButton*>(box->defaultButton()) ==
                           box->button(QMessageBox::Yes);
            QTest::keyClick(box, static_cast<Qt::Key>(key));
        });
    }
    QString Asked;
    QString Text;
    bool DefaultIsYes = false;
};

// The journal's command lines, without their time.
std::vector<std::string> Commands(const kesto::JournalFile& journal) {
    std::vector<std::string> lines;
    for (const auto& [number, line] : journal.Lines)
        lines.push_back(FormatJournalCommand(line.Command));
    return lines;
}

class WindowJournalTest : public ::testing::Test {
  protected:
    WindowJournalTest() {
        job.Install.Write("msg/Kesto.ini", test::KestoIniWithDrawing());
        job.Svc.Host.State = state.Path().string();
    }
    bool Open() { return job.Open() && test::ShowLaidOut(*job.Dialog, 1600, 900); }
    std::string JournalFile() const { return JournalPath(state.Path().string(), hex); }
    // The line naming the drawing area's size as the window has it now.
    std::string AreaLine() const {
        const IntRect& r = job.Dialog->DrawArea()->Drawing().Area();
        return "area " + std::to_string(r.Right - r.Left) + " " + std::to_string(r.Bottom - r.Top);
    }
    // The journal this job's earlier run left: these commands and no end.
    void LeaveJournal(const std::string& commands) {
        test::WriteFile(fs::path(JournalFile()), JournalHeader(hex) + commands);
    }

    test::TempFolder state;
    test::WindowJob job;
    OperatorRelay relay{job.Svc.Op};
    std::string hex;
};

TEST_F(WindowJournalTest, TheCommandsFromTheStartOnAreWrittenIntoTheStateFolder) {
    ASSERT_TRUE(Open());
    WindowJournal journal(*job.Session, relay, job.Svc.Host.State);
    journal.Start(*job.Dialog);
    job.Dialog->OnView(PalletView::Danmen);
    const std::string path = journal.Journal()->Path();
    EXPECT_EQ(path, JournalPath(state.Path().string(), JobIdentityOf(*job.Session)));
    const kesto::JournalFile read = ReadJournalFile(path);
    EXPECT_EQ(read.Error, "");
    EXPECT_EQ(Commands(read),
              (std::vector<std::string>{"direct 0", "blockdraw 0", AreaLine(), "view danmen"}));
}

// The drops of a replay are made on the drawing laid out as the window had it: a resize is
// written down once the new layout is in place, and a layout at the same size is not. The new
// layout shows the first small box of the page again, which is written down as such.
TEST_F(WindowJournalTest, AResizeOfTheDrawingAreaIsWrittenDown) {
    ASSERT_TRUE(Open());
    WindowJournal journal(*job.Session, relay, job.Svc.Host.State);
    journal.Start(*job.Dialog);
    const std::string before = AreaLine();
    job.Dialog->resize(1300, 760);
    QApplication::processEvents();
    const std::string after = AreaLine();
    ASSERT_NE(after, before);
    job.Dialog->OnView(PalletView::Danmen);
    EXPECT_EQ(Commands(ReadJournalFile(journal.Journal()->Path())),
              (std::vector<std::string>{"direct 0", "blockdraw 0", before,
                                        "box " + std::to_string(job.Dialog->Shown().Box()), after,
                                        "view danmen"}));
}

TEST_F(WindowJournalTest, ReturnRestoresAnUnfinishedJournalAndTheJournalGoesOn) {
    ASSERT_TRUE(Open());
    hex = JobIdentityOf(*job.Session);
    // undo with nothing to take back: a correction that changes nothing here.
    LeaveJournal(
        "2026-11-26T10:00:00.000 view danmen\n2026-11-26T10:00:10.000 undo\n"
        "2026-11-26T10:01:30.250 grid 0\n");
    WindowJournal journal(*job.Session, relay, job.Svc.Host.State);
    Answerer answer;
    answer.Arm(Qt::Key_Return);
    journal.Start(*job.Dialog);
    EXPECT_EQ(answer.Asked, "RecoveryQuestion");
    EXPECT_TRUE(answer.DefaultIsYes);
    EXPECT_TRUE(answer.Text.contains("2026-11-26 10:01:30")) << answer.Text.toStdString();
    EXPECT_TRUE(answer.Text.contains(" 1 correction")) << answer.Text.toStdString();
    EXPECT_EQ(job.Dialog->Shown().Mode(), PalletView::Danmen);
    EXPECT_FALSE(job.Dialog->Shown().Grid());
    job.Dialog->OnView(PalletView::Flat);
    EXPECT_EQ(Commands(ReadJournalFile(JournalFile())),
              (std::vector<std::string>{"view danmen", "undo", "grid 0", "direct 0", "blockdraw 0",
                                        AreaLine(), "view flat"}));
}

TEST_F(WindowJournalTest, ADropTheReplaySawRefusedLeavesNoWordInTheStatusLine) {
    ASSERT_TRUE(Open());
    hex = JobIdentityOf(*job.Session);
    // Far off every pallet: refused, and a correction all the same.
    LeaveJournal("2026-11-26T10:00:00.000 drop 1600 900 -400 -400 -300 -350 0\n");
    WindowJournal journal(*job.Session, relay, job.Svc.Host.State);
    Answerer answer;
    answer.Arm(Qt::Key_Return);
    journal.Start(*job.Dialog);
    EXPECT_EQ(answer.Asked, "RecoveryQuestion");
    auto* status = job.Dialog->DrawArea()->findChild<QLabel*>("DropStatus");
    ASSERT_NE(status, nullptr);
    EXPECT_FALSE(status->isVisible());
}

TEST_F(WindowJournalTest, NoSetsTheJournalAsideAndStartsANewOne) {
    ASSERT_TRUE(Open());
    hex = JobIdentityOf(*job.Session);
    LeaveJournal("2026-11-26T10:00:00.000 view danmen\n2026-11-26T10:00:10.000 undo\n");
    WindowJournal journal(*job.Session, relay, job.Svc.Host.State);
    Answerer answer;
    answer.Arm(Qt::Key_Escape);
    journal.Start(*job.Dialog);
    EXPECT_EQ(answer.Asked, "RecoveryQuestion");
    EXPECT_EQ(job.Dialog->Shown().Mode(), PalletView::Flat);
    EXPECT_TRUE(fs::exists(JournalFile() + ".discarded"));
    // A new journal starts with the per-user values (none stored here).
    EXPECT_EQ(Commands(ReadJournalFile(JournalFile())),
              (std::vector<std::string>{"direct 0", "blockdraw 0", AreaLine()}));
}

TEST_F(WindowJournalTest, AJournalThatCannotBeWrittenIsToldInTheStatusLineAndTheWindowGoesOn) {
    ASSERT_TRUE(Open());
    test::WriteFile(state.Path() / "journal", "a file where the folder should be");
    WindowJournal journal(*job.Session, relay, job.Svc.Host.State);
    journal.Start(*job.Dialog);
    auto* status = job.Dialog->DrawArea()->findChild<QLabel*>("DropStatus");
    ASSERT_NE(status, nullptr);
    EXPECT_TRUE(status->isVisible());
    EXPECT_TRUE(status->text().startsWith("The corrections are not journaled"))
        << status->text().toStdString();
    job.Dialog->OnView(PalletView::Danmen);
    EXPECT_EQ(job.Dialog->Shown().Mode(), PalletView::Danmen);
}

}  // namespace
}  // namespace kesto
