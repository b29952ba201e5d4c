#include "ui/main/WindowJournal.h"

#include <QMessageBox>
#include <system_error>

#include "render/TextCodec.h"
#include "session/JournalReplay.h"
#include "ui/draw/CKs_DrawArea.h"
#include "ui/main/CKestoDlg.h"

namespace kesto {

WindowJournal::WindowJournal(JobSession& session, OperatorRelay& relay, std::string stateFolder)
    : session_(session), relay_(relay), stateFolder_(std::move(stateFolder)) {}

WindowJournal::~WindowJournal() {
    session_.JournalIn(nullptr);
    if (identity_.valid())
        identity_.wait();
}

void WindowJournal::Begin() {
    // The paths are taken here; the thread only reads files.
    inputs_ = InputsOf(session_);
    try {
        identity_ =
            std::async(std::launch::async, [inputs = inputs_] { return IdentityOf(inputs); });
    } catch (const std::system_error&) {
        // No thread to be had: the identity is worked out when it is needed.
    }
}

std::string WindowJournal::Identity() {
    return identity_.valid() ? identity_.get() : IdentityOf(inputs_);
}

void WindowJournal::Start(CKestoDlg& window) {
    journal_.emplace(stateFolder_, Identity());
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
}

bool WindowJournal::AskRestore(CKestoDlg& window, const std::string& question) {
    QMessageBox box(QMessageBox::Question, QString(), DecodeText(question),
                    QMessageBox::Yes | QMessageBox::No, &window);
    box.setObjectName("RecoveryQuestion");
    box.setDefaultButton(QMessageBox::Yes);
    return box.exec() == QMessageBox::Yes;
}

}  // namespace kesto
