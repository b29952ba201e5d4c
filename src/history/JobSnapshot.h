// The whole state of a job that a correction can change, copied so that it can be put back
// exactly: every record list with its count, the block table, the small boxes' flags. Retry and
// Auto make new records, so a snapshot is a full copy; links between records are kept as list
// positions and re-linked into the records a restore makes, and the stacks get their ids back,
// so that a selection kept by id finds them again. Parts that did not change since the
// snapshot it is taken after are shared with it, which keeps a history of many steps small.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <set>
#include <vector>

#include "app/CKestoApp.h"
#include "app/JobModel.h"

namespace kesto {

// The position of a record in its list, or -1 for none (a null link, or one to a record that
// is not in the list).
using RecordIndex = int32_t;
inline constexpr RecordIndex kNoRecord = -1;

class JobSnapshot {
  public:
    JobSnapshot() = default;

    // A copy of app; parts equal in every field to those of `like` share their copy with it.
    static JobSnapshot Take(const CKestoApp& app, const JobSnapshot* like = nullptr);
    // Makes app the job the snapshot was taken of: its records are all new, every link points
    // into them. Pointers into the records app had before are dangling afterwards.
    void Restore(CKestoApp& app) const;

    // Heap and object bytes this snapshot holds; parts whose copy is already in `seen` are
    // not counted again (a history counts its shared parts once).
    size_t Bytes(std::set<const void*>& seen) const;
    size_t Bytes() const;
    // The bytes of what is the snapshot's alone, and each copy it may share with other
    // snapshots (the parts, the blocks' places) with its bytes: a history keeps its count up
    // to date step by step from these.
    size_t OwnBytes() const;
    void ForShared(const std::function<void(const void* copy, size_t bytes)>& count) const;

    size_t Stacks() const { return stacks_.size(); }

  private:
    // The lengths first, so that the five numbers and two flags pack into 40 bytes.
    struct Stack {
        double X = 0;
        double Y = 0;
        StackId Id = kNoStack;
        RecordIndex Part = kNoRecord;
        int32_t Pieces = 0;
        int32_t BlockIndex = -1;
        int32_t Level = 0;
        uint8_t Corner = 0;
        uint8_t Edits = 0;
    };
    static_assert(sizeof(Stack) <= 40);
    // Where a block lies stays the same until the table is made anew: shared between
    // snapshots. What stands in it is each snapshot's own.
    struct BlockPlace {
        double MinX = 0;
        double MinY = 0;
        double MaxX = 0;
        double MaxY = 0;
        int32_t KouteiNo = 0;
        int32_t PalletNo = 0;
    };
    struct BlockUse {
        int32_t Occupant = kNoOccupant;
        uint8_t CornerMask = 0;
    };
    struct Process {
        KouteiInfo Record;  // its Pallet link is null here
        RecordIndex Pallet = kNoRecord;
    };

    // The small boxes' flags and the block table's capacity and count; the job's settings and
    // run are not the records' and stay as they are.
    std::array<int32_t, 100> boxFlags_{};
    int32_t blockCapacity_ = 0;
    int32_t blockCount_ = 0;
    std::vector<BoxInfo> boxes_;
    std::vector<Process> koutei_;
    std::vector<std::shared_ptr<const PartsInfo>> parts_;
    std::vector<Stack> stacks_;
    std::vector<PalletInfo> pallets_;
    // Entries of the block table up to the last one that is not a default entry; the table
    // itself has blockTableSize entries.
    std::shared_ptr<const std::vector<BlockPlace>> blockPlaces_;
    std::vector<BlockUse> blockUses_;
    size_t blockTableSize_ = 0;
    int32_t boxCount_ = 0;
    int32_t kouteiCount_ = 0;
    int32_t partsCount_ = 0;
    int32_t stackCount_ = 0;
    StackId firstStackId_{1};  // the stack list's ids, which a restore gives out again
    StackId nextStackId_{1};
    int32_t palletCount_ = 0;
};

}  // namespace kesto
