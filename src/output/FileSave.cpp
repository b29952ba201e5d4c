#include "output/CKs_FileSave.h"
#include "support/SetupList.h"

namespace kesto {

namespace {
constexpr int kResultFileKind = 96;
constexpr int kSaveFileKind = 97;
}  // namespace

int CKs_FileSave::SaveAll() {
    if (app_.PartsList.Empty())
        return 1;
    if (WriteResultFile(GetDataFilePath(services_, DataFile::Result)) != 1)
        return 0;
    return WritePlacementFile(GetDataFilePath(services_, DataFile::PlacementSave));
}

}  // namespace kesto
