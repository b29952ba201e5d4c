// The block table of a job: the block corners of every process's pallets, built from the
// pallets' cells. A block is named by its index, which stays its own until the table is built
// anew; stacks and the save file refer to blocks by it.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "app/JobModel.h"

namespace kesto {

// The indexes of the filled blocks of one process, of one of its pallets when given, in table
// order: what a range-for over the blocks of a process walks.
class BlockIndexes {
  public:
    struct End {};
    class Iterator {
      public:
        Iterator(const BlockIndexes& set, int32_t at) : set_(&set), at_(at) { Skip(); }
        int32_t operator*() const { return at_; }
        Iterator& operator++() {
            ++at_;
            Skip();
            return *this;
        }
        bool operator==(End) const { return at_ >= set_->filled_; }

      private:
        void Skip() {
            while (at_ < set_->filled_ && !set_->Takes(at_))
                ++at_;
        }
        const BlockIndexes* set_;
        int32_t at_;
    };

    BlockIndexes(std::span<const BlockInfo> filled, int32_t kouteiNo, std::optional<int32_t> pallet)
        : entries_(filled.data()),
          filled_(static_cast<int32_t>(filled.size())),
          koutei_(kouteiNo),
          anyPallet_(!pallet),
          pallet_(pallet.value_or(0)) {}
    Iterator begin() const { return Iterator(*this, 0); }
    End end() const { return {}; }

  private:
    bool Takes(int32_t i) const {
        const BlockInfo& b = entries_[i];
        return b.KouteiNo == koutei_ && (anyPallet_ || b.PalletNo == pallet_);
    }

    const BlockInfo* entries_;
    int32_t filled_;
    int32_t koutei_;
    bool anyPallet_;
    int32_t pallet_;
};

class BlockTable {
  public:
    // --- size and count, as the builder works them out -----------------------------------
    // BlocksCapacity: the entries the processes' cells ask for (may be absurd; the builder
    // refuses it then).
    int32_t Capacity() const { return capacity_; }
    void SetCapacity(int32_t capacity) { capacity_ = capacity; }
    // Makes the table `entries` default entries (std::bad_alloc when they cannot be had). The
    // count is kept.
    void Allocate(size_t entries) { entries_.assign(entries, BlockInfo{}); }
    // Entries in the table, filled or not.
    size_t Size() const { return entries_.size(); }
    // BlocksCount as stored: it may lie outside the table, as a save file or a table made
    // smaller leaves it.
    int32_t Count() const { return count_; }
    void SetCount(int32_t count) { count_ = count; }
    // The blocks in use: entries 0..Filled()-1, the count cut to the table.
    int32_t Filled() const {
        return std::clamp<int32_t>(count_, 0, static_cast<int32_t>(entries_.size()));
    }
    // The next entry, counted and reset; null when the capacity or the table is used up.
    BlockInfo* Append() {
        if (count_ >= capacity_ || count_ < 0 || count_ >= static_cast<int32_t>(entries_.size()))
            return nullptr;
        BlockInfo& b = entries_[static_cast<size_t>(count_++)];
        b = BlockInfo{};
        return &b;
    }
    // Adds a filled block at the end, the table, capacity and count grown to take it: for a
    // table laid out by hand. Returns its index.
    int32_t AddBlock(const BlockInfo& block);
    // No entries, capacity and count 0.
    void Clear();
    // Frees the entries; the capacity and count stay until the table is built again.
    void ReleaseEntries() { entries_ = {}; }

    // --- blocks by index ------------------------------------------------------------------
    // Unchecked, for indexes taken from this table's own loops.
    BlockInfo& operator[](int32_t index) { return entries_[static_cast<size_t>(index)]; }
    const BlockInfo& operator[](int32_t index) const {
        return entries_[static_cast<size_t>(index)];
    }
    // The block at index, or null outside the filled blocks. A stack whose stored index lies
    // there stands in no block: it is not drawn, stands in no one's way and is not written.
    BlockInfo* At(int32_t index) {
        return index >= 0 && index < Filled() ? &entries_[static_cast<size_t>(index)] : nullptr;
    }
    const BlockInfo* At(int32_t index) const {
        return index >= 0 && index < Filled() ? &entries_[static_cast<size_t>(index)] : nullptr;
    }

    // The filled blocks, and every entry of the table (a snapshot keeps them all).
    std::span<BlockInfo> FilledBlocks() { return {entries_.data(), static_cast<size_t>(Filled())}; }
    std::span<const BlockInfo> FilledBlocks() const {
        return {entries_.data(), static_cast<size_t>(Filled())};
    }
    std::span<const BlockInfo> Entries() const { return entries_; }
    std::span<BlockInfo> Entries() { return entries_; }

    // The indexes of the filled blocks of process kouteiNo, in table order; with a pallet,
    // of that pallet only.
    BlockIndexes OfProcess(int32_t kouteiNo) const {
        return BlockIndexes(FilledBlocks(), kouteiNo, std::nullopt);
    }
    BlockIndexes OfPallet(int32_t kouteiNo, int32_t palletNo) const {
        return BlockIndexes(FilledBlocks(), kouteiNo, palletNo);
    }

  private:
    std::vector<BlockInfo> entries_;
    int32_t capacity_ = 0;
    int32_t count_ = 0;
};

}  // namespace kesto
