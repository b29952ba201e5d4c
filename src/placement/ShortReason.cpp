// Why a part is short.
#include "placement/ShortReason.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <memory>
#include <new>
#include <unordered_map>

#include "app/Codes.h"
#include "placement/CKs_Haichi.h"
#include "placement/CornerQuery.h"
#include "placement/PlacementIndex.h"
#include "support/MessageFile.h"
#include "support/TextFormat.h"

namespace kesto {

namespace {

constexpr const char* kSection = "Short";
// Parts named in a list of takers; the rest are counted.
constexpr size_t kTakersNamed = 5;

// Bound for the pallets with fewer pieces on them than wanted.
bool IsShort(const PartsInfo& part) {
    return IsPalletCode(part.Destination) && part.PiecesPlaced < part.Quantity;
}

// Pieces per stack the placement wants for count pieces under the part's own limit: the
// fewest stacks of at most that limit, filled evenly.
int64_t PiecesWanted(int64_t count, int32_t limit) {
    if (limit < 1 || count <= 0)
        return count;
    if (count % limit == 0)
        return limit;
    const int64_t stacks = count / limit + 1;
    return (count + stacks - 1) / stacks;
}

// What the reasons of many parts share, worked out once: the stacks by the block they stand in,
// each process's largest block, its blocks by rectangle, and the blocks and takers of each set
// of rectangles asked about.
class ShortSurvey {
  public:
    explicit ShortSurvey(const CKestoApp& app) : app_(app) {
        for (const BlockInfo& b : app.Blocks.FilledBlocks()) {
            const double w = b.MaxX - b.MinX, h = b.MaxY - b.MinY;
            Largest& l = largest_[b.KouteiNo];
            if (w * h > l.Area)
                l = {w * h, w, h};
        }
    }

    std::optional<ShortReason> Reason(const PartsInfo& part);

  private:
    struct Largest {
        double Area = -1;
        double X = 0;
        double Y = 0;
    };
    struct Taken {
        int32_t Stacks = 0;
        std::vector<BlockTaker> Takers;
    };
    // The blocks of a process: by rectangle, and those a part may take (free or its own) by
    // their places in Shapes.Blocks.
    struct ProcessBlocks {
        BlockShapes Shapes;
        std::vector<size_t> Open;
        std::unordered_map<int32_t, std::vector<size_t>> Held;  // by the Seq holding them
    };
    // The blocks of a process that could take the parts whose sizes fit the same rectangles,
    // and their takers once asked.
    struct Fitting {
        std::vector<int> Blocks;
        std::optional<Taken> Takers;
    };
    using FittingKey = std::pair<int32_t, std::vector<char>>;  // process, rectangles that fit

    // The parts of the stacks standing in each block, in list order: block i's are
    // Parts[Starts[i]] up to Parts[Starts[i + 1]]; and the first part of each Seq.
    struct Holders {
        std::vector<size_t> Starts;
        std::vector<const PartsInfo*> Parts;
        std::unordered_map<int32_t, const PartsInfo*> BySeq;
    };

    const Taken& TakersOf(Fitting& fitting);
    // Worked out for the first reason that names takers.
    const Holders& HoldersOf();
    // The placement index the reasons share, made by the first one that asks the blocks; null
    // without memory for it, and then the questions scan the lists with the same answers.
    const PlacementIndex* Index();
    // Worked out for the first part of the process that asks.
    const ProcessBlocks& BlocksOf(const KouteiInfo& process, const PlacementIndex* index);
    Fitting& FittingOf(int32_t processNo, std::vector<char> holding, const BlockShapes& shapes);
    // Whether a block that the part may take, of a rectangle that fits it, takes its next stack.
    bool TakesNext(const CornerQuery& query, const ProcessBlocks& blocks,
                   const std::vector<char>& holding, int32_t seq) const;

