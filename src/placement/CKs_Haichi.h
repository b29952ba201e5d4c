// The placement engine: stacks the parts of every process into block corners.
// A short-lived worker; all state that survives lives in the application object.
#pragma once

#include <array>
#include <string>
#include <vector>

#include "app/CKestoApp.h"

namespace kesto {

// Screen rectangle of one of the four pallet slots of the drawing area.
struct SlotRect {
    int32_t Left = 0;
    int32_t Top = 0;
    int32_t Right = 0;
    int32_t Bottom = 0;
};

class CKs_Haichi {
public:
    explicit CKs_Haichi(CKestoApp& app) : app_(app) {}
    virtual ~CKs_Haichi() = default;

    int PlaceAll(int partial, int restore);
    int PlaceKoutei(int partial, int restore);
    int StackPart(int mode);
    int RestorePlacement(const std::string& path);
    int TrimExcess();
    int FillShortage();
    int PlaceOnePart(PartsInfo* part, KouteiInfo* koutei, int mode);
    void RebuildCorners(KouteiInfo* koutei, const std::vector<HaichiInfo*>& leaveOut);
    double PieceHeight(const PartsInfo& part) const { return part.Value1; }

    int TestCorner(int dragging, int blockIndex, int corner);
    int TestRect(double x0, double y0, double x1, double y1, int pallet, const PartsInfo* part);
    void MarkCorners(double x0, double y0, double x1, double y1, int pallet, PartsInfo* part);
    int MoveGroup(KouteiInfo* koutei, const std::vector<HaichiInfo*>& stacks, int left, int top,
                  int right, int bottom, int freeMove);

    // Candidate pallets c1..c4 (-1 none) for the current pallet, count and view mode.
    std::array<int, 4> CandidatePallets() const;

    // State the drawing area hands over for dragging and dropping.
    std::vector<HaichiInfo*> Selection;  // stacks passed over by TestCorner while dragging
    std::array<SlotRect, 4> Slots{};     // screen rectangles of the four pallet slots
    int32_t DropPallet = 0;               // -1 before a probe; the target pallet after it

    double BoundMinX = 0, BoundMaxX = 0, BoundMinY = 0, BoundMaxY = 0;
    KouteiInfo* CurKoutei = nullptr;
    PartsInfo* CurPart = nullptr;

private:
    CKestoApp& app_;
};

}  // namespace kesto
