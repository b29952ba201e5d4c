#include "history/EditHistory.h"

#include <cctype>

#include "app/CKestoApp.h"
#include "view/Selection.h"

namespace kesto {

namespace {

// "To set-aside" -> "STEP-TO-SET-ASIDE".
std::string StepKey(const std::string& name) {
    std::string key = "STEP-";
    for (const char c : name)
        key += c == ' ' ? '-' : static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    return key;
}

std::string Word(const MessageTable& messages, const std::string& key, const std::string& english) {
    return TextOr(messages, "MainDlg", key, english);
}

std::string MenuText(const MessageTable& messages, const char* key, const char* english,
                     const std::string& step) {
    const std::string word = Word(messages, key, english);
    return step.empty() ? word : word + " " + Word(messages, StepKey(step), step);
}

}  // namespace

std::string UndoMenuText(const EditHistory& history, const MessageTable& messages) {
    return MenuText(messages, "M-UNDO", "Undo", history.UndoName());
}

std::string RedoMenuText(const EditHistory& history, const MessageTable& messages) {
    return MenuText(messages, "M-REDO", "Redo", history.RedoName());
}

EditHistory::EditHistory(size_t maxSteps, size_t maxBytes)
    : maxSteps_(maxSteps), maxBytes_(maxBytes) {}

EditHistory::Step EditHistory::Capture(const std::string& name, const CKestoApp& app,
                                       const Selection& selection, ViewPlace view,
                                       const JobSnapshot* like) {
    return Step{name, JobSnapshot::Take(app, like), selection, view};
}

void EditHistory::Apply(const Step& step, CKestoApp& app, Selection& selection) {
    // The selection names stacks by id, which the restore gives back to them.
    step.Job.Restore(app);
    selection = step.Picks;
}

void EditHistory::Record(const std::string& name, const CKestoApp& app, const Selection& selection,
                         ViewPlace view) {
    ClearSteps(redo_);
    PushBack(undo_, Capture(name, app, selection, view, CanUndo() ? &undo_.back().Job : nullptr));
    Trim();
}

void EditHistory::Begin(const std::string& name, const CKestoApp& app, const Selection& selection,
                        ViewPlace view) {
    pending_ = Capture(name, app, selection, view, CanUndo() ? &undo_.back().Job : nullptr);
}

void EditHistory::Commit() {
    if (!pending_)
        return;
    ClearSteps(redo_);
    PushBack(undo_, std::move(*pending_));
    pending_.reset();
    Trim();
}

void EditHistory::Swap(std::deque<Step>& from, std::deque<Step>& to, CKestoApp& app,
                       Selection& selection, ViewPlace* view) {
    Step step = PopBack(from);
    PushBack(to,
             Capture(step.Name, app, selection, view != nullptr ? *view : ViewPlace{}, &step.Job));
    Apply(step, app, selection);
    if (view != nullptr)
        *view = step.View;
}

bool EditHistory::Undo(CKestoApp& app, Selection& selection, ViewPlace* view) {
    if (!CanUndo())
        return false;
    Swap(undo_, redo_, app, selection, view);
    return true;
}

bool EditHistory::Redo(CKestoApp& app, Selection& selection, ViewPlace* view) {
    if (!CanRedo())
        return false;
    Swap(redo_, undo_, app, selection, view);
    return true;
}

void EditHistory::Trim() {
    while (undo_.size() > maxSteps_)
        PopFront(undo_);
    while (undo_.size() > 1 && Bytes() > maxBytes_)
        PopFront(undo_);
}

void EditHistory::PushBack(std::deque<Step>& steps, Step step) {
    steps.push_back(std::move(step));
    Count(steps.back(), 1);
}

EditHistory::Step EditHistory::PopBack(std::deque<Step>& steps) {
    Count(steps.back(), -1);
    Step step = std::move(steps.back());
    steps.pop_back();
    return step;
}

void EditHistory::PopFront(std::deque<Step>& steps) {
    Count(steps.front(), -1);
    steps.pop_front();
}

void EditHistory::ClearSteps(std::deque<Step>& steps) {
    for (const Step& s : steps)
        Count(s, -1);
    steps.clear();
}

void EditHistory::Count(const Step& step, int by) {
    const size_t own =
        sizeof(Step) + step.Name.capacity() + step.Job.OwnBytes() + step.Picks.Bytes();
    bytes_ = by > 0 ? bytes_ + own : bytes_ - own;
    step.Job.ForShared([&](const void* copy, size_t bytes) {
        if (by > 0) {
            if (++holders_[copy] == 1)
                bytes_ += bytes;
            return;
        }
        const auto it = holders_.find(copy);
        if (--it->second == 0) {
            bytes_ -= bytes;
            holders_.erase(it);
        }
    });
}

std::vector<std::string> EditHistory::UndoNames() const {
    std::vector<std::string> names;
    for (const Step& s : undo_)
        names.push_back(s.Name);
    return names;
}

size_t EditHistory::Bytes() const {
    return bytes_;
}

void EditHistory::Clear() {
    ClearSteps(undo_);
    ClearSteps(redo_);
    pending_.reset();
}

}  // namespace kesto
