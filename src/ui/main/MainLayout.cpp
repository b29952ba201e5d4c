#include "ui/main/MainLayout.h"

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
    c[1004] = {2, 2, m.lw, m.lh};
    c[1000] = {2, m.lh + 2, m.lw, m.sbh};
    const int pageIds[] = {1042, 1037, 1038, 1039, 1041};
    for (int i = 0; i < 5; ++i)
        c[pageIds[i]] = {m.lw + 2, m.lh + 2 + i * (m.sbh / 5), m.cw - m.lw, m.sbh / 5};
    c[1007] = {2, m.lh + m.sbh + 2, m.lw / 2, m.bh};
    c[1008] = {2 + m.lw / 2, m.lh + m.sbh + 2, m.lw / 2, m.bh};
    c[1005] = {2, m.lh + m.sbh + m.bh + 4, m.lw, m.lh};
    const int toriokiTop = 2 * m.lh + m.sbh + m.bh + 4;
    c[1002] = {2, toriokiTop, m.lw, m.th};
    c[1012] = {2 + m.lw, toriokiTop, m.cw - m.lw, m.th / 2};
    c[1013] = {2 + m.lw, toriokiTop + m.th / 2, m.cw - m.lw, m.th / 2};
    const ControlRect view{2, m.sbh + 2 * m.lh + m.th + 6 + m.bh, m.cw, m.ph};
    c[1014] = view;
    out.ViewRect = {view.X, view.Y, view.X + view.Width, view.Y + view.Height};
    const int allLabelTop = m.sbh + 2 * m.lh + m.th + 8 + m.ph + m.bh;
    c[1006] = {2, allLabelTop, m.cw, m.lh};
    const int allTop = allLabelTop + m.lh;
    c[1003] = {2, allTop, m.cw, H - 2 - allTop};
}

void PlaceSecondColumn(const Measures& m, int W, int H, int comboHeight, MainLayout& out) {
    auto& c = out.Controls;
    c[1015] = {m.cw + 4, 2, m.sw, m.lh};
    c[1001] = {m.cw + 4, m.lh + 2, m.sw, m.sbh + m.bh};
    const int comboTop = m.lh + 2 + m.sbh + m.bh + 4;
    c[1044] = {m.cw + 4, comboTop, m.sw, comboHeight};
    out.AreaRect = {m.cw + 4, comboTop + comboHeight + 2, W - 2, H - 2};
}

void PlaceButtonStrip(const Measures& m, int W, MainLayout& out) {
    auto& c = out.Controls;
    const int X = m.cw + 4 + m.sw;
    const int Y = m.lh + 2;
    const int Ym = Y + 2 * m.u;
    const int bw = m.bw;
    const int u = m.u;
    c[1016] = {X, Y, bw, u};
    c[1017] = {X, Y + u, bw, u};
    c[1018] = {X, Ym, bw, 2 * u};
    c[1019] = {X + bw, Ym, 2 * bw, u};
    c[1035] = {X + bw, Ym + u, bw, u};
    c[1036] = {X + 2 * bw, Ym + u, bw, u};
    c[1029] = {X + 3 * bw, Ym, bw, u};
    c[1028] = {X + 3 * bw, Ym + u, bw, u};
    c[1031] = {X + 4 * bw, Ym + u, bw, u};
    c[1032] = {X + 4 * bw, Ym, bw, u};
    c[1024] = {X + 5 * bw, Ym, bw, 2 * u};
    c[1025] = {X + 6 * bw, Ym, bw, u};
    c[1026] = {X + 6 * bw, Ym + u, bw, u};
    c[1027] = {X + 7 * bw, Ym, bw, u};
    c[1030] = {X + 7 * bw, Ym + u, bw, u};
    const int half = (W - 2 - (X + 8 * bw)) / 2;
    c[2] = {X + 8 * bw, Ym, half, 2 * u};
    c[1] = {X + 8 * bw + half, Ym, half, 2 * u};
    c[1040] = {X + bw + 2, 2, W - 2 - (X + bw + 2), Ym - 6};
    out.InfoRect = {X + bw + 2, 2, W - 2, Ym - 4};
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
