#include <string>

#include "app/CKestoApp.h"
#include "app/Codes.h"
#include "app/InputReaders.h"
#include "support/MessageFile.h"
#include "support/Paths.h"
#include "support/SetupList.h"
#include "support/TextFile.h"

namespace kesto {

namespace {

constexpr int kFontSetFirst = 1;
constexpr int kFontSetLast = 4;
// Column 1 height, column 4 character set, column 5 face name.
constexpr int kHeightColumn = 0;
constexpr int kCharSetColumn = 3;
constexpr int kFaceColumn = 4;

}  // namespace

std::string SettingsFilePath(const Services& services) {
    std::string folder;
    if (GetSetupFolder(services, "MSG", folder) == 0 || folder.empty())
        return "";
    return JoinPath(folder, "Kesto.ini");
}

Outcome CKestoApp::InitSettings(const Services& services) {
    Settings.FontHeight.fill(0);
    const std::string path = SettingsFilePath(services);
    if (path.empty() || FileExists(path) == 0) {
        services.Op.ShowMessageBox("Initial File Not found");
        return Outcome::Failed(error::kSettingsFileMissing);
    }
    // No code here: the run ends as one left without OK.
    if (services.Messages.Load(path, services.Op) != 0) {
        services.Op.ShowMessageBox("Initial File Initial Error");
        return Outcome::Failed();
    }
    for (int n = kFontSetFirst; n <= kFontSetLast; ++n) {
        FieldList fields;
        fields.Line = services.Messages.Get("FontDefine", "FontSet" + std::to_string(n));
        SplitFields(fields);
        // "Message Not Define" of a missing key has one column and defines nothing.
        if (fields.Count <= 2)
            continue;
        Settings.FontHeight[n] = AtoL(fields[kHeightColumn]);
        Settings.FontCharSet[n] = AtoL(fields[kCharSetColumn]) & 0xFF;
        Settings.FontNames[n] = fields[kFaceColumn];
    }
    return Outcome::Done();
}

void CKestoApp::ReadPalletSelect(const MessageTable& messages) {
    FieldList fields;
    fields.Line = messages.Get("PalletSelect", "PalletInfo");
    SplitFields(fields);
    Settings.PalletCount = AtoL(fields[0]);
    Settings.PalletPrefix = CutField(fields[1], kName32);
}

}  // namespace kesto
