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

// A line naming no known kind leaves its element all zero. fields: the split's work space.
void FillElement(ShapeElement& element, const std::string& line, FieldList& fields) {
    // The trimming split does the splitting: the words only need to become a line of fields.
    WordsToLine(line, fields);
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

// One element per line that ReadLine delivers, comment lines included: those lines only
// count, and their elements stay all zero at the end of the list.
void ReadElements(PartsInfo& part, const std::string& bytes) {
    size_t lines = 0;
    size_t at = 0;
    std::string line;
    FieldList fields;
    while (NextLine(bytes, at, line) != -1) {
        ++lines;
        if (!line.empty() && line[0] == '$')
            continue;
        FillElement(part.Shapes.emplace_back(), line, fields);
    }
    part.Shapes.resize(lines);
}

}  // namespace

int ReadOutline(CKestoApp& app, PartsInfo& part) {
    part.ShapeCount = 0;
    part.Shapes.clear();
    std::string bytes;
    try {
        switch (ReadWholeFile(part.OutlinePath, bytes)) {
            case WholeFile::Missing:
                return 0;
            case WholeFile::Unreadable:
                app.ErrorCode = error::kOutlineUnreadable;
                return 0;
            case WholeFile::Read:
                break;
        }
        ReadElements(part, bytes);
    } catch (const std::bad_alloc&) {
        part.Shapes.clear();
        return 0;
    }
    part.ShapeCount = static_cast<int32_t>(part.Shapes.size());
    return 1;
}

}  // namespace kesto