    const CKestoApp& app_;
    std::unique_ptr<PlacementIndex> index_;
    bool indexTried_ = false;
    std::optional<Holders> holders_;
    std::unordered_map<int32_t, Largest> largest_;
    std::unordered_map<int32_t, ProcessBlocks> processes_;
    std::map<FittingKey, Fitting> fitting_;
};

const PlacementIndex* ShortSurvey::Index() {
    if (!indexTried_) {
        indexTried_ = true;
        try {
            index_ = std::make_unique<PlacementIndex>(app_);
        } catch (const std::bad_alloc&) {
            index_.reset();
        }
    }
    return index_.get();
}

const ShortSurvey::ProcessBlocks& ShortSurvey::BlocksOf(const KouteiInfo& process,
                                                        const PlacementIndex* index) {
    const auto known = processes_.find(process.No);
    if (known != processes_.end())
        return known->second;
    ProcessBlocks blocks{BlockShapesOf(app_, index, process), {}, {}};
    for (size_t k = 0; k < blocks.Shapes.Blocks.size(); ++k) {
        const int32_t occupant = app_.Blocks[blocks.Shapes.Blocks[k]].Occupant;
        if (occupant == kNoOccupant)
            blocks.Open.push_back(k);
        else
            blocks.Held[occupant].push_back(k);
    }
    return processes_.emplace(process.No, std::move(blocks)).first->second;
}

// Parts of about one size in one process fit the same rectangles, and so the same blocks.
ShortSurvey::Fitting& ShortSurvey::FittingOf(int32_t processNo, std::vector<char> holding,
                                             const BlockShapes& shapes) {
    FittingKey key{processNo, std::move(holding)};
    const auto known = fitting_.find(key);
    if (known != fitting_.end())
        return known->second;
    Fitting fitting;
    for (size_t k = 0; k < shapes.Blocks.size(); ++k) {
        if (key.second[static_cast<size_t>(shapes.ShapeOf[k])] != 0)
            fitting.Blocks.push_back(shapes.Blocks[k]);
    }
    return fitting_.emplace(std::move(key), std::move(fitting)).first->second;
}

bool ShortSurvey::TakesNext(const CornerQuery& query, const ProcessBlocks& blocks,
                            const std::vector<char>& holding, int32_t seq) const {
    std::vector<int> open;
    const auto add = [&](const std::vector<size_t>& places) {
        for (size_t k : places) {
            if (holding[static_cast<size_t>(blocks.Shapes.ShapeOf[k])] != 0)
                open.push_back(blocks.Shapes.Blocks[k]);
        }
    };
    add(blocks.Open);
    if (const auto own = blocks.Held.find(seq); own != blocks.Held.end())
        add(own->second);
    return query.TakesNext(open);
}

const ShortSurvey::Holders& ShortSurvey::HoldersOf() {
    if (holders_)
        return *holders_;
    Holders& h = holders_.emplace();
    // Counted first, then filed, so that every block's parts lie side by side.
    h.Starts.assign(static_cast<size_t>(app_.Blocks.Filled()) + 1, 0);
    for (const HaichiInfo& stack : app_.HaichiList) {
        if (stack.Part != nullptr && app_.BlockOf(stack) != nullptr)
            ++h.Starts[static_cast<size_t>(stack.BlockIndex) + 1];
    }
    for (size_t i = 1; i < h.Starts.size(); ++i)
        h.Starts[i] += h.Starts[i - 1];
    h.Parts.resize(h.Starts.back());
    std::vector<size_t> next(h.Starts.begin(), h.Starts.end() - 1);
    for (const HaichiInfo& stack : app_.HaichiList) {
        if (stack.Part != nullptr && app_.BlockOf(stack) != nullptr)
            h.Parts[next[static_cast<size_t>(stack.BlockIndex)]++] = stack.Part;
    }
    for (const PartsInfo& p : app_.PartsList)
        h.BySeq.try_emplace(p.Seq, &p);
    return h;
}

// The stacks standing in the blocks that could take a part, and the parts holding those
// blocks, by part.
const ShortSurvey::Taken& ShortSurvey::TakersOf(Fitting& fitting) {
    if (fitting.Takers)
        return *fitting.Takers;
    const Holders& holders = HoldersOf();
    Taken t;
    std::unordered_map<const PartsInfo*, int32_t> stacks;
    for (int i : fitting.Blocks) {
        const auto block = static_cast<size_t>(i);
        for (size_t k = holders.Starts[block]; k < holders.Starts[block + 1]; ++k) {
            ++stacks[holders.Parts[k]];
            ++t.Stacks;
        }
        // A free block and the marker of a group move name no part.
        const auto holder = holders.BySeq.find(app_.Blocks[i].Occupant);
        if (holder != holders.BySeq.end())
            stacks.try_emplace(holder->second, 0);
    }
    for (const auto& [part, count] : stacks)
        t.Takers.push_back({part, count});
    std::sort(t.Takers.begin(), t.Takers.end(), [](const BlockTaker& a, const BlockTaker& b) {
        return a.Stacks != b.Stacks ? a.Stacks > b.Stacks : a.Part->Seq < b.Part->Seq;
    });
    return fitting.Takers.emplace(std::move(t));
}

std::optional<ShortReason> ShortSurvey::Reason(const PartsInfo& part) {
    if (!IsShort(part))
        return std::nullopt;
    ShortReason r;
    r.Missing = AddClamped(part.Quantity, -int64_t{part.PiecesPlaced});
    r.SetAside = part.PiecesSetAside;
    r.ProcessNo = part.KouteiNo;
    r.PartX = part.SizeX;
    r.PartY = part.SizeY;
    // Pieces set aside were never the placement's to put down.
    const int64_t toPlace = int64_t{part.Quantity} - part.PiecesSetAside;
    if (toPlace - part.PiecesPlaced <= 0) {
        r.Cause = ShortCause::SetAside;
        return r;
    }
    const KouteiInfo* process = app_.KouteiByNo(part.KouteiNo);
    if (process == nullptr || process->Pallet == nullptr) {
        r.Cause = ShortCause::NoPallet;
        return r;
    }
    if (const auto l = largest_.find(process->No); l != largest_.end()) {
        r.BlockX = l->second.X;
        r.BlockY = l->second.Y;
    }
    const PlacementIndex* index = Index();
    const ProcessBlocks& blocks = BlocksOf(*process, index);
    const CornerQuery query(app_, index, process, &part, ProcessBounds(app_, index, process));
    std::vector<char> holding = query.HoldingShapes(blocks.Shapes);
    if (std::find(holding.begin(), holding.end(), 1) == holding.end()) {
        r.Cause = ShortCause::NoFittingBlock;
        return r;
    }
    const PalletInfo& pallet = *process->Pallet;
    r.PieceHeight = part.PieceHeight;
    r.HeightLimit = pallet.MaxStackHeight;
    r.PerStackNeeded = static_cast<int32_t>(
        std::min<int64_t>(PiecesWanted(toPlace, part.PerStackLimit), INT32_MAX));
    // The same test that caps a stack when it is made.
    const bool capped =
        part.PieceHeight != 0 &&
        pallet.MaxStackHeight < static_cast<double>(r.PerStackNeeded) * part.PieceHeight;
    if (capped)
        r.PerStack = TruncToInt32(pallet.MaxStackHeight / part.PieceHeight);
    // Stacks of no piece end the placement of the part however much room is left.
    if (capped && r.PerStack < 1) {
        r.Cause = ShortCause::NoPieceHigh;
        return r;
    }
    if (TakesNext(query, blocks, holding, part.Seq)) {
        r.Cause = ShortCause::Room;
        return r;
    }
    Fitting& fitting = FittingOf(process->No, std::move(holding), blocks.Shapes);
    const Taken& taken = TakersOf(fitting);
    r.Blocks = static_cast<int32_t>(fitting.Blocks.size());
    r.Stacks = taken.Stacks;
    r.Takers = taken.Takers;
    if (capped) {
        r.Cause = ShortCause::FewPerStack;
        return r;
    }
    r.OperatorPerStack = part.OperatorPerStack;
    r.Cause = part.OperatorPerStack > 0 ? ShortCause::SheetCount : ShortCause::BlocksTaken;
    return r;
}

std::string TakerList(const ShortReason& r, const ShortReasonTexts& texts) {
    std::string out;
    for (size_t i = 0; i < r.Takers.size() && i < kTakersNamed; ++i) {
        if (!out.empty())
            out += ", ";
        out += r.Takers[i].Part->Code + ": " + std::to_string(r.Takers[i].Stacks);
    }
    if (r.Takers.size() > kTakersNamed)
        out += FillFigures(texts.More, {std::to_string(r.Takers.size() - kTakersNamed)});
    return out;
}

}  // namespace

std::optional<ShortReason> WhyShort(const CKestoApp& app, const PartsInfo& part) {
    return ShortSurvey(app).Reason(part);
}

std::vector<ShortPart> WhyShortAll(const CKestoApp& app) {
    std::vector<ShortPart> out;
    // Most jobs have no short part: then there is nothing to survey or index.
    if (std::none_of(app.PartsList.begin(), app.PartsList.end(), IsShort))
        return out;
    ShortSurvey survey(app);
    for (const PartsInfo& p : app.PartsList) {
        if (std::optional<ShortReason> r = survey.Reason(p))
            out.push_back({&p, std::move(*r)});
    }
    return out;
}

ShortReasonTexts::ShortReasonTexts(const MessageTable& messages)
    : SetAside(
          TextOr(messages, kSection, "SHORT-SET-ASIDE", "Pieces set aside by the operator: %1")),
      NoPallet(TextOr(messages, kSection, "SHORT-NO-PALLET", "Process %1 has no pallet")),
      NoBlocks(
          TextOr(messages, kSection, "SHORT-NO-BLOCKS", "Process %1 has no blocks: part %2 x %3")),
      NoBlock(TextOr(messages, kSection, "SHORT-NO-BLOCK",
                     "No block is large enough: part %1 x %2, largest block %3 x %4")),
      NoPiece(TextOr(messages, kSection, "SHORT-NO-PIECE",
                     "The stacking height allows no piece: piece height %1, limit %2")),
      FewPieces(TextOr(messages, kSection, "SHORT-FEW-PIECES",
                       "The stacking height allows %3 per stack where %4 were needed: piece "
                       "height %1, limit %2")),
      SheetCount(TextOr(messages, kSection, "SHORT-SHEET-COUNT",
                        "Stacked again by the operator at %1 per stack: blocks that would hold "
                        "it %2, stacks in them %3 (%4)")),
      BlocksTaken(TextOr(messages, kSection, "SHORT-BLOCKS-TAKEN",
                         "Every block that would hold it is taken: blocks %1, stacks in them %2 "
                         "(%3)")),
      Room(TextOr(messages, kSection, "SHORT-ROOM",
                  "A block has room for it: Retry or Auto places the rest")),
      More(TextOr(messages, kSection, "SHORT-MORE", ", and %1 more")) {}

void AppendShortReasonText(TextBuilder& line, const ShortReason& r, const ShortReasonTexts& texts) {
    using std::to_string;
    switch (r.Cause) {
        case ShortCause::SetAside:
            line.Figures(texts.SetAside, {to_string(r.SetAside)});
            return;
        case ShortCause::NoPallet:
            line.Figures(texts.NoPallet, {to_string(r.ProcessNo)});
            return;
        case ShortCause::NoFittingBlock:
            if (r.BlockX == 0 && r.BlockY == 0) {
                line.Figures(texts.NoBlocks,
                             {to_string(r.ProcessNo), ShortLength(r.PartX), ShortLength(r.PartY)});
                return;
            }
            line.Figures(texts.NoBlock, {ShortLength(r.PartX), ShortLength(r.PartY),
                                         ShortLength(r.BlockX), ShortLength(r.BlockY)});
            return;
        case ShortCause::NoPieceHigh:
            line.Figures(texts.NoPiece, {ShortLength(r.PieceHeight), ShortLength(r.HeightLimit)});
            return;
        case ShortCause::FewPerStack:
            line.Figures(texts.FewPieces, {ShortLength(r.PieceHeight), ShortLength(r.HeightLimit),
                                           to_string(r.PerStack), to_string(r.PerStackNeeded)});
            return;
        case ShortCause::SheetCount:
            line.Figures(texts.SheetCount, {to_string(r.OperatorPerStack), to_string(r.Blocks),
                                            to_string(r.Stacks), TakerList(r, texts)});
            return;
        case ShortCause::BlocksTaken:
            line.Figures(texts.BlocksTaken,
                         {to_string(r.Blocks), to_string(r.Stacks), TakerList(r, texts)});
            return;
        case ShortCause::Room:
            break;
    }
    line.Figures(texts.Room, {});
}

std::string ShortReasonText(const ShortReason& r, const MessageTable& messages) {
    TextBuilder line;
    AppendShortReasonText(line, r, ShortReasonTexts(messages));
    return line.Take();
}

}  // namespace kesto
