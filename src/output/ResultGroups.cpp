#include "output/ResultGroups.h"
#include "app/Codes.h"

#include <algorithm>
#include <cstdint>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "support/TextFile.h"
#include "support/TextFormat.h"

namespace kesto {
namespace {

struct BufferedLine {
    int32_t Key = 0;
    std::string Text;
};

// The number after the group key's leading letter.
int32_t SortKey(const std::string& groupKey) {
    return groupKey.size() > 1 ? AtoL(groupKey.substr(1)) : 0;
}

// Parts with a process number of 1 or more, by process number, each in list order.
std::map<int32_t, std::vector<PartsInfo*>> PartsByProcess(CKestoApp& app) {
    std::map<int32_t, std::vector<PartsInfo*>> byProcess;
    for (PartsInfo& part : app.PartsList) {
        if (part.KouteiNo >= 1)
            byProcess[part.KouteiNo].push_back(&part);
    }
    return byProcess;
}

// One run of the group loops. Without a file it only records, per process and group key, the
// first pallet pair in which a part was written: the first pass that places the parts with
// the direct codes 99998 and 99999.
class GroupWriter {
  public:
    using FirstWritten = std::map<std::pair<int32_t, std::string>, int64_t>;

    GroupWriter(CKestoApp& app, const StackIndex& stacks, std::FILE* file,
                std::map<const PartsInfo*, int64_t> directPairs)
        : app_(app), stacks_(stacks), file_(file), directPairs_(std::move(directPairs)) {}

    bool Run();
    const FirstWritten& Written() const { return firstWritten_; }

  private:
    bool StartProcess();
    bool RunProcess(const std::vector<PartsInfo*>& parts);
    void ScanPart(PartsInfo& part, int64_t a, int64_t b, std::vector<BufferedLine>& lines);
    bool Flush(std::vector<BufferedLine>& lines);
    std::string Label(const PartsInfo& part) const;
    BufferedLine PlacedLine(const PartsInfo& part, int64_t a, int64_t b, int64_t pieces) const;
    BufferedLine UnplacedLine(const PartsInfo& part) const;

