// Writes the result file for the machine and the placement save file, and checks offsets.
#pragma once

#include <string>

#include "app/CKestoApp.h"

namespace kesto {

class CKs_FileSave {
  public:
    CKs_FileSave(CKestoApp& app, const Services& services) : app_(app), services_(services) {}
    virtual ~CKs_FileSave() = default;

    // Result file (kind 96) then, when that succeeded, the save file (kind 97). 1 when both
    // succeeded (or the parts list is empty).
    int SaveAll();
    int WriteResultFile(const std::string& path);
    int WritePlacementFile(const std::string& path);

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
