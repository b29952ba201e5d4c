#include "output/CKs_FileSave.h"
#include "output/StackIndex.h"
#include "support/AtomicFile.h"
#include "support/SetupList.h"

namespace kesto {

namespace {

// A run killed while writing leaves its temporaries beside the targets, and nothing else
// would ever remove them from a data folder that a host program scans.
void RemoveTemporariesOfTargets(const std::string& result, const std::string& save) {
    if (!result.empty()) {
        AtomicFile::RemoveStaleTemporaries(result + "_tmp");
        AtomicFile::RemoveStaleTemporaries(result);
    }
    if (!save.empty())
        AtomicFile::RemoveStaleTemporaries(save);
}
}  // namespace

Outcome CKs_FileSave::SaveAll() {
    const std::string result = GetDataFilePath(services_, DataFile::Result);
    const std::string save = GetDataFilePath(services_, DataFile::PlacementSave);
    RemoveTemporariesOfTargets(result, save);
    if (app_.PartsList.Empty())
        return Outcome::Done();
    // Both files name the same stacks: gathered once.
    const StackIndex stacks(app_);
    if (const Outcome written = WriteResultFile(result, stacks); !written.Ok())
        return written;
    return WritePlacementFile(save, stacks);
}

}  // namespace kesto
