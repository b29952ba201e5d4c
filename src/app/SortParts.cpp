#include <algorithm>
#include <list>

#include "app/InputReaders.h"
#include "support/Platform.h"

namespace kesto {

namespace {

using PartIter = std::list<PartsInfo>::iterator;

constexpr double kTolerance = 0.0001;

// A wider part wins; of two equally wide ones (within the tolerance) the longer one.
bool Outranks(const PartsInfo& part, double refX, double refY) {
    if (part.SizeX > refX)
        return true;
    return refX >= part.SizeX && refX - part.SizeX < kTolerance && part.SizeY > refY;
}

// The unsorted part of the process that comes next: the group of the first unsorted part,
// largest first; on complete ties the earlier part.
PartIter BestPart(std::list<PartsInfo>& parts, int32_t kouteiNo) {
    PartIter best = parts.end();
    double refX = 0;
    double refY = 0;
    for (auto it = parts.begin(); it != parts.end(); ++it) {
        if (it->KouteiNo != kouteiNo || it->SortDone != 0)
            continue;
        if (best != parts.end() && (it->GroupKey != best->GroupKey || !Outranks(*it, refX, refY)))
            continue;
        best = it;
        refX = it->SizeX;
        refY = it->SizeY;
    }
    return best;
}

// Moves the chosen parts one by one in front of the first unsorted part.
void SortKoutei(std::list<PartsInfo>& parts, int32_t kouteiNo, Operator& op) {
    for (PartIter best = BestPart(parts, kouteiNo); best != parts.end();
         best = BestPart(parts, kouteiNo)) {
        const PartIter firstUnsorted = std::find_if(
            parts.begin(), parts.end(), [](const PartsInfo& p) { return p.SortDone == 0; });
        if (best != firstUnsorted) {
            // A part ahead of the first unsorted one must itself have been sorted already.
            if (best == parts.begin())
                op.ShowMessageBox("Sort Point Not Found");
            parts.splice(firstUnsorted, parts, best);
        }
        best->SortDone = 1;
    }
}

}  // namespace

void SortParts(CKestoApp& app, Operator& op) {
    for (const KouteiInfo& koutei : app.KouteiList)
        SortKoutei(app.PartsList.Items, koutei.No, op);
}

}  // namespace kesto
