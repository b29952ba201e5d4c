// The engine's driver: all processes in turn, one process's parts, one part, and the helpers
// that every step shares (bounds, the block table, sharing a quantity out).
#include "placement/CKs_Haichi.h"
#include "app/Codes.h"
#include "placement/PlacementIndex.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

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

CKs_Haichi::CKs_Haichi(CKestoApp& app, const Services& services, const ViewState& shown)
    : app_(app), services_(services), shown_(shown) {}

CKs_Haichi::~CKs_Haichi() = default;

PlacementIndex* CKs_Haichi::Index() const {
    return index_ != nullptr && index_->Usable() ? index_.get() : nullptr;
}

void CKs_Haichi::ComputeBounds(const KouteiInfo* koutei) {
    BoundMinX = BoundMinY = kNoBound;
    BoundMaxX = BoundMaxY = -kNoBound;
    if (koutei == nullptr)
        return;
    if (index_ != nullptr) {
        if (const PlacementIndex::Process* p = index_->Find(koutei->No)) {
            BoundMinX = p->Bounds.X0;
            BoundMaxX = p->Bounds.X1;
            BoundMinY = p->Bounds.Y0;
            BoundMaxY = p->Bounds.Y1;
        }
        return;
    }
    for (const int32_t i : app_.Blocks.OfProcess(koutei->No)) {
        const BlockInfo& b = app_.Blocks[i];
        BoundMinX = std::min(BoundMinX, b.MinX);
        BoundMaxX = std::max(BoundMaxX, b.MaxX);
        BoundMinY = std::min(BoundMinY, b.MinY);
        BoundMaxY = std::max(BoundMaxY, b.MaxY);
    }
}

bool CKs_Haichi::CoversArea(double sx, double sy) const {
    return BoundMaxX - BoundMinX - kLengthTolerance <= sx ||
           BoundMaxY - BoundMinY - kLengthTolerance <= sy;
}

std::vector<HaichiInfo*> CKs_Haichi::StacksOf(const PartsInfo* part, size_t limit) {
    if (const PlacementIndex* index = Index()) {
        const std::vector<HaichiInfo*>* all = index->StacksOf(part);
        if (all == nullptr)
            return {};
        return {all->begin(), all->begin() + static_cast<ptrdiff_t>(std::min(limit, all->size()))};
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

int CKs_Haichi::PlaceAll(PlacedCounts counts, SavedPlacement saved) {
    if (app_.KouteiList.Empty())
        return 1;
    IndexScope scope(*this);
    for (KouteiInfo& k : app_.KouteiList) {
        CurKoutei = &k;
        ComputeBounds(CurKoutei);
        if (PlaceKoutei(counts, saved) == 0)
            return 0;
    }
    if (app_.PartsList.Empty())
        return 1;
    const bool shortPart =
        std::any_of(app_.PartsList.begin(), app_.PartsList.end(), [](const PartsInfo& p) {
            return IsPalletCode(p.Destination) && p.Quantity != p.PiecesPlaced;
        });
    if (shortPart && counts == PlacedCounts::Quantity)
        services_.Op.AskKaku(kaku::kPartsLeftShort, kaku::kNone);
    return 1;
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

int CKs_Haichi::PlaceKoutei(PlacedCounts counts, SavedPlacement saved) {
    if (CurKoutei == nullptr)
        return 1;
    for (PartsInfo& p : app_.PartsList) {
        const int32_t keptNum1 = p.Quantity;
        const int32_t keptWork0 = p.PartialQuantity;
        if (counts == PlacedCounts::Kept)
            p.Quantity = p.PartialQuantity;
        int result = 1;
        if (TakesPart(p, *CurKoutei, saved)) {
            CurPart = &p;
            result = StackPart(Stacking::AllPallets, QuantityShare::SharedOut);
            // Whichever count was stacked, it is spread over all the part's stacks.
            if (result != 0)
                ShareOut(StacksOf(&p, SIZE_MAX), p.Quantity);
        }
        if (counts == PlacedCounts::Kept) {
            p.Quantity = keptNum1;
            p.PartialQuantity = keptWork0;
        }
        if (result == 0)
            return 0;
    }
    return 1;
}

int CKs_Haichi::PlaceOnePart(PartsInfo* part, KouteiInfo* koutei, Stacking mode,
                             QuantityShare share) {
    CurPart = part;
    CurKoutei = koutei;
    if (app_.PartsList.Empty())
        return 1;
    if (app_.HaichiList.Empty() && koutei != nullptr) {
        for (const int32_t i : app_.Blocks.OfProcess(koutei->No))
            app_.Blocks[i].CornerMask = 0;
    }
    if (mode == Stacking::PalletsInView || mode == Stacking::AllPalletsCapped)
        return StackPart(mode, share) != 0 ? 1 : 0;
    return 1;
}

}  // namespace kesto
