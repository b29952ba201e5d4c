#include <algorithm>
#include <list>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "app/InputReaders.h"
#include "support/Platform.h"

namespace kesto {

namespace {

using PartIter = std::list<PartsInfo>::iterator;

// A wider part wins; of two equally wide ones (within the tolerance) the longer one.
bool Outranks(const PartsInfo& part, double refX, double refY) {
    if (part.SizeX > refX)
        return true;
    return refX >= part.SizeX && refX - part.SizeX < kLengthTolerance && part.SizeY > refY;
}

// Where the chosen parts go: in front of the first unsorted part of the whole list. That part
// only changes when it is chosen itself, so it is followed instead of searched for.
class Placer {
  public:
    Placer(std::list<PartsInfo>& parts, Operator& op)
        : parts_(parts), op_(op), firstUnsorted_(FirstUnsortedFrom(parts.begin())) {}

    void Place(PartIter best) {
        if (best != firstUnsorted_) {
            // A part ahead of the first unsorted one must itself have been sorted already.
            if (best == parts_.begin())
                op_.ShowMessageBox("Sort Point Not Found");
            parts_.splice(firstUnsorted_, parts_, best);
            best->SortDone = 1;
            return;
        }
        best->SortDone = 1;
        firstUnsorted_ = FirstUnsortedFrom(std::next(best));
    }

  private:
    PartIter FirstUnsortedFrom(PartIter it) const {
        return std::find_if(it, parts_.end(), [](const PartsInfo& p) { return p.SortDone == 0; });
    }

    std::list<PartsInfo>& parts_;
    Operator& op_;
    PartIter firstUnsorted_;
};

// Chooses a process's parts one by one: from the group of its first unsorted part, the one that
// a walk in list order ends on, each step taking a part that outranks the one in hand (so on
// complete ties the earlier part). The unsorted parts keep their order, so each group's
// members are walked in a list of their own.
void SortKoutei(const std::vector<PartIter>& unsorted, Placer& placer) {
    std::unordered_map<std::string_view, std::vector<size_t>> groups;
    for (size_t i = 0; i < unsorted.size(); ++i)
        groups[unsorted[i]->GroupKey].push_back(i);
    std::vector<bool> chosen(unsorted.size(), false);
    size_t head = 0;
    for (size_t done = 0; done < unsorted.size(); ++done) {
        while (chosen[head])
            ++head;
        std::vector<size_t>& members = groups[unsorted[head]->GroupKey];
        size_t best = 0;
        double refX = unsorted[members[0]]->SizeX, refY = unsorted[members[0]]->SizeY;
        for (size_t k = 1; k < members.size(); ++k) {
            const PartsInfo& p = *unsorted[members[k]];
            if (Outranks(p, refX, refY)) {
                best = k;
                refX = p.SizeX;
                refY = p.SizeY;
            }
        }
        chosen[members[best]] = true;
        const PartIter part = unsorted[members[best]];
        members.erase(members.begin() + static_cast<ptrdiff_t>(best));
        placer.Place(part);
    }
}

}  // namespace

void SortParts(CKestoApp& app, Operator& op) {
    std::list<PartsInfo>& parts = app.PartsList.Items;
    // Each process's unsorted parts in list order; sorting one process moves none of another's.
    std::unordered_map<int32_t, std::vector<PartIter>> byKoutei;
    for (auto it = parts.begin(); it != parts.end(); ++it) {
        if (it->SortDone == 0)
            byKoutei[it->KouteiNo].push_back(it);
    }
    Placer placer(parts, op);
    for (const KouteiInfo& koutei : app.KouteiList) {
        const auto found = byKoutei.find(koutei.No);
        if (found == byKoutei.end())
            continue;
        const std::vector<PartIter> unsorted = std::move(found->second);
        byKoutei.erase(found);
        SortKoutei(unsorted, placer);
    }
}

}  // namespace kesto
