#include "ui/main/WindowJournal.h"

#include <QMessageBox>

#include "render/TextCodec.h"
#include "session/JournalReplay.h"
#include "ui/draw/CKs_DrawArea.h"
#include "ui/main/CKestoDlg.h"

namespace kesto {

WindowJournal::WindowJournal(JobSession& session, OperatorRelay& relay, std::string stateFolder)
    : session_(session), relay_(relay), stateFolder_(std::move(stateFolder)) {}

WindowJournal::~WindowJournal() {
    session_.JournalIn(nullptr);
}

void WindowJournal::Start(CKestoDlg& window) {
    journal_.emplace(stateFolder_, JobIdentityOf(session_));
    const MessageTable& messages = session_.Svc().Messages;
    journal_->OnFailure([&window, &messages](const std::string& path) {
        window.DrawArea()->ShowStatus(DecodeText(NoJournalText(messages, path)));
    });
    if (const std::optional<UnfinishedJournal> found = journal_->Unfinished()) {
        if (AskRestore(window, RecoveryQuestion(messages, *found))) {
            QuietOperator quiet;
            JournalReplay replay(session_, window.DrawArea()->Drawing(), window.Editing(), relay_,
                                 quiet);
            replay.Run(found->File);
            window.ShowWholeJob();
        } else {
            journal_->Discard();
        }
    }
    journal_->Open();
    session_.JournalIn(&*journal_);
    session_.JournalSettings();
    const IntRect& client = window.DrawArea()->Drawing().Area();
    session_.JournalArea(client.Right - client.Left, client.Bottom - client.Top);
}

bool WindowJournal::AskRestore(CKestoDlg& window, const std::string& question) {
    QMessageBox box(QMessageBox::Question, QString(), DecodeText(question),
                    QMessageBox::Yes | QMessageBox::No, &window);
    box.setObjectName("RecoveryQuestion");
    box.setDefaultButton(QMessageBox::Yes);
    return box.exec() == QMessageBox::Yes;
}

}  // namespace kesto
