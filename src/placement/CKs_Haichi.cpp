// The engine's driver: all processes in turn, one process's parts, one part, and the helpers
// that every step shares (bounds, the block table, sharing a quantity out).
#include "placement/CKs_Haichi.h"
#include "app/Codes.h"
#include "placement/CornerQuery.h"
#include "placement/PlacementIndex.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <new>
#include <unordered_set>
#include <vector>

namespace kesto {

int32_t TruncToInt32(double v) {
    if (!(v == v))
        return 0;
    return static_cast<int32_t>(std::clamp(std::trunc(v), -2147483648.0, 2147483647.0));
}

int32_t AddClamped(int32_t a, int64_t b) {
    return static_cast<int32_t>(std::clamp<int64_t>(a + b, INT32_MIN, INT32_MAX));
}

void ShareOut(const std::vector<HaichiInfo*>& stacks, int32_t num1) {
    if (stacks.size() < 2)
        return;
    // Handing out one piece per stack in turn gives every stack num1 / n and the first
    // num1 % n one more; the first hand-out happens before the total is tested.
    const int64_t n = static_cast<int64_t>(stacks.size());
    const int64_t total = std::max<int64_t>(num1, 1);
    for (int64_t i = 0; i < n; ++i) {
        stacks[i]->Pieces = static_cast<int32_t>(total / n + (i < total % n ? 1 : 0));
    }
}

PalletsOnView CandidatePallets(const ViewState& shown, int32_t palletCount) {
    PalletsOnView c = kNoPalletsOnView;
    const int64_t cur = shown.Pallet();
    const int64_t n = palletCount;
    // Values that name no pallet never match a block; cut them into the int range.
    auto narrow = [](int64_t v) { return static_cast<int>(std::clamp<int64_t>(v, -1, INT32_MAX)); };
    switch (shown.Mode()) {
        case PalletView::Flat:
        case PalletView::Danmen:
            c[0] = narrow(cur);
            break;
        case PalletView::FourPallet:
            c[0] = narrow(cur);
            if (n >= 4) {
                const int64_t c2 = cur + 1 > n ? 1 : cur + 1;
                const int64_t c3 = c2 + 1 > n ? 1 : c2 + 1;
                // c4 is not wrapped: from the second-last pallet it names pallet n + 1,
                // so that pallet 1 is not reached from there.
                c[1] = narrow(c2);
                c[2] = narrow(c3);
                c[3] = narrow(c3 + 1);
            } else {
                for (int k = 1; k < 4; ++k)
                    c[k] = cur + k > n ? -1 : narrow(cur + k);
            }
            break;
        case PalletView::TwoPallet:
            c[0] = narrow(cur);
            c[1] = n < 2 ? -1 : (cur + 1 > n ? 1 : narrow(cur + 1));
            break;
        default:
            break;
    }
    return c;
}

LengthRect ProcessBounds(const CKestoApp& app, const KouteiInfo* koutei) {
    LengthRect r{kNoBound, kNoBound, -kNoBound, -kNoBound};
    if (koutei == nullptr)
        return r;
    for (const int32_t i : app.Blocks.OfProcess(koutei->No)) {
        const BlockInfo& b = app.Blocks[i];
        r.X0 = std::min(r.X0, b.MinX);
        r.X1 = std::max(r.X1, b.MaxX);
        r.Y0 = std::min(r.Y0, b.MinY);
        r.Y1 = std::max(r.Y1, b.MaxY);
    }
    return r;
}

CKs_Haichi::CKs_Haichi(CKestoApp& app, const Services& services, const PalletsOnView& onView)
    : app_(app), services_(services), onView_(onView) {}

CKs_Haichi::~CKs_Haichi() = default;

PlacementIndex* CKs_Haichi::Index() const {
    return index_ != nullptr && index_->Usable() ? index_.get() : nullptr;
}

LengthRect CKs_Haichi::BoundsOf(const KouteiInfo* koutei) const {
    return ProcessBounds(app_, index_.get(), koutei);
}

void CKs_Haichi::ComputeBounds(const KouteiInfo* koutei) {
    const LengthRect r = BoundsOf(koutei);
    BoundMinX = r.X0;
    BoundMaxX = r.X1;
    BoundMinY = r.Y0;
    BoundMaxY = r.Y1;
}

CornerQuery CKs_Haichi::Query() const {
    return CornerQuery(app_, index_.get(), CurKoutei, CurPart,
                       {BoundMinX, BoundMinY, BoundMaxX, BoundMaxY}, Selection);
}

std::vector<HaichiInfo*> CKs_Haichi::StacksOf(const PartsInfo* part, size_t limit) {
    if (const PlacementIndex* index = Index()) {
        const std::vector<StackId>* ids = index->StacksOf(part);
        if (ids == nullptr)
            return {};
        // The index files stacks by id: the job's own list gives them for changing.
        std::vector<HaichiInfo*> stacks;
        stacks.reserve(std::min(limit, ids->size()));
        for (size_t i = 0; i < ids->size() && i < limit; ++i)
            stacks.push_back(app_.HaichiList.Find((*ids)[i]));
        return stacks;
    }
    std::vector<HaichiInfo*> stacks;
    for (HaichiInfo& h : app_.HaichiList) {
        if (h.Part != part)
            continue;
        if (stacks.size() >= limit)
            break;
        stacks.push_back(&h);
    }
    return stacks;
}

Outcome CKs_Haichi::PlaceAll(PlacedCounts counts, SavedPlacement saved) {
    const CallScope call(*this);
    if (app_.KouteiList.Empty())
        return Outcome::Done();
    IndexScope scope(*this);
    for (KouteiInfo& k : app_.KouteiList) {
        CurKoutei = &k;
        ComputeBounds(CurKoutei);
        if (const Outcome placed = PlaceKoutei(counts, saved); !placed.Ok())
            return placed;
    }
    if (app_.PartsList.Empty())
        return Outcome::Done();
    const bool shortPart =
        std::any_of(app_.PartsList.begin(), app_.PartsList.end(), [](const PartsInfo& p) {
            return IsPalletCode(p.Destination) && p.Quantity != p.PiecesPlaced;
        });
    if (shortPart && counts == PlacedCounts::Quantity)
        services_.Op.AskKaku(kaku::kPartsLeftShort, kaku::kNone);
    return Outcome::Done();
}

namespace {

// A part that the process places in this pass.
bool TakesPart(const PartsInfo& p, const KouteiInfo& k, SavedPlacement saved) {
    if (p.KouteiNo != k.No || !IsPalletCode(p.Destination))
        return false;
    if (saved == SavedPlacement::Restore)
        return !(p.SaveKey != 0 && p.Quantity <= p.PiecesPlaced);
    return saved == SavedPlacement::Ignore;
}

}  // namespace

namespace {

// While a process is placed its blocks are only ever filled, each by the part in hand, so the
// run of filled blocks at the front of its table only grows. A part that held none of them
// when the placement began passes the whole run by; one that did (a restored stack) searches
// from the first block, as does every part without an index or the memory for the holders.
class FilledFront {
  public:
    FilledFront(const CKestoApp& app, const PlacementIndex::Process* process) : app_(app) {
        if (process == nullptr)
            return;
        try {
            for (const int i : process->Blocks)
                holders_.insert(app.Blocks[i].Occupant);
            blocks_ = &process->Blocks;
        } catch (const std::bad_alloc&) {
            holders_.clear();
        }
    }

