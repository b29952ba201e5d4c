// Readable summaries of a job for the batch tool; texts of the job reach the terminal as UTF-8.
#pragma once

#include <iosfwd>
#include <string>

#include "app/CKestoApp.h"
#include "support/TaskThread.h"

namespace kesto {

struct Services;

// Pallets, boxes, processes, parts in their sorted order, outline elements.
void ReportInput(const CKestoApp& app, std::ostream& out);
// Per process and pallet the stacks (part, pieces, corner, position), then the parts short with
// why, and the stacks across an offset line. The job is only read, though the reasons' corner
// tests need it as it is.
void ReportPlacement(const CKestoApp& app, const Services& services, std::ostream& out);

// ReportPlacement on a thread of its own from the moment it is made, while the caller goes on
// with work that only reads the job too (writing the job's files) and writes nothing on out. The
// job must not change, nor out be written by another, until Wait has returned.
class PlacementReportThread {
  public:
    PlacementReportThread(const CKestoApp& app, const Services& services, std::ostream& out);
    PlacementReportThread(const PlacementReportThread&) = delete;
    PlacementReportThread& operator=(const PlacementReportThread&) = delete;
    ~PlacementReportThread() = default;  // waits for the thread

    // Waits for the report to be written; rethrows what stopped it.
    void Wait();

  private:
    TaskThread thread_;
};

// Writes report into the file at path (created or replaced; in text mode, as the report would
// reach stdout). false with error set when the file cannot be opened or written whole.
bool WriteReportFile(const std::string& path, const std::string& report, std::string& error);

}  // namespace kesto
