// The sheet-count dialog without its toolkit: where its controls go, which text of the message
// file each one shows, and the picture of the stack height against the pallet's height limit.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <string>

#include "app/CKestoApp.h"
#include "support/MessageFile.h"
#include "view/Canvas.h"

namespace kesto {

inline constexpr const char* kMaiSection = "MaihenDlg";

// The controls' rectangles in client pixels.
struct MaiLayout {
    IntRect NameEdit;                  // edit 1046, the part's name
    IntRect Picture;                   // PictureRect
    IntRect Ok;                        // 1
    IntRect Cancel;                    // 2
    std::array<IntRect, 5> Buttons{};  // 1048 to 1052, top down
    IntRect Group;                     // group box 1055
    IntRect CountEdit;                 // edit 1054, inside the group box
};

// The layout of a client rectangle; nameFontHeight is the height of the "PartsName" font.
MaiLayout LayOutMaiDlg(const IntRect& client, int32_t nameFontHeight);

// Fields of a "MaihenDlg" value, counted from 0: the font number, then one or two texts.
inline constexpr int32_t kMaiSecondField = 1;
inline constexpr int32_t kMaiThirdField = 2;

// The dialog's control ids; 0 stands for the dialog's title.
enum MaiControl : int32_t {
    kMaiTitle = 0,
    kMaiOk = 1,
    kMaiCancel = 2,
    kMaiNameEdit = 1046,
    kMaiMaxButton = 1048,
    kMaiEvenButton = 1049,
    kMaiHalfButton = 1050,
    kMaiThirdButton = 1051,
    kMaiQuarterButton = 1052,
    kMaiCountEdit = 1054,
    kMaiGroupBox = 1055,
};

// A control whose caption comes from one field of one key.
struct MaiCaption {
    const char* Key;
    MaiControl Control;
    int32_t TextField;
};

inline constexpr std::array<MaiCaption, 9> kMaiCaptions{{
    {"TitleName", kMaiTitle, kMaiSecondField},
    {"ButtonOk", kMaiOk, kMaiSecondField},
    {"ButtonCan", kMaiCancel, kMaiSecondField},
    {"BTKAI", kMaiMaxButton, kMaiSecondField},
    // The even-split and share buttons show their value's third field.
    {"BT1", kMaiEvenButton, kMaiThirdField},
    {"BT2", kMaiHalfButton, kMaiThirdField},
    {"BT3", kMaiThirdButton, kMaiThirdField},
    {"BT4", kMaiQuarterButton, kMaiThirdField},
    {"Label1", kMaiGroupBox, kMaiSecondField},
}};

struct MaiText {
    int32_t Font = 0;
    std::string Text;
};

// The font number and field `field` of key in "MaihenDlg".
MaiText ReadMaiText(const MessageTable& messages, const char* key, int32_t field);
// The pixel height of the "PartsName" font, 0 when it is not defined.
int32_t MaiNameFontHeight(const CKestoApp& app, const MessageTable& messages);

// What the picture shows.
struct MaiScene {
    const HaichiInfo* Picked = nullptr;  // the current stack and its part
    double HeightLimit = 0;              // H, the pallet's greatest stack height
    int32_t Count = 0;                   // the new count
    int32_t CompareCount = 0;
    int32_t NameFontHeight = 0;
};

// The width in pixels of a text in a font slot, as the painting toolkit measures it.
using MaiTextWidth = std::function<int32_t(const std::string& text, int32_t fontSlot)>;

class MaiPicture {
  public:
    MaiPicture(const CKestoApp& app, const MessageTable& messages, MaiTextWidth textWidth);

    // The frame of the picture rectangle, then the picture.
    void Draw(Canvas& canvas, const IntRect& picture, const MaiScene& scene) const;
    // Length per pixel of the vertical axis: 15 height units hold the limit (0 when the
    // rectangle is too low to have a unit).
    static double HeightScale(const IntRect& picture, double heightLimit);

  private:
    struct Axes;
    void DrawFrame(Canvas& canvas, const IntRect& p) const;
    void DrawLimit(Canvas& canvas, const Axes& a, const MaiScene& scene) const;
    void DrawNewStack(Canvas& canvas, const Axes& a, const MaiScene& scene) const;
    void DrawCurrentStack(Canvas& canvas, const Axes& a, const MaiScene& scene) const;
    void DrawLabels(Canvas& canvas, const IntRect& p, const MaiScene& scene) const;
    void Text(Canvas& canvas, const std::string& text, int32_t font, IntPoint at, Rgb colour) const;

    const CKestoApp& app_;
    const MessageTable& messages_;
    MaiTextWidth textWidth_;
};

}  // namespace kesto
