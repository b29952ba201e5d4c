#include "history/JobSnapshot.h"

#include <bit>
#include <cstring>
#include <iterator>
#include <string>
#include <unordered_map>

namespace kesto {
namespace {

// Equal down to the bit: a part shared between snapshots must write the same bytes, and
// -0.0 is written differently from 0.0.
bool Same(double a, double b) {
    return std::bit_cast<uint64_t>(a) == std::bit_cast<uint64_t>(b);
}
template <class T>
bool Same(const T& a, const T& b) {
    return a == b;
}
bool Same(const std::vector<ShapeElement>& a, const std::vector<ShapeElement>& b) {
    if (a.size() != b.size())
        return false;
    for (size_t i = 0; i < a.size(); ++i) {
        if (a[i].Kind != b[i].Kind || a[i].Color != b[i].Color ||
            std::memcmp(a[i].Params.data(), b[i].Params.data(), sizeof(a[i].Params)) != 0)
            return false;
    }
    return true;
}

// Every member of the two parts alike; the bindings fail to compile when PartsInfo gains one.
bool SamePart(const PartsInfo& a, const PartsInfo& b) {
    const auto& [a1, a2, a3, a4, a5, a6, a7, a8, a9, a10, a11, a12, a13, a14, a15, a16, a17, a18,
                 a19, a20, a21, a22, a23, a24, a25, a26, a27, a28, a29, a30] = a;
    const auto& [b1, b2, b3, b4, b5, b6, b7, b8, b9, b10, b11, b12, b13, b14, b15, b16, b17, b18,
                 b19, b20, b21, b22, b23, b24, b25, b26, b27, b28, b29, b30] = b;
    return Same(a1, b1) && Same(a2, b2) && Same(a3, b3) && Same(a4, b4) && Same(a5, b5) &&
           Same(a6, b6) && Same(a7, b7) && Same(a8, b8) && Same(a9, b9) && Same(a10, b10) &&
           Same(a11, b11) && Same(a12, b12) && Same(a13, b13) && Same(a14, b14) && Same(a15, b15) &&
           Same(a16, b16) && Same(a17, b17) && Same(a18, b18) && Same(a19, b19) && Same(a20, b20) &&
           Same(a21, b21) && Same(a22, b22) && Same(a23, b23) && Same(a24, b24) && Same(a25, b25) &&
           Same(a26, b26) && Same(a27, b27) && Same(a28, b28) && Same(a29, b29) && Same(a30, b30);
}

// Block places alike down to the bit.
template <class Place>
bool SamePlaces(const std::vector<Place>& a, const std::vector<Place>& b) {
    if (a.size() != b.size())
        return false;
    for (size_t i = 0; i < a.size(); ++i) {
        if (!Same(a[i].MinX, b[i].MinX) || !Same(a[i].MinY, b[i].MinY) ||
            !Same(a[i].MaxX, b[i].MaxX) || !Same(a[i].MaxY, b[i].MaxY) ||
            a[i].KouteiNo != b[i].KouteiNo || a[i].PalletNo != b[i].PalletNo)
            return false;
    }
    return true;
}

template <class T>
std::unordered_map<const T*, RecordIndex> Positions(const RecordList<T>& list) {
    std::unordered_map<const T*, RecordIndex> out;
    out.reserve(list.Items.size());
    RecordIndex i = 0;
    for (const T& rec : list)
        out.emplace(&rec, i++);
    return out;
}

template <class T>
RecordIndex PositionOf(const std::unordered_map<const T*, RecordIndex>& positions, const T* rec) {
    const auto it = positions.find(rec);
    return it == positions.end() ? kNoRecord : it->second;
}

template <class T>
T* At(const std::vector<T*>& records, RecordIndex i) {
    return i >= 0 && static_cast<size_t>(i) < records.size() ? records[static_cast<size_t>(i)]
                                                             : nullptr;
}

bool IsDefault(const BlockInfo& b) {
    return b.KouteiNo == 0 && b.PalletNo == 0 && Same(b.MinX, 0.0) && Same(b.MinY, 0.0) &&
           Same(b.MaxX, 0.0) && Same(b.MaxY, 0.0) && b.CornerMask == 0 && b.Occupant == kNoOccupant;
}

// Bytes a string holds outside its object.
size_t HeapBytes(const std::string& s) {
    return s.capacity() >= sizeof(std::string) ? s.capacity() + 1 : 0;
}

size_t PartBytes(const PartsInfo& p) {
    size_t bytes = sizeof(PartsInfo) + p.Shapes.capacity() * sizeof(ShapeElement);
    for (const std::string* s : {&p.Code, &p.Name, &p.DisplayName, &p.SheetText, &p.MaterialName,
                                 &p.GroupKey, &p.SensitiveSides, &p.OutlinePath, &p.DirText})
        bytes += HeapBytes(*s);
    return bytes;
}

}  // namespace

JobSnapshot JobSnapshot::Take(const CKestoApp& app, const JobSnapshot* like) {
    JobSnapshot s;
    s.boxFlags_ = app.BoxFlags;
    s.blockCapacity_ = app.Blocks.Capacity();
    s.blockCount_ = app.Blocks.Count();
    s.boxCount_ = app.BoxList.Count;
    s.kouteiCount_ = app.KouteiList.Count;
    s.partsCount_ = app.PartsList.Count;
    s.stackCount_ = app.HaichiList.Count;
    s.firstStackId_ = app.HaichiList.FirstId();
    s.nextStackId_ = app.HaichiList.NextId();
    s.palletCount_ = app.PalletList.Count;

    s.boxes_.assign(app.BoxList.begin(), app.BoxList.end());
    s.pallets_.assign(app.PalletList.begin(), app.PalletList.end());

    const auto pallets = Positions(app.PalletList);
    s.koutei_.reserve(app.KouteiList.Items.size());
    for (const KouteiInfo& k : app.KouteiList) {
        Process& p = s.koutei_.emplace_back(Process{k, PositionOf(pallets, k.Pallet)});
        p.Record.Pallet = nullptr;
    }

    s.parts_.reserve(app.PartsList.Items.size());
    size_t i = 0;
    for (const PartsInfo& p : app.PartsList) {
        // Parts keep their places between most steps, so the part at the same position is
        // the one to compare with.
        if (like != nullptr && i < like->parts_.size() && SamePart(*like->parts_[i], p))
            s.parts_.push_back(like->parts_[i]);
        else
            s.parts_.push_back(std::make_shared<const PartsInfo>(p));
        ++i;
    }

    const auto parts = Positions(app.PartsList);
    s.stacks_.reserve(app.HaichiList.size());
    for (const HaichiInfo& h : app.HaichiList) {
        s.stacks_.push_back(Stack{h.X, h.Y, h.Id,
                                  PositionOf(parts, static_cast<const PartsInfo*>(h.Part)),
                                  h.Pieces, h.BlockIndex, h.Level, h.Corner, h.Edits});
    }

    const std::span<const BlockInfo> entries = app.Blocks.Entries();
    s.blockTableSize_ = entries.size();
    size_t used = entries.size();
    while (used > 0 && IsDefault(entries[used - 1]))
        --used;
    std::vector<BlockPlace> places;
    places.reserve(used);
    s.blockUses_.reserve(used);
    for (size_t b = 0; b < used; ++b) {
        const BlockInfo& r = entries[b];
        places.push_back(BlockPlace{r.MinX, r.MinY, r.MaxX, r.MaxY, r.KouteiNo, r.PalletNo});
        s.blockUses_.push_back(BlockUse{r.Occupant, r.CornerMask});
    }
    if (like != nullptr && like->blockPlaces_ != nullptr && SamePlaces(*like->blockPlaces_, places))
        s.blockPlaces_ = like->blockPlaces_;
    else
        s.blockPlaces_ = std::make_shared<const std::vector<BlockPlace>>(std::move(places));
    return s;
}

void JobSnapshot::Restore(CKestoApp& app) const {
    // Built aside and swapped in, so that app is never half old and half new.
    CKestoApp job;

    job.BoxList.Items.assign(boxes_.begin(), boxes_.end());
    job.BoxList.Count = boxCount_;

    job.PalletList.Items.assign(pallets_.begin(), pallets_.end());
    job.PalletList.Count = palletCount_;
    std::vector<PalletInfo*> pallets;
    for (PalletInfo& p : job.PalletList)
        pallets.push_back(&p);

    for (const Process& k : koutei_) {
        KouteiInfo& rec = job.KouteiList.Append();
        rec = k.Record;
        rec.Pallet = At(pallets, k.Pallet);
    }
    job.KouteiList.Count = kouteiCount_;

    std::vector<PartsInfo*> parts;
    parts.reserve(parts_.size());
    for (const std::shared_ptr<const PartsInfo>& p : parts_)
        parts.push_back(&job.PartsList.Items.emplace_back(*p));
    job.PartsList.Count = partsCount_;

    job.HaichiList.ResetIds(firstStackId_, nextStackId_);
    for (const Stack& st : stacks_) {
        HaichiInfo& h = job.HaichiList.AppendWithId(st.Id);
        h.Part = At(parts, st.Part);
        h.Pieces = st.Pieces;
        h.BlockIndex = st.BlockIndex;
        h.Level = st.Level;
        h.Corner = st.Corner;
        h.Edits = st.Edits;
        h.X = st.X;
        h.Y = st.Y;
    }
    job.HaichiList.Count = stackCount_;

    job.Blocks.Allocate(blockTableSize_);
    job.Blocks.SetCapacity(blockCapacity_);
    job.Blocks.SetCount(blockCount_);
    const std::span<BlockInfo> entries = job.Blocks.Entries();
    for (size_t b = 0; b < blockUses_.size(); ++b) {
        const BlockPlace& r = (*blockPlaces_)[b];
        const BlockUse& u = blockUses_[b];
        entries[b] = BlockInfo{r.KouteiNo, r.PalletNo, r.MinX,       r.MinY,
                               r.MaxX,     r.MaxY,     u.CornerMask, u.Occupant};
    }

    // Moving the lists keeps the new records where they are, so the links made above hold.
    app.BoxList = std::move(job.BoxList);
    app.KouteiList = std::move(job.KouteiList);
    app.PartsList = std::move(job.PartsList);
    app.HaichiList = std::move(job.HaichiList);
    app.PalletList = std::move(job.PalletList);
    app.Blocks = std::move(job.Blocks);
    app.BoxFlags = boxFlags_;
}

size_t JobSnapshot::OwnBytes() const {
    size_t bytes = sizeof(JobSnapshot) + boxes_.capacity() * sizeof(BoxInfo) +
                   koutei_.capacity() * sizeof(Process) +
                   parts_.capacity() * sizeof(std::shared_ptr<const PartsInfo>) +
                   stacks_.capacity() * sizeof(Stack) + pallets_.capacity() * sizeof(PalletInfo) +
                   blockUses_.capacity() * sizeof(BlockUse);
    for (const BoxInfo& b : boxes_)
        bytes += HeapBytes(b.Name);
    for (const Process& k : koutei_)
        bytes += HeapBytes(k.Record.Name) + HeapBytes(k.Record.PalletName);
    for (const PalletInfo& p : pallets_)
        bytes += HeapBytes(p.Name) + HeapBytes(p.ScheduleText);
    return bytes;
}

void JobSnapshot::ForShared(const std::function<void(const void*, size_t)>& count) const {
    if (blockPlaces_ != nullptr)
        count(blockPlaces_.get(),
              blockPlaces_->capacity() * sizeof(BlockPlace) + 2 * sizeof(void*));
    // make_shared keeps the count beside the part: two pointers' worth, roughly.
    for (const std::shared_ptr<const PartsInfo>& p : parts_)
        count(p.get(), PartBytes(*p) + 2 * sizeof(void*));
}

size_t JobSnapshot::Bytes(std::set<const void*>& seen) const {
    size_t bytes = OwnBytes();
    ForShared([&](const void* copy, size_t shared) {
        if (seen.insert(copy).second)
            bytes += shared;
    });
    return bytes;
}

size_t JobSnapshot::Bytes() const {
    std::set<const void*> seen;
    return Bytes(seen);
}

}  // namespace kesto
