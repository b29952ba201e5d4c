#include <new>
#include <string>
#include <vector>

#include "app/Codes.h"
#include "app/InputReaders.h"
#include "app/ScanFormat.h"
#include "support/SetupList.h"
#include "support/TextFile.h"

namespace kesto {

namespace {

constexpr int32_t kUncountedBoxNo = 100;

enum class Section { None, Box, Koutei, Parts };

// Appends a record; null on allocation failure.
template <class T>
T* AppendRecord(RecordList<T>& list) {
    try {
        return &list.Append();
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

// Each Add fails with the code of its section's allocation failure.
Outcome AddBox(CKestoApp& app, const FieldList& f) {
    BoxInfo* box = AppendRecord(app.BoxList);
    if (box == nullptr)
        return Outcome::Failed(error::kNoMemoryForBox);
    box->Name = CutField(f[0], kName32);
    box->No = AtoL(f[1]);
    box->Kind = AtoL(f[2]);
    box->PartSizes = {AtoF(f[3]), AtoF(f[4]), AtoF(f[5]), AtoF(f[6])};
    // Boxes numbered 100 or more stay in the list but are invisible to its users.
    if (box->No < kUncountedBoxNo)
        ++app.BoxList.Count;
    return Outcome::Done();
}

Outcome AddKoutei(CKestoApp& app, const FieldList& f) {
    KouteiInfo* koutei = AppendRecord(app.KouteiList);
    if (koutei == nullptr)
        return Outcome::Failed(error::kNoMemoryForKoutei);
    koutei->No = AtoL(f[0]);
    koutei->Name = CutField(f[1], kName32);
    koutei->PalletName = CutField(f[2], kName32);
    koutei->Pallet = nullptr;
    ++app.KouteiList.Count;
    return Outcome::Done();
}

std::string DirTextOf(int32_t dirCode) {
    switch (dirCode) {
        case 1:
            return "U";
        case 10:
            return "D";
        case 11:
            return "UD";
        default:
            return "";
    }
}

void FillPart(PartsInfo& part, const FieldList& f) {
    part.Code = CutField(f[0], kCode8);
    part.No = AtoL(f[0]);
    if (part.No == 0)
        part.No = AtoLFromSecond(f[0]);
    part.KouteiNo = AtoL(f[1]);
    part.Name = CutField(f[2], kName64);
    part.DisplayName = CutField(f[3], kText52);
    part.SizeX = AtoF(f[4]);
    part.SizeY = AtoF(f[5]);
    part.DirCode = AtoL(f[6]);
    part.DirText = DirTextOf(part.DirCode);
    part.Quantity = AtoL(f[7]);
    part.Destination = AtoL(f[8]);
    part.SaveNumber = AtoL(f[9]);
    part.PerStackLimit = AtoL(f[10]);
    part.SheetText = CutField(f[11], kName32);
    part.MaterialName = CutField(f[12], kName64);
    part.Thickness = AtoF(f[13]);
    part.GroupKey = CutField(f[14], kCode8);
    part.SensitiveSides = CutField(f[15], kText5);
    part.OutlinePath = CutField(f[16], kPath256);
    part.HasOutline = AtoL(f[17]);
    part.SaveKey = AtoLFromSecond(f[19]);
    part.PieceHeight = AtoF(f[20]);
}

// outlines: the parts whose outline is read once the file is read.
Outcome AddPart(CKestoApp& app, const FieldList& f, std::vector<PartsInfo*>& outlines) {
    PartsInfo* part = AppendRecord(app.PartsList);
    if (part == nullptr)
        return Outcome::Failed(error::kNoMemoryForPart);
    part->Seq = app.PartsList.Count + 1;
    FillPart(*part, f);
    ++app.PartsList.Count;
    if (part->HasOutline == 1)
        outlines.push_back(part);
    return Outcome::Done();
}

// fields: the split's work space, kept over the lines of the file.
Outcome AddRecord(CKestoApp& app, Section section, const std::string& line, FieldList& fields,
                  std::vector<PartsInfo*>& outlines) {
    SplitLine(line, fields);
    switch (section) {
        case Section::Box:
            return AddBox(app, fields);
        case Section::Koutei:
            return AddKoutei(app, fields);
        case Section::Parts:
            return AddPart(app, fields, outlines);
        case Section::None:
            break;
    }
    return Outcome::Done();
}

// A header only counts outside a section; inside one it is a record line of that section.
Section SectionOf(const std::string& line) {
    if (line == "#BoxInfo")
        return Section::Box;
    if (line == "#KouteiInfo")
        return Section::Koutei;
    if (line == "#PartsInfo")
        return Section::Parts;
    return Section::None;
}

}  // namespace

Outcome ReadJobLines(CKestoApp& app, std::FILE* file, OutlineFiles outlines) {
    Section section = Section::None;
    std::string line;
    FieldList fields;
    std::vector<PartsInfo*> withOutline;
    while (ReadLine(line, file) != -1) {
        TrimLine(line, 3);
        if (section == Section::None) {
            section = SectionOf(line);
        } else if (line == "#End") {
            section = Section::None;
        } else if (const Outcome added = AddRecord(app, section, line, fields, withOutline);
                   !added.Ok()) {
            return added;
        }
    }
    if (outlines != OutlineFiles::Read)
        return Outcome::Done();
    // A part without a readable outline is drawn without one; the job goes on.
    return ReadOutlines(withOutline);
}

Outcome ReadJobFile(CKestoApp& app, const Services& services, OutlineFiles outlines) {
    const std::string path = GetDataFilePath(services, DataFile::Job);
    if (path.empty() || FileExists(path) == 0)
        return Outcome::Failed(error::kJobFileMissing);
    TextFile file;
    if (OpenFile(path, "rt", file) == 0)
        return Outcome::Failed(error::kJobFileUnreadable);
    const Outcome read = ReadJobLines(app, file.get(), outlines);
    if (!read.Ok())
        return read;
    file.Close();
    if (!app.PartsList.Empty() && !app.KouteiList.Empty())
        SortParts(app, services.Op);
    return read;
}

}  // namespace kesto
