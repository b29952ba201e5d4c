#include <array>
#include <new>
#include <string>

#include "app/Codes.h"
#include "app/InputReaders.h"
#include "support/TextFile.h"

namespace kesto {

namespace {

struct Keyword {
    const char* Text;
    ShapeKind Kind;
    int Params;
};

// Tested in this order by substring: the longer keywords that contain a shorter one first.
constexpr std::array<Keyword, 8> kKeywords{{
    {"Line", kShapeLine, 4},
    {"CcwArc", kShapeCcwArc, 11},
    {"NoAngRect", kShapeNoAngRect, 4},
    {"NoScalePixel", kShapeNoScalePixel, 3},
    {"NoScaleCircle", kShapeNoScaleCircle, 3},
    {"Circle", kShapeCircle, 3},
    {"AngRect", kShapeAngRect, 8},
    {"Pixel", kShapePixel, 2},
}};

constexpr int kColorColumn = 2;
constexpr int kParamColumn = 5;

uint32_t ColorOf(const FieldList& f) {
    const auto low = [&f](int column) { return static_cast<uint32_t>(AtoL(f[column])) & 0xFFu; };
    return low(kColorColumn) | low(kColorColumn + 1) << 8 | low(kColorColumn + 2) << 16;
}

// A line naming no known kind leaves its element all zero.
void FillElement(ShapeElement& element, const std::string& line) {
    FieldList fields;
    SplitWords(line, fields);
    SplitFieldsTrim(fields);
    for (const Keyword& keyword : kKeywords) {
        if (fields[0].find(keyword.Text) == std::string::npos)
            continue;
        element.Kind = keyword.Kind;
        element.Color = ColorOf(fields);
        for (int i = 0; i < keyword.Params; ++i)
            element.P[i] = AtoF(fields[kParamColumn + i]);
        return;
    }
}

// Lines that ReadLine delivers, comment lines included.
size_t CountLines(std::FILE* file) {
    size_t count = 0;
    std::string line;
    while (ReadLine(line, file) != -1)
        ++count;
    return count;
}

void FillElements(PartsInfo& part, std::FILE* file) {
    size_t next = 0;
    std::string line;
    // The file may have grown since it was counted: further lines are ignored.
    while (next < part.Shapes.size() && ReadLine(line, file) != -1) {
        if (!line.empty() && line[0] == '$')
            continue;
        FillElement(part.Shapes[next++], line);
    }
}

}  // namespace

int ReadOutline(CKestoApp& app, PartsInfo& part) {
    part.ShapeCount = 0;
    part.Shapes.clear();
    if (part.OutlinePath.empty() || FileExists(part.OutlinePath) == 0)
        return 0;
    TextFile file;
    if (OpenFile(part.OutlinePath, "rt", file) == 0) {
        app.ErrorCode = error::kOutlineUnreadable;
        return 0;
    }
    const size_t count = CountLines(file.get());
    file.Close();
    try {
        part.Shapes.assign(count, ShapeElement{});
    } catch (const std::bad_alloc&) {
        return 0;
    }
    part.ShapeCount = static_cast<int32_t>(count);
    if (OpenFile(part.OutlinePath, "rt", file) == 0) {
        app.ErrorCode = error::kOutlineUnreadable;
        return 0;
    }
    FillElements(part, file.get());
    return 1;
}

}  // namespace kesto
