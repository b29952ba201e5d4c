#include "app/CKestoApp.h"

#include <utility>

#include <algorithm>
#include <new>

namespace kesto {

HaichiInfo* CKestoApp::AddHaichiInfo() {
    try {
        HaichiInfo& rec = HaichiList.Append();
        ++HaichiList.Count;
        rec.BlockIndex = -1;
        rec.Corner = 0;
        return &rec;
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

void CKestoApp::RemoveHaichiInfo(HaichiInfo* rec) {
    // The count is deliberately left as it was: it counts stacks ever made in this job.
    HaichiList.Remove(rec);
}

int CKestoApp::HasKoutei(int32_t no) const {
    return KouteiByNo(no) != nullptr ? 1 : 0;
}

const KouteiInfo* CKestoApp::KouteiByNo(int32_t no) const {
    for (const KouteiInfo& k : KouteiList) {
        if (k.No == no)
            return &k;
    }
    return nullptr;
}

KouteiInfo* CKestoApp::KouteiByNo(int32_t no) {
    return const_cast<KouteiInfo*>(std::as_const(*this).KouteiByNo(no));
}

void CKestoApp::FreeJob() {
    // Counts stay as they were until the lists are read again.
    BoxList.Clear();
    KouteiList.Clear();
    PartsList.Clear();
    PalletList.Clear();
    HaichiList.Clear();
    Blocks.ReleaseEntries();
}

const KouteiInfo* CKestoApp::KouteiAt(int32_t position) const {
    int32_t n = 1;
    for (const KouteiInfo& k : KouteiList) {
        if (n++ == position)
            return &k;
    }
    return nullptr;
}

KouteiInfo* CKestoApp::KouteiAt(int32_t position) {
    return const_cast<KouteiInfo*>(std::as_const(*this).KouteiAt(position));
}

PalletInfo* CKestoApp::PalletByName(const std::string& name) {
    for (PalletInfo& p : PalletList) {
        if (p.Name == name)
            return &p;
    }
    return nullptr;
}

const PalletInfo* CKestoApp::PalletByName(const std::string& name) const {
    return const_cast<CKestoApp*>(this)->PalletByName(name);
}

}  // namespace kesto