    size_t FirstOpenFor(const PartsInfo& part) {
        if (blocks_ == nullptr || holders_.contains(OccupantOf(&part)))
            return 0;
        while (front_ < blocks_->size() && app_.Blocks[(*blocks_)[front_]].Occupant != kNoOccupant)
            ++front_;
        return front_;
    }

  private:
    const CKestoApp& app_;
    const std::vector<int>* blocks_ = nullptr;  // the process's blocks in table order
    std::unordered_set<int32_t> holders_;       // the occupants when the placement began
    size_t front_ = 0;
};

}  // namespace

Outcome CKs_Haichi::PlaceKoutei(PlacedCounts counts, SavedPlacement saved) {
    if (CurKoutei == nullptr)
        return Outcome::Done();
    const PlacementIndex* index = Index();
    FilledFront filled(app_, index != nullptr ? index->Find(CurKoutei->No) : nullptr);
    for (PartsInfo& p : app_.PartsList) {
        const int32_t keptNum1 = p.Quantity;
        const int32_t keptWork0 = p.PartialQuantity;
        if (counts == PlacedCounts::Kept)
            p.Quantity = p.PartialQuantity;
        Outcome stacked;
        if (TakesPart(p, *CurKoutei, saved)) {
            CurPart = &p;
            stacked =
                StackPart(Stacking::AllPallets, QuantityShare::SharedOut, filled.FirstOpenFor(p));
            // Whichever count was stacked, it is spread over all the part's stacks.
            if (stacked.Ok())
                ShareOut(StacksOf(&p, SIZE_MAX), p.Quantity);
        }
        if (counts == PlacedCounts::Kept) {
            p.Quantity = keptNum1;
            p.PartialQuantity = keptWork0;
        }
        if (!stacked.Ok())
            return stacked;
    }
    return Outcome::Done();
}

Outcome CKs_Haichi::PlaceOnePart(PartsInfo* part, KouteiInfo* koutei, Stacking mode,
                                 QuantityShare share) {
    const CallScope call(*this);
    CurPart = part;
    CurKoutei = koutei;
    if (app_.PartsList.Empty())
        return Outcome::Done();
    if (app_.HaichiList.Empty() && koutei != nullptr) {
        for (const int32_t i : app_.Blocks.OfProcess(koutei->No))
            app_.Blocks[i].CornerMask = 0;
    }
    if (mode == Stacking::PalletsInView || mode == Stacking::AllPalletsCapped)
        return StackPart(mode, share);
    return Outcome::Done();
}

}  // namespace kesto
