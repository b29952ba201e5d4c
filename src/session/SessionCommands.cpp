// The commands of the main window that decide something about the parts.
#include "session/JobSession.h"

namespace kesto {

namespace {

constexpr int32_t kNoLineSelected = 7;
// Auto's table of placed counts is indexed by Seq, so it keeps parts numbered below this.
constexpr size_t kKeepTableSize = 1000;

bool FitsBox(const PartsInfo& part, const BoxInfo& box) {
    return box.Size[0] <= part.SizeX && part.SizeX <= box.Size[1] && box.Size[2] <= part.SizeY &&
           part.SizeY <= box.Size[3];
}

}  // namespace

PartsInfo* JobSession::FindPart(int32_t seq, bool anyKoutei) {
    for (PartsInfo& part : app_.PartsList) {
        if (part.Seq == seq && (anyKoutei || part.KouteiNo == app_.CurrentKoutei))
            return &part;
    }
    return nullptr;
}

bool JobSession::Down(std::optional<int32_t> selectedSeq) {
    if (!selectedSeq) {
        app_.ShowKaku(services_.Op, kNoLineSelected, 0);
        return false;
    }
    if (PartsInfo* part = FindPart(*selectedSeq, false)) {
        part->Num2 = 1000;
        part->Work[2] = part->Num1;
    }
    return true;
}

bool JobSession::Up(std::optional<int32_t> selectedSeq) {
    if (app_.CurrentBox < 100 || app_.CurrentBox > 198) {
        app_.ShowKaku(services_.Op, 4, 0);
        return false;
    }
    if (!selectedSeq) {
        app_.ShowKaku(services_.Op, kNoLineSelected, 0);
        return false;
    }
    PartsInfo* part = FindPart(*selectedSeq, false);
    if (part == nullptr)
        return true;
    for (const BoxInfo& box : app_.BoxList) {
        if (box.No != app_.CurrentBox)
            continue;
        if (!FitsBox(*part, box)) {
            app_.ShowKaku(services_.Op, 5, 6);
            return false;
        }
        break;
    }
    if (part->Work[1] > 0) {
        app_.ShowKaku(services_.Op, 11, 12);
    } else {
        part->Num2 = app_.CurrentBox;
        part->Work[1] = 0;
        part->Work[2] = 0;
    }
    return true;
}

std::vector<int> JobSession::KeepTable() const {
    std::vector<int> keep(kKeepTableSize, 0);
    for (const PartsInfo& part : app_.PartsList) {
        if (part.Work[1] != 0 && part.Seq >= 0 && static_cast<size_t>(part.Seq) < keep.size())
            keep[static_cast<size_t>(part.Seq)] = part.Work[1];
    }
    return keep;
}

void JobSession::ChooseDefaultBox() {
    if (app_.BoxFlags[1] != 0) {
        app_.CurrentBox = 100;
    } else if (app_.BoxFlags[2] != 0) {
        app_.CurrentBox = 101;
    } else if (app_.BoxFlags[3] != 0) {
        app_.CurrentBox = 102;
    }
}

bool JobSession::AnySmallBoxDefined() const {
    for (int n = 1; n <= 99; ++n) {
        if (app_.BoxFlags[n] != 0)
            return true;
    }
    return false;
}

}  // namespace kesto
