// The check, when a job ends, that no stack lies beyond the offset limits of its pallet.
#include <array>
#include <string>

#include "app/Codes.h"
#include "app/OffsetLines.h"
#include "output/CKs_FileSave.h"
#include "support/MessageFile.h"
#include "support/Paths.h"
#include "support/Platform.h"
#include "support/SetupList.h"
#include "support/TextFile.h"

namespace kesto {
namespace {

// Side flag i of a part's Text4: '1' switches the check of that side on.
bool SideChecked(const std::string& text4, size_t i) {
    return i < text4.size() && text4[i] == '1';
}

// Every line is checked, drawn or not.
bool Beyond(const OffsetLine& line, const HaichiInfo& stack) {
    const PartsInfo& part = *stack.Part;
    constexpr double t = kLengthTolerance;
    switch (line.Side) {
        case OffsetSide::Upper:
            return line.Position + t < stack.Y + part.SizeY;
        case OffsetSide::Lower:
            return stack.Y < line.Position - t;
        case OffsetSide::Left:
            return stack.X - part.SizeX < line.Position - t;
        case OffsetSide::Right:
            return line.Position + t < stack.X;
    }
    return false;
}

bool ViolatesLimits(const HaichiInfo& stack, const std::array<OffsetLine, 4>& lines) {
    for (size_t i = 0; i < lines.size(); ++i) {
        if (SideChecked(stack.Part->SensitiveSides, i) && Beyond(lines[i], stack))
            return true;
    }
    return false;
}

bool AnyStackViolates(const CKestoApp& app, const PalletInfo& pallet) {
    const std::array<OffsetLine, 4> lines = OffsetLinesOf(pallet);
    for (const HaichiInfo& stack : app.HaichiList) {
        if (stack.Part == nullptr || stack.Part->SensitiveSides.compare(0, 4, "0000") == 0)
            continue;
        if (ViolatesLimits(stack, lines))
            return true;
    }
    return false;
}

// The text part of a "font,text" value; a value without a font number is shown whole.
std::string TextOfFontValue(const std::string& value) {
    FieldList fields;
    SplitLine(value, fields);
    return fields.Count >= 2 ? fields[1] : value;
}

}  // namespace

int CKs_FileSave::CheckOffsets(int32_t processOnView) {
    if (app_.Settings.OffsetSet == 0)
        return 1;
    // That process's pallet: with none of its name there is nothing to check against.
    const KouteiInfo* process = app_.KouteiAt(processOnView);
    if (process == nullptr)
        return 1;
    const PalletInfo* pallet = app_.PalletByName(process->PalletName);
    if (pallet == nullptr || !AnyStackViolates(app_, *pallet))
        return 1;
    return services_.Op.AskOffsetWarning(GetKakuText(kaku::kOffsetWarningKey)) ? 1 : 0;
}

std::string CKs_FileSave::GetKakuText(const std::string& key) {
    std::string folder;
    const bool haveFolder = GetSystemFolder(services_, folder) == 1;
    const std::string path = JoinPath(folder, "Kesto.ini");
    if (!haveFolder || FileExists(path) != 1) {
        services_.Op.ShowMessageBox("Initial File Not found");
        return "";
    }
    // A table of its own: the program's message table stays as it is.
    MessageTable table;
    if (table.Load(path, services_.Op) != 0) {
        services_.Op.ShowMessageBox("Initial File Initial Error");
        return "";
    }
    return TextOfFontValue(table.Get("KakuDlg", key));
}

}  // namespace kesto
