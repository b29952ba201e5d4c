// The one way the tests make a part: every value is named at the call, as in
// AddPart(app, {.SizeX = 300, .SizeY = 200, .Quantity = 10, .PerStackLimit = 4}), and braces
// refuse a double for a count, so no two numbers can trade places unnoticed. The fields keep
// the order of PartsInfo's members, which designated initialisers follow.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "app/CKestoApp.h"

namespace kesto::test {

// The fields of a new part. What is not named keeps the value a fresh record has, except the
// process: 1, the process of most tests' jobs.
struct PartFields {
    int32_t Seq = 0;  // 0: AddPart numbers the part as the job reader does (the new count)
    int32_t No = 0;
    std::string Code = "";  // AddPart names a part without one "A<Seq>"
    int32_t KouteiNo = 1;
    std::string Name = "";
    std::string DisplayName = "";
    double SizeX = 0;
    double SizeY = 0;
    int32_t DirCode = 0;
    int32_t Quantity = 0;
    int32_t PiecesPlaced = 0;
    int32_t PiecesSetAside = 0;
    int32_t Destination = 0;
    int32_t SaveNumber = 0;
    int32_t PerStackLimit = 0;
    std::string MaterialName = "";
    double Thickness = 0;
    std::string GroupKey = "";
    int32_t SortDone = 0;
    std::string SensitiveSides = "";
    int32_t SaveKey = 0;
    // Unnamed: 0, as a fresh record has; the placement and session fixtures give an unnamed one
    // 1, the height their stacks are counted in.
    std::optional<double> PieceHeight = std::nullopt;
};

// A part on its own, in no job: the fields as named, Seq and Code included.
inline PartsInfo MakePart(const PartFields& fields) {
    PartsInfo part;
    part.Seq = fields.Seq;
    part.No = fields.No;
    part.Code = fields.Code;
    part.KouteiNo = fields.KouteiNo;
    part.Name = fields.Name;
    part.DisplayName = fields.DisplayName;
    part.SizeX = fields.SizeX;
    part.SizeY = fields.SizeY;
    part.DirCode = fields.DirCode;
    part.Quantity = fields.Quantity;
    part.PiecesPlaced = fields.PiecesPlaced;
    part.PiecesSetAside = fields.PiecesSetAside;
    part.Destination = fields.Destination;
    part.SaveNumber = fields.SaveNumber;
    part.PerStackLimit = fields.PerStackLimit;
    part.MaterialName = fields.MaterialName;
    part.Thickness = fields.Thickness;
    part.GroupKey = fields.GroupKey;
    part.SortDone = fields.SortDone;
    part.SensitiveSides = fields.SensitiveSides;
    part.SaveKey = fields.SaveKey;
    part.PieceHeight = fields.PieceHeight.value_or(0);
    return part;
}

// Appends the part to the job's list and counts it, as reading a job does: Seq is the new
// count unless named, and a part named no code is "A<Seq>".
inline PartsInfo& AddPart(CKestoApp& app, const PartFields& fields) {
    PartsInfo& part = app.PartsList.Append() = MakePart(fields);
    ++app.PartsList.Count;
    if (part.Seq == 0)
        part.Seq = app.PartsList.Count;
    if (part.Code.empty())
        part.Code = "A" + std::to_string(part.Seq);
    return part;
}

}  // namespace kesto::test
