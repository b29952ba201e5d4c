// Why a part bound for the pallets is not wholly on them, worked out from the same data and
// the same corner queries the placement asks. Told to the operator in the part panel, the
// all-parts list, the report and the summary page; working it out only reads the job.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "app/CKestoApp.h"
#include "support/TextFormat.h"

namespace kesto {

class MessageTable;

// The causes in the order they are tried: the first that applies is the part's reason.
enum class ShortCause {
    SetAside,        // the operator set aside what is missing
    NoPallet,        // the part's process has no pallet
    NoFittingBlock,  // no block of the process's pallets can take a stack of the part
    NoPieceHigh,     // the stacking height is below one piece
    FewPerStack,     // the stacking height holds fewer pieces per stack than needed
    SheetCount,      // the operator stacked it again at fewer pieces per stack
    BlocksTaken,     // every block that could take it is taken
    Room,            // a block could take more: the placement was made with other counts
};

// A part holding blocks that a short part could use, and its stacks standing in them.
struct BlockTaker {
    const PartsInfo* Part = nullptr;
    int32_t Stacks = 0;
};

struct ShortReason {
    ShortCause Cause = ShortCause::Room;
    int32_t Missing = 0;   // pieces not on the pallets (quantity less pieces placed)
    int32_t SetAside = 0;  // pieces the operator set aside
    int32_t ProcessNo = 0;
    double PartX = 0;  // the part's footprint
    double PartY = 0;
    double BlockX = 0;  // the largest block of the process (by area); 0 x 0 when it has none
    double BlockY = 0;
    double PieceHeight = 0;
    double HeightLimit = 0;          // the pallet's greatest stack height
    int32_t PerStack = 0;            // pieces one stack may hold under the height
    int32_t PerStackNeeded = 0;      // pieces per stack the placement wanted
    int32_t OperatorPerStack = 0;    // the operator's count of a sheet-count change
    int32_t Blocks = 0;              // blocks that could take a stack of the part
    int32_t Stacks = 0;              // stacks standing in them
    std::vector<BlockTaker> Takers;  // by stacks, most first, then in list order
};

// The reason of part, or nullopt when it is not bound for the pallets or not short.
std::optional<ShortReason> WhyShort(const CKestoApp& app, const PartsInfo& part);

struct ShortPart {
    const PartsInfo* Part = nullptr;
    ShortReason Reason;
};

// The reasons of every short part in list order, with one placement index for all.
std::vector<ShortPart> WhyShortAll(const CKestoApp& app);

// The [Short] texts of the reasons, from the message file or their English defaults: looked
// up once for a list of many reasons.
struct ShortReasonTexts {
    explicit ShortReasonTexts(const MessageTable& messages);

    std::string SetAside;     // SHORT-SET-ASIDE
    std::string NoPallet;     // SHORT-NO-PALLET
    std::string NoBlocks;     // SHORT-NO-BLOCKS
    std::string NoBlock;      // SHORT-NO-BLOCK
    std::string NoPiece;      // SHORT-NO-PIECE
    std::string FewPieces;    // SHORT-FEW-PIECES
    std::string SheetCount;   // SHORT-SHEET-COUNT
    std::string BlocksTaken;  // SHORT-BLOCKS-TAKEN
    std::string Room;         // SHORT-ROOM
    std::string More;         // SHORT-MORE: the takers not named
};

// The reason as one line of text, appended to line.
void AppendShortReasonText(TextBuilder& line, const ShortReason& reason,
                           const ShortReasonTexts& texts);
// The same line on its own.
std::string ShortReasonText(const ShortReason& reason, const MessageTable& messages);

}  // namespace kesto
