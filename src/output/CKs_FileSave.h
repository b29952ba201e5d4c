// Writes the result file for the machine and the placement save file, and checks offsets.
#pragma once

#include <string>

#include "app/CKestoApp.h"

namespace kesto {

class StackIndex;

class CKs_FileSave {
  public:
    CKs_FileSave(CKestoApp& app, const Services& services) : app_(app), services_(services) {}
    virtual ~CKs_FileSave() = default;

    // Result file (kind 96) then, when that succeeded, the save file (kind 97). Done when both
    // succeeded (or the parts list is empty), else the failure of the first that failed.
    Outcome SaveAll();
    // Failed with 9021 (a file cannot be created) or 9022 (not written), or without a code when
    // the operator keeps a job with parts short from having its result deleted.
    Outcome WriteResultFile(const std::string& path);
    // With the stacks of every part gathered before (SaveAll gathers them once for both files).
    Outcome WriteResultFile(const std::string& path, const StackIndex& stacks);
    // Failed with 9023 (cannot be created), or 9024 / 9025 as the stack or unplaced line that
    // was written last.
    Outcome WritePlacementFile(const std::string& path);
    Outcome WritePlacementFile(const std::string& path, const StackIndex& stacks);

    // The offset check at the end of a job, against the pallet of the process on view (its
    // 1-based position): 1 to go on, 0 when the operator chose Cancel at the warning (the
    // caller ends the process with 999 at once).
    int CheckOffsets(int32_t processOnView);
    // Text of a key of section "KakuDlg" of Kesto.ini in the system folder ("" when missing).
    std::string GetKakuText(const std::string& key);

  private:
    CKestoApp& app_;
    Services services_;
};

}  // namespace kesto
