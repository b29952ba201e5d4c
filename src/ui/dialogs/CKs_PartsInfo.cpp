#include "ui/dialogs/CKs_PartsInfo.h"

#include <utility>

#include "render/TextCodec.h"

namespace kesto {

CKs_PartsInfo::CKs_PartsInfo(CKestoApp& app, const ViewState& shown, const MessageTable& messages,
                             const FontTable& fonts, const PalletDrawing& selection, WhyShortFn why,
                             QWidget* parent)
    : ImagePanel(fonts, parent),
      app_(app),
      selection_(selection),
      why_(std::move(why)),
      panel_(app, shown, messages) {
    setObjectName("CKs_PartsInfo");
}

void CKs_PartsInfo::PlacePanel(const IntRect& placement) {
    panel_.SetClient(PlaceAt(placement));
    Refresh();
}

const PartsInfo* CKs_PartsInfo::Shown() const {
    if (const HaichiInfo* picked = selection_.PickedStack())
        return picked->Part;
    if (chosen_ == 0)
        return nullptr;
    for (const PartsInfo& part : app_.PartsList) {
        if (part.Seq == chosen_)
            return &part;
    }
    return nullptr;
}

void CKs_PartsInfo::Refresh() {
    const PartsInfo* part = Shown();
    const std::string why = part != nullptr && why_ ? why_(part->Seq) : std::string();
    setToolTip(DecodeText(why));
    Paint([&](Canvas& canvas) { panel_.Refresh(canvas, part, why); });
}

void CKs_PartsInfo::Choose(int32_t seq) {
    chosen_ = seq;
    Refresh();
}

}  // namespace kesto
