#include "JobGenerator.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <random>

namespace kesto {

namespace {

constexpr double kCellW = 200, kCellD = 150, kCellGap = 10, kMargin = 10, kStackGap = 5;

std::string Format(const char* fmt, auto... args) {
    char buf[512];
    std::snprintf(buf, sizeof buf, fmt, args...);
    return buf;
}

PalletInfo MakePallet(int no, const JobShape& shape) {
    PalletInfo p;
    p.No = no;
    p.Name = Format("PAL%02d", no);
    SetDims(p, {0, 0, 2 * kMargin + shape.CellsX * (kCellW + kCellGap),
                2 * kMargin + shape.CellsY * (kCellD + kCellGap), 500, kMargin, kMargin, kCellW,
                kCellD, kCellGap, kCellGap});
    p.CellsX = shape.CellsX;
    p.CellsY = shape.CellsY;
    p.StackGapX = kStackGap;
    p.StackGapY = kStackGap;
    p.ScheduleText = Format("Pallet %d", no);
    return p;
}

// Sizes for one, two or four stacks in a cell.
void SizePart(PartsInfo& p, std::mt19937& rng) {
    std::uniform_int_distribution<int> kind(0, 2);
    auto pick = [&rng](double lo, double hi) {
        return std::round(std::uniform_real_distribution<double>(lo, hi)(rng) * 10) / 10;
    };
    switch (kind(rng)) {
        case 0:
            p.SizeX = pick(120, 190);
            p.SizeY = pick(90, 140);
            break;
        case 1:
            p.SizeX = pick(60, 90);
            p.SizeY = pick(50, 65);
            break;
        default:
            p.SizeX = pick(20, 60);
            p.SizeY = pick(20, 50);
            break;
    }
}

PartsInfo MakePart(int index, const JobShape& shape, std::mt19937& rng) {
    PartsInfo p;
    p.Seq = index + 1;
    p.No = index + 1;
    p.Code = Format("A%03d", index + 1);
    p.KouteiNo = static_cast<int>(int64_t{index} * shape.Processes / shape.Parts) + 1;
    p.Name = Format("PART%03d", index + 1);
    p.DisplayName = Format("Text %03d", index + 1);
    SizePart(p, rng);
    p.DirCode = 1;
    p.DirText = "U";
    // Scaled after the draw, so that a crowded job has the same parts as the plain one.
    p.Quantity = std::uniform_int_distribution<int>(1, 60)(rng) * shape.QuantityFactor;
    const bool toBox =
        shape.SmallBoxes > 0 && std::uniform_int_distribution<int>(0, 99)(rng) < shape.BoxPercent;
    p.Destination =
        toBox ? 100 + std::uniform_int_distribution<int>(0, shape.SmallBoxes - 1)(rng) : 0;
    p.PerStackLimit = std::uniform_int_distribution<int>(0, 20)(rng);
    p.Thickness = 1.0;
    p.GroupKey = "G1";
    p.SaveKey = index + 1;
    p.PieceHeight = std::uniform_int_distribution<int>(1, 6)(rng);
    return p;
}

void WriteText(const std::filesystem::path& path, const std::string& text) {
    std::filesystem::create_directories(path.parent_path());
    std::ofstream(path, std::ios::binary) << text;
}

std::string PalletFileText(const GeneratedJob& job) {
    std::string text;
    for (const PalletInfo& p : job.Pallets) {
        text += Format("P%d,%s", p.No, p.Name.c_str());
        for (double PalletInfo::*dim : kPalletDims)
            text += Format(",%.4f", p.*dim);
        text += Format(",%d,%d,%.4f,%.4f,%s\n", p.CellsX, p.CellsY, p.StackGapX, p.StackGapY,
                       p.ScheduleText.c_str());
    }
    for (int n = 1; n <= job.SmallBoxes; ++n)
        text += Format("B%d\n", n);
    return text;
}

std::string PartLine(const PartsInfo& p, const std::string& outline) {
    return Format("%s,%d,%s,%s,%.4f,%.4f,%d,%d,%d,%d,%d,,,%.4f,%s,%s,%s,1,,K%d,%.4f\n",
                  p.Code.c_str(), p.KouteiNo, p.Name.c_str(), p.DisplayName.c_str(), p.SizeX,
                  p.SizeY, p.DirCode, p.Quantity, p.Destination, p.SaveNumber, p.PerStackLimit,
                  p.Thickness, p.GroupKey.c_str(), p.SensitiveSides.c_str(), outline.c_str(),
                  p.SaveKey, p.PieceHeight);
}

std::string OutlineText(const PartsInfo& p) {
    return Format("$ outline of %s\n", p.Code.c_str()) +
           Format("NoAngRect 0 0 255 0 0 0 %.4f %.4f\n", p.SizeX, p.SizeY) +
           Format("Line 0 0 0 255 0 0 %.4f %.4f\n", p.SizeX, p.SizeY) +
           Format("Circle 0 255 0 0 %.4f %.4f %.4f\n", p.SizeX / 2, p.SizeY / 2,
                  std::min(p.SizeX, p.SizeY) / 4);
}

std::string JobFileText(const GeneratedJob& job, const std::filesystem::path& outlines,
                        bool outlineFiles) {
    std::string text = "#BoxInfo\n";
    for (const BoxInfo& b : job.Boxes) {
        text += Format("%s,%d,%d,%.4f,%.4f,%.4f,%.4f\n", b.Name.c_str(), b.No, b.Kind,
                       b.PartSizes.MinX, b.PartSizes.MaxX, b.PartSizes.MinY, b.PartSizes.MaxY);
    }
    text += "#End\n#KouteiInfo\n";
    for (const KouteiInfo& k : job.Koutei) {
        text += Format("%d,%s,%s\n", k.No, k.Name.c_str(), k.PalletName.c_str());
    }
    text += "#End\n#PartsInfo\n";
    for (const PartsInfo& p : job.Parts) {
        text += PartLine(p, outlineFiles ? (outlines / (p.Code + ".txt")).string() : "");
    }
    return text + "#End\n";
}

}  // namespace

JobShape SmallJobShape() {
    return {11, 1, 5, 4, 4, 3, 1, 0};
}
JobShape MediumJobShape() {
    return {22, 5, 200, 4, 10, 6, 3, 5};
}
JobShape LargestJobShape() {
    return {33, 12, 999, 4, 16, 10, 9, 5};
}
JobShape SampleLikeJobShape() {
    return {44, 3, 40, 4, 6, 4, 3, 5};
}
JobShape CrowdedJobShape() {
    JobShape shape = LargestJobShape();
    shape.QuantityFactor = 5;
    return shape;
}

InstallOptions CrowdedInstallOptions() {
    InstallOptions options;
    options.MissingOutlineEvery = 7;
    return options;
}

GeneratedJob GenerateJob(const JobShape& shape) {
    GeneratedJob job;
    std::mt19937 rng(shape.Seed);
    job.PalletCount = shape.Pallets;
    job.SmallBoxes = std::clamp(shape.SmallBoxes, 0, 99);
    for (int k = 1; k <= shape.Processes; ++k) {
        job.Pallets.push_back(MakePallet(k, shape));
        job.Koutei.push_back({k, Format("PROC%02d", k), Format("PAL%02d", k), nullptr});
    }
    // Boxes 0..Pallets-1 stand for the pallets; 100.. for the small boxes (not counted).
    for (int n = 0; n < shape.Pallets; ++n) {
        job.Boxes.push_back({Format("PLT%d", n), n, n + 1, {1000, 800, 500, 0}});
    }
    for (int n = 0; n < job.SmallBoxes; ++n) {
        job.Boxes.push_back({Format("BOX%d", n + 1), 100 + n, 10, {300, 200, 100, 0}});
    }
    const int parts = std::max(shape.Parts, 0);
    for (int i = 0; i < parts; ++i)
        job.Parts.push_back(MakePart(i, shape, rng));
    return job;
}

void FillApp(CKestoApp& app, const GeneratedJob& job) {
    for (const PalletInfo& p : job.Pallets)
        app.PalletList.Append() = p;
    app.PalletList.Count = static_cast<int32_t>(job.Pallets.size());
    for (const BoxInfo& b : job.Boxes) {
        app.BoxList.Append() = b;
        if (b.No < 100)
            ++app.BoxList.Count;
    }
    for (const KouteiInfo& k : job.Koutei)
        app.KouteiList.Append() = k;
    app.KouteiList.Count = static_cast<int32_t>(job.Koutei.size());
    for (const PartsInfo& p : job.Parts)
        app.PartsList.Append() = p;
    app.PartsList.Count = static_cast<int32_t>(job.Parts.size());
    for (int n = 1; n <= job.SmallBoxes; ++n)
        app.BoxFlags[n] = 1;
    app.Settings.PalletCount = job.PalletCount;
}

namespace {

GeneratedJob WithOptions(GeneratedJob job, const InstallOptions& options) {
    for (size_t i = 0; options.SensitiveSides && i < job.Parts.size(); i += 2)
        job.Parts[i].SensitiveSides = "1111";
    if (options.UnknownDestination && !job.Parts.empty())
        job.Parts.back().Destination = 150;
    if (options.UndefinedSmallBox && !job.Parts.empty()) {
        const int code = 100 + job.SmallBoxes;
        job.Boxes.push_back({"SBX", code, 10, {0, 2000, 0, 2000}});
        job.Parts.back().Destination = code;
    }
    return job;
}

std::string SetupListText(bool backslash) {
    std::string text =
        "; generated installation\n#File\nIEJ : job/job.txt\nIEK : out/result.txt\n"
        "IEL : out/save.txt\nMSG : msg/\n#End\n";
    if (backslash)
        std::replace(text.begin(), text.end(), '/', '\\');
    return text;
}

std::string CommandLine(const std::string& pallet, const InstallOptions& options) {
    return Format("kesto %s 0 %d %.1f %.1f %d", pallet.c_str(), options.Inch ? 1 : 0,
                  options.OffsetA, options.OffsetB, options.Corner);
}

}  // namespace

Installation WriteInstallation(const std::string& root, const GeneratedJob& plain,
                               const InstallOptions& options) {
    const GeneratedJob job = WithOptions(plain, options);
    const std::filesystem::path base(root);
    WriteText(base / "bin" / "Ks_Setup.ini", SetupListText(options.BackslashPaths));
    std::string ini = "[FontDefine]\n";
    for (int n = 1; n <= 4; ++n)
        ini += Format("FontSet%d=-%d,0,0,0,Arial\n", n, 10 + 2 * n);
    ini += Format("[PalletSelect]\nPalletInfo=%d,P\n[KakuDlg]\n", job.PalletCount);
    for (int n = 1; n <= 8; ++n)
        ini += Format("Msg%03d=1,Message %d\n", n, n);
    WriteText(base / "msg" / "Kesto.ini", ini);
    const std::filesystem::path pallet = base / "pallet" / "pallet.txt";
    WriteText(pallet, PalletFileText(job));
    const std::filesystem::path outlines = base / "job" / "outline";
    WriteText(base / "job" / "job.txt", JobFileText(job, outlines, options.OutlineFiles));
    for (size_t i = 0; options.OutlineFiles && i < job.Parts.size(); ++i) {
        const bool missing =
            options.MissingOutlineEvery > 0 && (i + 1) % options.MissingOutlineEvery == 0;
        if (!missing)
            WriteText(outlines / (job.Parts[i].Code + ".txt"), OutlineText(job.Parts[i]));
    }
    std::filesystem::create_directories(base / "out");
    return {base.string(), pallet.string(), CommandLine(pallet.string(), options)};
}

}  // namespace kesto
