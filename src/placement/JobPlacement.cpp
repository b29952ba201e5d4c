// The job check before the first placement and the engine's part of loading a job.
#include "placement/JobPlacement.h"

#include <algorithm>

#include "placement/CKs_Block.h"
#include "placement/CKs_Haichi.h"
#include "support/SetupList.h"

namespace kesto {

namespace {

bool IsSpecialCode(int32_t code) {
    return code == 99998 || code == 99999;
}

// The part's process exists and a box carries its destination (the special codes count
// only while walking the boxes, so an empty box list fails every part).
bool KnownDestination(const CKestoApp& app, const PartsInfo& p) {
    if (app.HasKoutei(p.KouteiNo) == 0)
        return false;
    return std::any_of(app.BoxList.begin(), app.BoxList.end(), [&](const BoxInfo& b) {
        return b.No == p.Num2 || (IsSpecialCode(p.Num2) && app.DirectFlag == 1);
    });
}

bool AllowedDestination(const CKestoApp& app, const PartsInfo& p) {
    const int32_t code = p.Num2;
    if (IsSpecialCode(code))
        return app.DirectFlag == 1;
    if (code < 100)
        return true;
    return code <= 198 && app.BoxFlags[code - 99] == 1;
}

}  // namespace

int CheckJob(CKestoApp& app) {
    if (CKs_Block(app).SetUp() == 0)
        return 0;
    for (const PartsInfo& p : app.PartsList) {
        if (!KnownDestination(app, p)) {
            app.ShowKaku(2, 0);
            return 0;
        }
    }
    for (const PartsInfo& p : app.PartsList) {
        if (!AllowedDestination(app, p)) {
            app.ShowKaku(3, 0);
            return 0;
        }
    }
    return 1;
}

int PlaceJob(CKestoApp& app, int mode, int fullRun, const std::vector<int>& keep) {
    CKs_Haichi haichi(app);
    if (mode == 1) {
        for (PartsInfo& p : app.PartsList) {
            // A part beyond the kept table keeps its count.
            if (p.Seq < 0 || static_cast<size_t>(p.Seq) >= keep.size())
                continue;
            p.Work[0] = keep[p.Seq];
            if (p.Work[0] > 0 && p.Num2 >= 100)
                p.Num2 = 0;
        }
    }
    if (fullRun == 1) {
        if (haichi.RestorePlacement(GetDataFilePath(97)) == 0)
            return 0;
        if (haichi.TrimExcess() == 0)
            return 0;
        if (haichi.FillShortage() == 0)
            return 0;
    }
    return haichi.PlaceAll(mode, fullRun);
}

}  // namespace kesto
