// The job's stacks in append order with the system's count, and each stack's id: the name by
// which whatever outlives a command (the selection, the drawing's tags, the history) refers to
// a stack. A stack keeps its id and its address while it exists; an id is never given twice
// in one run, so that an id kept past a command finds its stack or nothing.
#pragma once

#include <cstddef>
#include <cstdint>
#include <list>
#include <optional>
#include <vector>

#include "app/JobModel.h"

namespace kesto {

class StackList {
  public:
    StackList() = default;
    StackList(const StackList& other);
    StackList& operator=(const StackList& other);
    StackList(StackList&&) noexcept = default;
    StackList& operator=(StackList&&) noexcept = default;

    // The system's count: stacks made since the job was read; removing one does not lower it.
    int32_t Count = 0;

    bool Empty() const { return items_.empty(); }
    size_t size() const { return items_.size(); }
    HaichiInfo* Head() { return items_.empty() ? nullptr : &items_.front(); }
    HaichiInfo& front() { return items_.front(); }
    HaichiInfo& back() { return items_.back(); }
    const HaichiInfo& front() const { return items_.front(); }
    const HaichiInfo& back() const { return items_.back(); }
    auto begin() { return items_.begin(); }
    auto end() { return items_.end(); }
    auto begin() const { return items_.begin(); }
    auto end() const { return items_.end(); }

    // A default stack at the tail with the next id (the count is the caller's business).
    HaichiInfo& Append();
    // A stack at the tail with the id it had when it was copied away; ids must come in
    // increasing order, from the first id the list was given on.
    HaichiInfo& AppendWithId(StackId id);
    // Takes the stack out; its id then finds nothing.
    void Remove(const HaichiInfo* stack);
    // No stacks; the ids given so far are not given again.
    void Clear();

    // The stack with that id, or null when it is gone (or never was).
    HaichiInfo* Find(StackId id);
    const HaichiInfo* Find(StackId id) const;

    // The stack's place in the list, 0 for the first: how the journal names a stack, since a
    // replay gives the stacks new ids. None when the stack is gone.
    std::optional<size_t> PositionOf(StackId id) const;
    // The stack at that place, or null past the end.
    HaichiInfo* AtPosition(size_t position);

    // The ids [FirstId, NextId) are those given since the list was last cleared.
    StackId FirstId() const { return firstId_; }
    StackId NextId() const { return nextId_; }
    // Empties the list and gives ids from first on, the next new one being next: how a copy
    // taken away is put back.
    void ResetIds(StackId first, StackId next);

  private:
    size_t SlotOf(StackId id) const;
    void Reindex();

    std::list<HaichiInfo> items_;
    // byId_[id - firstId_]: the stack with that id, null once removed.
    std::vector<HaichiInfo*> byId_;
    StackId firstId_{1};
    StackId nextId_{1};
};

}  // namespace kesto
