// The sort sheet: the placed job on paper beside the machine. Every pallet that holds stacks
// gets an A4 landscape page: the pallet drawn on the left in the print palette, each stack
// numbered, its cells numbered; on the right the table of its stacks (part, name, pieces,
// block, corner, the operator's changes) under a legend of the marks; a table too long for
// one page runs on over pages of the same header. Then the summary: the small boxes and
// what is in them, the set-aside parts, the parts left short and why, and the stacks that
// lie across an offset line. kesto-batch --picture FILE.pdf writes it, the window prints it.
#pragma once

#include <cstdint>
#include <vector>

#include "app/CKestoApp.h"
#include "sheet/PlacementPicture.h"
#include "sheet/SheetBook.h"
#include "support/Services.h"

namespace kesto {

class JobSession;

// The pages of the sheet.
PictureDocument BuildSortSheet(const CKestoApp& app, const Services& services,
                               const SheetHeading& heading);

// The sheet of the session's job as it stands now, named by its job file and dated now.
PictureDocument BuildSortSheet(const JobSession& session);

// Each block's number on its pallet by block index: 1, 2, ... in the order the cells are
// numbered from the start corner; 0 for an index past the job's blocks.
std::vector<int32_t> BlockNumbers(const CKestoApp& app);

// The stacks of one pallet of a process (its No, the pallet's number) as the sheet lists
// them: by block number, then the corner each stands in, then list order.
std::vector<const HaichiInfo*> SheetOrder(const CKestoApp& app, int32_t kouteiNo, int32_t pallet);

// The corner of its block a stack stands in: the one it is nearest to, as it stands now (a
// moved stack keeps the corner the placement gave it in its record). 0 without a block.
uint8_t StandingCorner(const CKestoApp& app, const HaichiInfo& stack);

// The summary pages, on from the sheet's pallet pages.
void AddSummaryPages(const CKestoApp& app, const Services& services, const SheetTexts& texts,
                     const std::vector<int32_t>& blockNumbers, SheetBook& book);

// "01 Laser cutting": a process as the sheet names it.
std::string SheetProcessText(const KouteiInfo& koutei);

}  // namespace kesto
