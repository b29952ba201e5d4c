#include <string>

#include "app/CKestoApp.h"
#include "app/ScanFormat.h"
#include "app/ViewState.h"

namespace kesto {

namespace {

// A value read with "%d"; a missing value reads as "0", text without a number changes nothing.
void ReadUserInt(HostStore& host, const char* name, int32_t& value) {
    ScanInt(host.ReadUserValue(name).value_or("0"), value);
}

template <class List>
void Forget(List& list) {
    list.Clear();
    list.Count = 0;
}

}  // namespace

void CKestoApp::ReadRegistrySettings(HostStore& host) {
    // The callers have freed the job already; this only forgets it.
    Forget(BoxList);
    Forget(KouteiList);
    Forget(PartsList);
    Forget(HaichiList);
    Forget(PalletList);
    BoxFlags.fill(0);
    Blocks.Clear();
    // The direct setting is read once a run, so a change by the operator survives Retry.
    if (Settings.IsDirect.Unread()) {
        int32_t stored = DirectMode::kUnread;
        ReadUserInt(host, "IsDirect", stored);
        Settings.IsDirect = stored;
    }
}

void CKestoApp::WriteRegistrySettings(HostStore& host) {
    // A value that cannot be written is simply not kept.
    host.WriteUserValue("IsDirect", std::to_string(Settings.IsDirect.Stored()));
}

void ReadViewSettings(HostStore& host, ViewState& shown) {
    int32_t stored = shown.StoredBlockDraw();
    ReadUserInt(host, "IsBlockDraw", stored);
    shown.SetStoredBlockDraw(stored);
}

void WriteViewSettings(HostStore& host, const ViewState& shown) {
    host.WriteUserValue("IsBlockDraw", std::to_string(shown.StoredBlockDraw()));
}

}  // namespace kesto
