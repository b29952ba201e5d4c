// Readable summaries of a job for the batch tool; texts of the job reach the terminal as UTF-8.
#pragma once

#include <iosfwd>
#include <string>

#include "app/CKestoApp.h"

namespace kesto {

struct Services;

// Pallets, boxes, processes, parts in their sorted order, outline elements.
void ReportInput(const CKestoApp& app, std::ostream& out);
// Per process and pallet the stacks (part, pieces, corner, position), then the parts short with
// why, and the stacks across an offset line. The job is only read, though the reasons' corner
// tests need it as it is.
void ReportPlacement(const CKestoApp& app, const Services& services, std::ostream& out);

// Writes report into the file at path (created or replaced; in text mode, as the report would
// reach stdout). false with error set when the file cannot be opened or written whole.
bool WriteReportFile(const std::string& path, const std::string& report, std::string& error);

}  // namespace kesto
