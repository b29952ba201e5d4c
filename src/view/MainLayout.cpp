#include "view/MainLayout.h"

namespace kesto {

namespace {

struct Measures {
    int lh, sbh, bh, th, ph, cw, lw, sw, bw, u;
};

Measures Measure(int W, int H) {
    Measures m{};
    m.lh = static_cast<int>(H * 0.025);
    m.sbh = static_cast<int>(H * 0.15);
    m.bh = static_cast<int>(H * 0.04);
    m.th = static_cast<int>(H * 0.25);
    m.ph = static_cast<int>(H * 0.12);
    m.cw = static_cast<int>(W * 0.2);
    m.lw = static_cast<int>(m.cw * 0.9);
    m.sw = static_cast<int>(W * 0.15);
    m.bw = static_cast<int>(W * 0.072);
    m.u = (m.sbh + m.bh) / 4;
    return m;
}

void PlaceLeftColumn(const Measures& m, int H, MainLayout& out) {
    auto& c = out.Controls;
    c[kSmallBoxLabel] = {2, 2, m.lw, m.lh};
    c[kSmallBoxList] = {2, m.lh + 2, m.lw, m.sbh};
    const ControlId pageIds[] = {kPagePrevious, kBoxButton1, kBoxButton2, kBoxButton3, kPageNext};
    for (int i = 0; i < 5; ++i)
        c[pageIds[i]] = {m.lw + 2, m.lh + 2 + i * (m.sbh / 5), m.cw - m.lw, m.sbh / 5};
    c[kDownButton] = {2, m.lh + m.sbh + 2, m.lw / 2, m.bh};
    c[kUpButton] = {2 + m.lw / 2, m.lh + m.sbh + 2, m.lw / 2, m.bh};
    c[kToriokiLabel] = {2, m.lh + m.sbh + m.bh + 4, m.lw, m.lh};
    const int toriokiTop = 2 * m.lh + m.sbh + m.bh + 4;
    c[kToriokiList] = {2, toriokiTop, m.lw, m.th};
    c[kLeftButton] = {2 + m.lw, toriokiTop, m.cw - m.lw, m.th / 2};
    c[kRightButton] = {2 + m.lw, toriokiTop + m.th / 2, m.cw - m.lw, m.th / 2};
    const ControlRect view{2, m.sbh + 2 * m.lh + m.th + 6 + m.bh, m.cw, m.ph};
    c[kPartViewPlace] = view;
    out.ViewPlacement = {view.X, view.Y, view.X + view.Width, view.Y + view.Height};
    const int allLabelTop = m.sbh + 2 * m.lh + m.th + 8 + m.ph + m.bh;
    c[kAllPartsLabel] = {2, allLabelTop, m.cw, m.lh};
    const int allTop = allLabelTop + m.lh;
    c[kAllPartsList] = {2, allTop, m.cw, H - 2 - allTop};
}

void PlaceSecondColumn(const Measures& m, int W, int H, int comboHeight, MainLayout& out) {
    auto& c = out.Controls;
    c[kScheduleLabel] = {m.cw + 4, 2, m.sw, m.lh};
    c[kScheduleList] = {m.cw + 4, m.lh + 2, m.sw, m.sbh + m.bh};
    const int comboTop = m.lh + 2 + m.sbh + m.bh + 4;
    c[kPalletCombo] = {m.cw + 4, comboTop, m.sw, comboHeight};
    out.AreaPlacement = {m.cw + 4, comboTop + comboHeight + 2, W - 2, H - 2};
}

void PlaceButtonStrip(const Measures& m, int W, MainLayout& out) {
    auto& c = out.Controls;
    const int X = m.cw + 4 + m.sw;
    const int Y = m.lh + 2;
    const int Ym = Y + 2 * m.u;
    const int bw = m.bw;
    const int u = m.u;
    c[kRetryButton] = {X, Y, bw, u};
    c[kAutoButton] = {X, Y + u, bw, u};
    c[kMaiChgButton] = {X, Ym, bw, 2 * u};
    c[kHitLabel] = {X + bw, Ym, 2 * bw, u};
    c[kHitByBlock] = {X + bw, Ym + u, bw, u};
    c[kHitSingle] = {X + 2 * bw, Ym + u, bw, u};
    c[k3DToggle] = {X + 3 * bw, Ym, bw, u};
    c[kGridToggle] = {X + 3 * bw, Ym + u, bw, u};
    c[kNestToggle] = {X + 4 * bw, Ym + u, bw, u};
    c[kBlockDrawToggle] = {X + 4 * bw, Ym, bw, u};
    c[kInfoButton] = {X + 5 * bw, Ym, bw, 2 * u};
    c[kFlatButton] = {X + 6 * bw, Ym, bw, u};
    c[kDanmenButton] = {X + 6 * bw, Ym + u, bw, u};
    c[kTwoPalletButton] = {X + 7 * bw, Ym, bw, u};
    c[kFourPalletButton] = {X + 7 * bw, Ym + u, bw, u};
    const int half = (W - 2 - (X + 8 * bw)) / 2;
    c[kCancel] = {X + 8 * bw, Ym, half, 2 * u};
    c[kOk] = {X + 8 * bw + half, Ym, half, 2 * u};
    c[kInfoPlace] = {X + bw + 2, 2, W - 2 - (X + bw + 2), Ym - 6};
    out.InfoPlacement = {X + bw + 2, 2, W - 2, Ym - 4};
}

}  // namespace

MainLayout ComputeMainLayout(int width, int height, int comboHeight) {
    const Measures m = Measure(width, height);
    MainLayout out;
    PlaceLeftColumn(m, height, out);
    PlaceSecondColumn(m, width, height, comboHeight, out);
    PlaceButtonStrip(m, width, out);
    return out;
}

}  // namespace kesto
