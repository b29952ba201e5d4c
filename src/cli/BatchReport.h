// Readable summaries of a job for the batch tool; texts of the job reach the terminal as UTF-8.
#pragma once

#include <iosfwd>

#include "app/CKestoApp.h"

namespace kesto {

// Pallets, boxes, processes, parts in their sorted order, outline elements.
void ReportInput(const CKestoApp& app, std::ostream& out);
// Per process and pallet the stacks (part, pieces, corner, position), then the parts short.
void ReportPlacement(const CKestoApp& app, std::ostream& out);

}  // namespace kesto