    CKestoApp& app_;
    const StackIndex& stacks_;
    std::FILE* file_;
    std::map<const PartsInfo*, int64_t> directPairs_;  // part -> first pallet of its pair
    FirstWritten firstWritten_;
    int32_t g_ = 1;
    bool ascending_ = true;
    int64_t total_ = 0;
    int32_t prevMax_ = 0;
};

bool GroupWriter::Run() {
    int32_t lastProcess = 0;
    for (const auto& [process, parts] : PartsByProcess(app_)) {
        // Processes without parts in between write nothing, but the first of them still
        // carries the previous maximum into the total (and may lower the group number).
        if (process != lastProcess + 1)
            StartProcess();
        if (!RunProcess(parts))
            return false;
        lastProcess = process;
    }
    return true;
}

// Adds the previous process's last pallet to the total and tells whether the pairs start
// with (1,1): one pallet per group, or the previous process's last group continued.
bool GroupWriter::StartProcess() {
    total_ += prevMax_;
    const bool continued = app_.BoxList.Count != 1 && prevMax_ % 2 == 1 && total_ % 2 == 1;
    if (continued)
        --g_;
    prevMax_ = 0;
    return app_.BoxList.Count == 1 || continued;
}

bool GroupWriter::RunProcess(const std::vector<PartsInfo*>& parts) {
    const bool single = app_.BoxList.Count == 1;
    const bool startsAlone = StartProcess();
    // Pairs beyond the highest pallet of the process's stacks can buffer nothing.
    int32_t maxPallet = 0;
    for (const PartsInfo* part : parts) {
        if (!IsPalletCode(part->Destination))
            continue;
        for (const PlacedStack& s : stacks_.Of(part))
            maxPallet = std::max(maxPallet, s.Block->PalletNo);
    }
    int64_t a = 1;
    int64_t b = startsAlone ? 1 : 2;
    while (a <= app_.Settings.PalletCount && (a == 1 || a <= maxPallet)) {
        std::vector<BufferedLine> lines;
        for (PartsInfo* part : parts)
            ScanPart(*part, a, b, lines);
        if (!Flush(lines))
            return false;
        a = b + 1;
        b = single ? a : a + 1;
    }
    return true;
}

void GroupWriter::ScanPart(PartsInfo& part, int64_t a, int64_t b,
                           std::vector<BufferedLine>& lines) {
    int64_t pieces = 0;
    bool elsewhere = false;
    if (IsPalletCode(part.Destination)) {
        for (const PlacedStack& s : stacks_.Of(&part)) {
            if (s.Block->PalletNo != a && s.Block->PalletNo != b) {
                elsewhere = true;
                continue;
            }
            pieces += s.Stack->Pieces;
            s.Stack->Level = g_;
            prevMax_ = std::max(prevMax_, s.Block->PalletNo);
        }
    }
    const auto direct = directPairs_.find(&part);
    if (direct != directPairs_.end()) {
        if (direct->second == a)
            lines.push_back(UnplacedLine(part));
        return;
    }
    if (pieces > 0) {
        lines.push_back(PlacedLine(part, a, b, pieces));
        firstWritten_.try_emplace({part.KouteiNo, part.GroupKey}, a);
    } else if (pieces == 0 && a == 1 && !elsewhere) {
        lines.push_back(UnplacedLine(part));
    }
}

// Writes a group's lines by key, alternating the direction from group to group.
bool GroupWriter::Flush(std::vector<BufferedLine>& lines) {
    if (lines.empty())
        return true;
    const bool up = ascending_;
    std::stable_sort(lines.begin(), lines.end(),
                     [up](const BufferedLine& l, const BufferedLine& r) {
                         return up ? l.Key < r.Key : l.Key > r.Key;
                     });
    for (const BufferedLine& line : lines) {
        if (line.Key < 1 || file_ == nullptr)
            continue;
        if (WriteLine(line.Text, file_) != 1)
            return false;
    }
    ascending_ = !ascending_;
    ++g_;
    return true;
}

std::string GroupWriter::Label(const PartsInfo& part) const {
    TextBuilder label;  // "PLT%3.3d-%s"
    label.Str("PLT").Int(g_, 3, 3).Char('-').Str(part.GroupKey);
    return label.Take();
}

BufferedLine GroupWriter::PlacedLine(const PartsInfo& part, int64_t a, int64_t b,
                                     int64_t pieces) const {
    const long groupCode = static_cast<long>(a * 1000 + b);
    TextBuilder line;  // "%s,%d,%s,%ld,%d,%s,%d,%s"
    line.Str(part.Code).Char(',').Int(part.KouteiNo).Char(',').Str(part.Name).Char(',');
    line.Int(groupCode).Char(',').Int(static_cast<int>(pieces)).Char(',').Str(Label(part));
    line.Char(',').Int(g_).Char(',').Str(part.Code);
    return {SortKey(part.GroupKey), line.Take()};
}

BufferedLine GroupWriter::UnplacedLine(const PartsInfo& part) const {
    TextBuilder line;  // "%s,%d,%s,0,%d,%s,%d,%s"
    line.Str(part.Code).Char(',').Int(part.KouteiNo).Char(',').Str(part.Name).Str(",0,");
    line.Int(part.Quantity).Char(',').Str(Label(part)).Char(',').Int(g_).Char(',').Str(part.Code);
    return {SortKey(part.GroupKey), line.Take()};
}

// The parts with a direct code go into the first pair of their process in which a part with
// the same group key was written; the others stay unplaced parts of their first group.
std::map<const PartsInfo*, int64_t> DirectPairs(CKestoApp& app, const StackIndex& stacks) {
    GroupWriter firstPass(app, stacks, nullptr, {});
    firstPass.Run();
    std::map<const PartsInfo*, int64_t> pairs;
    for (const PartsInfo& part : app.PartsList) {
        if (!IsDirectCode(part.Destination))
            continue;
        const auto found = firstPass.Written().find({part.KouteiNo, part.GroupKey});
        if (found != firstPass.Written().end())
            pairs[&part] = found->second;
    }
    return pairs;
}

}  // namespace

Outcome WriteResultGroups(CKestoApp& app, const StackIndex& stacks, std::FILE* file) {
    std::map<const PartsInfo*, int64_t> directPairs;
    if (app.Settings.DirectCodesAllowed)
        directPairs = DirectPairs(app, stacks);
    GroupWriter writer(app, stacks, file, std::move(directPairs));
    // The writer fails only at a line it cannot write.
    return writer.Run() ? Outcome::Done() : Outcome::Failed(error::kResultFileUnwritten);
}

}  // namespace kesto
