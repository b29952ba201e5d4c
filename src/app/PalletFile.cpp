#include <array>
#include <new>
#include <string>

#include "app/Codes.h"
#include "app/InputReaders.h"
#include "app/ScanFormat.h"
#include "support/TextFile.h"

namespace kesto {

namespace {

constexpr double kInchFactor = 0.03937;
constexpr double kRackPitchMm = 30.0;
constexpr double kRackPitchInch = 1.1811;
constexpr int32_t kRackMax = 5;
constexpr int kBoxFlagMax = 99;

double LengthFactor(const CKestoApp& app) {
    return app.Settings.InchMode ? kInchFactor : 1.0;
}

// A line that is exactly "B" followed by n (1..99) sets BoxFlags[n].
void SetBoxFlag(CKestoApp& app, const std::string& line) {
    if (line.empty() || line[0] != 'B')
        return;
    for (int n = 1; n <= kBoxFlagMax; ++n) {
        if (line == "B" + std::to_string(n))
            app.BoxFlags[n] = 1;
    }
}

void FillPallet(PalletInfo& pallet, const FieldList& fields, double factor) {
    pallet.No = AtoLFromSecond(fields[0]);
    pallet.Name = CutField(fields[1], kName32);
    for (size_t i = 0; i < kPalletDims.size(); ++i) {
        pallet.*kPalletDims[i] = AtoF(fields[static_cast<int>(i) + 2]) * factor;
    }
    pallet.CellsX = AtoL(fields[13]);
    pallet.CellsY = AtoL(fields[14]);
    pallet.StackGapX = AtoF(fields[15]) * factor;
    pallet.StackGapY = AtoF(fields[16]) * factor;
    pallet.ScheduleText = CutField(fields[17], kName32);
}

// OffsetA keeps the remaining distance, OffsetB the command-line value itself: the two are
// stored differently on purpose.
void ApplyOffsets(CKestoApp& app, PalletInfo& pallet) {
    const double reach = pallet.LengthY + pallet.SaveOffsetY;
    if (app.Settings.OffsetA > 0) {
        const double d = reach - app.Settings.OffsetA * LengthFactor(app);
        if (d > 0) {
            pallet.OffsetA = d;
            app.Settings.OffsetSet = 1;
        }
    }
    if (app.Settings.OffsetB > 0) {
        const double v = app.Settings.OffsetB * LengthFactor(app);
        if (reach - v > 0) {
            pallet.OffsetB = v;
            app.Settings.OffsetSet = 1;
        }
    }
}

// false when the pallet cannot be allocated (9022).
bool AddPallet(CKestoApp& app, const std::string& line) {
    PalletInfo* pallet = nullptr;
    try {
        pallet = &app.PalletList.Append();
    } catch (const std::bad_alloc&) {
        return false;
    }
    FieldList fields;
    SplitLine(line, fields);
    FillPallet(*pallet, fields, LengthFactor(app));
    ApplyOffsets(app, *pallet);
    ++app.PalletList.Count;
    return true;
}

PalletInfo* FirstPalletNumbered(CKestoApp& app, int32_t no) {
    for (PalletInfo& pallet : app.PalletList) {
        if (pallet.No == no)
            return &pallet;
    }
    return nullptr;
}

void AppendRack(std::array<double, 5>& racks, int32_t& count, double value) {
    if (count < kRackMax)
        racks[count++] = value;
}

// The pitch goes to the pallet created last, the positions to the first one with the number.
void AddRacks(CKestoApp& app, const std::string& line) {
    FieldList fields;
    SplitLine(line, fields);
    PalletInfo* pallet = FirstPalletNumbered(app, AtoLFromSecond(fields[0]));
    if (pallet == nullptr)
        return;
    app.PalletList.Items.back().RackPitch = app.Settings.InchMode ? kRackPitchInch : kRackPitchMm;
    const bool x = fields[0].find('X') != std::string::npos;
    const bool y = fields[0].find('Y') != std::string::npos;
    for (int i = 1; i < fields.Count; ++i) {
        const double value = AtoF(fields[i]) * LengthFactor(app);
        if (x)
            AppendRack(pallet->RackX, pallet->RackXCount, value);
        if (y)
            AppendRack(pallet->RackY, pallet->RackYCount, value);
    }
}

}  // namespace

Outcome ReadPalletLines(CKestoApp& app, std::FILE* file) {
    std::string line;
    while (ReadLine(line, file) != -1) {
        TrimLine(line, 3);
        SetBoxFlag(app, line);
        if (line.empty())
            continue;
        if (line[0] == 'P' && !AddPallet(app, line))
            return Outcome::Failed(error::kNoMemoryForPallet);
        if (line[0] == 'R')
            AddRacks(app, line);
    }
    return Outcome::Done();
}

Outcome ReadPalletFile(CKestoApp& app) {
    if (app.Run.PalletFilePath.empty() || FileExists(app.Run.PalletFilePath) == 0)
        return Outcome::Failed(error::kPalletFileMissing);
    TextFile file;
    if (OpenFile(app.Run.PalletFilePath, "rt", file) == 0)
        return Outcome::Failed(error::kPalletFileUnreadable);
    return ReadPalletLines(app, file.get());
}

}  // namespace kesto
