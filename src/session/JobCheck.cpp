#include "session/JobCheck.h"
#include "app/Codes.h"

#include <algorithm>

#include "placement/CKs_Block.h"

namespace kesto {

namespace {

// The part's process exists and a box carries its destination (the special codes count
// only while walking the boxes, so an empty box list fails every part).
bool KnownDestination(const CKestoApp& app, const PartsInfo& p) {
    if (app.HasKoutei(p.KouteiNo) == 0)
        return false;
    return std::any_of(app.BoxList.begin(), app.BoxList.end(), [&](const BoxInfo& b) {
        return b.No == p.Destination ||
               (IsDirectCode(p.Destination) && app.Settings.DirectCodesAllowed);
    });
}

bool AllowedDestination(const CKestoApp& app, const PartsInfo& p) {
    const int32_t code = p.Destination;
    if (IsDirectCode(code))
        return app.Settings.DirectCodesAllowed;
    if (IsPalletCode(code))
        return true;
    return IsSmallBox(code) && app.BoxFlags[SmallBoxNumber(code)] == 1;
}

}  // namespace

Outcome CheckJob(CKestoApp& app, const Services& services) {
    if (const Outcome blocks = CKs_Block(app, services).SetUp(); !blocks.Ok())
        return blocks;
    for (const PartsInfo& p : app.PartsList) {
        if (!KnownDestination(app, p)) {
            services.Op.AskKaku(kaku::kUnknownBox, kaku::kNone);
            return Outcome::Failed();
        }
    }
    for (const PartsInfo& p : app.PartsList) {
        if (!AllowedDestination(app, p)) {
            services.Op.AskKaku(kaku::kDestinationNotAllowed, kaku::kNone);
            return Outcome::Failed();
        }
    }
    return Outcome::Done();
}

}  // namespace kesto
