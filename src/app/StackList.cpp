#include "app/StackList.h"

#include <iterator>

namespace kesto {

namespace {

int32_t Raw(StackId id) {
    return static_cast<int32_t>(id);
}

}  // namespace

StackList::StackList(const StackList& other)
    : Count(other.Count), items_(other.items_), firstId_(other.firstId_), nextId_(other.nextId_) {
    Reindex();
}

StackList& StackList::operator=(const StackList& other) {
    if (this != &other) {
        StackList copy(other);
        *this = std::move(copy);
    }
    return *this;
}

void StackList::Reindex() {
    byId_.assign(static_cast<size_t>(Raw(nextId_) - Raw(firstId_)), nullptr);
    for (HaichiInfo& h : items_) {
        const size_t slot = SlotOf(h.Id);
        if (slot < byId_.size())
            byId_[slot] = &h;
    }
}

size_t StackList::SlotOf(StackId id) const {
    // Ids before firstId_ wrap to a slot past the end.
    return static_cast<size_t>(static_cast<uint32_t>(Raw(id) - Raw(firstId_)));
}

HaichiInfo& StackList::Append() {
    const StackId id = nextId_;
    // Room for the slot first, so that running out of memory leaves the list as it was; the
    // room grows by halves, as push_back's would.
    if (byId_.size() == byId_.capacity())
        byId_.reserve(byId_.size() + byId_.size() / 2 + 16);
    HaichiInfo& h = items_.emplace_back();
    h.Id = id;
    byId_.push_back(&h);
    nextId_ = StackId{Raw(id) + 1};
    return h;
}

HaichiInfo& StackList::AppendWithId(StackId id) {
    const size_t slot = SlotOf(id);
    if (slot >= byId_.size())
        byId_.resize(slot + 1, nullptr);
    HaichiInfo& h = items_.emplace_back();
    h.Id = id;
    byId_[slot] = &h;
    if (Raw(id) >= Raw(nextId_))
        nextId_ = StackId{Raw(id) + 1};
    return h;
}

void StackList::Remove(const HaichiInfo* stack) {
    for (auto it = items_.begin(); it != items_.end(); ++it) {
        if (&*it != stack)
            continue;
        const size_t slot = SlotOf(it->Id);
        if (slot < byId_.size() && byId_[slot] == &*it)
            byId_[slot] = nullptr;
        items_.erase(it);
        return;
    }
}

std::optional<size_t> StackList::PositionOf(StackId id) const {
    size_t position = 0;
    for (const HaichiInfo& h : items_) {
        if (h.Id == id)
            return position;
        ++position;
    }
    return std::nullopt;
}

HaichiInfo* StackList::AtPosition(size_t position) {
    if (position >= items_.size())
        return nullptr;
    return &*std::next(items_.begin(), static_cast<std::ptrdiff_t>(position));
}

void StackList::Clear() {
    items_.clear();
    byId_.clear();
    firstId_ = nextId_;
}

HaichiInfo* StackList::Find(StackId id) {
    const size_t slot = SlotOf(id);
    return slot < byId_.size() ? byId_[slot] : nullptr;
}

const HaichiInfo* StackList::Find(StackId id) const {
    const size_t slot = SlotOf(id);
    return slot < byId_.size() ? byId_[slot] : nullptr;
}

void StackList::ResetIds(StackId first, StackId next) {
    items_.clear();
    byId_.assign(static_cast<size_t>(Raw(next) - Raw(first)), nullptr);
    firstId_ = first;
    nextId_ = next;
}

}  // namespace kesto
