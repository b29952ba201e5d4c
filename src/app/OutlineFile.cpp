#include <algorithm>
#include <array>
#include <new>
#include <string>
#include <system_error>
#include <thread>
#include <utility>
#include <vector>

#include "app/Codes.h"
#include "app/InputReaders.h"
#include "support/TextFile.h"

namespace kesto {

namespace {

struct Keyword {
    const char* Text;
    ShapeKind Kind;
    int ParamCount;
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
    SplitWords(line, fields);
    for (const Keyword& keyword : kKeywords) {
        if (fields[0].find(keyword.Text) == std::string::npos)
            continue;
        element.Kind = keyword.Kind;
        element.Color = ColorOf(fields);
        for (int i = 0; i < keyword.ParamCount; ++i)
            element.Params[i] = AtoF(fields[kParamColumn + i]);
        return;
    }
}

// What reading an outline works in, kept from one outline to the next of a thread.
struct OutlineSpace {
    std::string Bytes;
    std::string Line;
    FieldList Fields;
};

// One element per line that ReadLine delivers, comment lines included: those lines only
// count, and their elements stay all zero at the end of the list.
void ReadElements(PartsInfo& part, OutlineSpace& space) {
    size_t lines = 0;
    size_t at = 0;
    while (NextLine(space.Bytes, at, space.Line) != -1) {
        ++lines;
        if (!space.Line.empty() && space.Line[0] == '$')
            continue;
        FillElement(part.Shapes.emplace_back(), space.Line, space.Fields);
    }
    part.Shapes.resize(lines);
}

}  // namespace

namespace {

// Reads one outline into the part alone, touching nothing shared, so that several can be read
// at once; the caller records the outcome in the job.
WholeFile LoadOutline(PartsInfo& part, OutlineSpace& space) {
    part.ShapeCount = 0;
    part.Shapes.clear();
    try {
        const WholeFile read = ReadWholeFile(part.OutlinePath, space.Bytes);
        if (read != WholeFile::Read)
            return read;
        ReadElements(part, space);
    } catch (const std::bad_alloc&) {
        part.Shapes.clear();
        return WholeFile::Missing;
    }
    part.ShapeCount = static_cast<int32_t>(part.Shapes.size());
    return WholeFile::Read;
}

// Failed when not read, with 9026 for a file that exists but cannot be opened.
Outcome OutcomeOf(WholeFile read) {
    if (read == WholeFile::Read)
        return Outcome::Done();
    return Outcome::Failed(read == WholeFile::Unreadable ? error::kOutlineUnreadable
                                                         : error::kNone);
}

// What the reads of parts' outlines came to, recorded in the job: a part not read gets
// HasOutline 0. Done, with 9026 when one of the files exists but cannot be opened.
Outcome RecordReads(const std::vector<PartsInfo*>& parts, const std::vector<WholeFile>& reads) {
    int32_t code = error::kNone;
    for (size_t i = 0; i < parts.size(); ++i) {
        const Outcome read = OutcomeOf(reads[i]);
        if (!read.Ok())
            parts[i]->HasOutline = 0;
        if (read.Code() != error::kNone)
            code = read.Code();
    }
    return Outcome::Done(code);
}

// Below this many outlines a second thread costs more than it saves.
constexpr size_t kOutlinesPerThread = 64;

}  // namespace

Outcome ReadOutline(PartsInfo& part) {
    OutlineSpace space;
    return OutcomeOf(LoadOutline(part, space));
}

OutlineReads::OutlineReads(std::vector<PartsInfo*> parts)
    : parts_(std::move(parts)), reads_(parts_.size(), WholeFile::Missing) {
    const size_t cores = std::max(1u, std::thread::hardware_concurrency());
    const size_t threads = std::min(cores, parts_.size() / kOutlinesPerThread + 1);
    // The files are opened and read side by side (most of the time goes to the system calls);
    // each thread takes every threads-th part, and the outcomes are recorded in list order.
    auto readEvery = [this, threads](size_t first) {
        OutlineSpace space;
        for (size_t i = first; i < parts_.size(); i += threads)
            reads_[i] = LoadOutline(*parts_[i], space);
    };
    size_t started = 0;
    try {
        for (; started < threads && !parts_.empty(); ++started)
            readers_.emplace_back(readEvery, started);
    } catch (const std::system_error&) {
        // No thread to be had: this one reads what the others would have.
        for (size_t t = started; t < threads; ++t)
            readEvery(t);
    }
}

OutlineReads::~OutlineReads() {
    JoinReaders();
}

void OutlineReads::JoinReaders() {
    for (std::thread& reader : readers_) {
        if (reader.joinable())
            reader.join();
    }
}

Outcome OutlineReads::Wait() {
    JoinReaders();
    const Outcome read = RecordReads(parts_, reads_);
    parts_.clear();
    reads_.clear();
    return read;
}

Outcome ReadOutlines(const std::vector<PartsInfo*>& parts) {
    if (parts.size() >= kOutlinesPerThread)
        return OutlineReads(parts).Wait();
    std::vector<WholeFile> reads;
    OutlineSpace space;
    for (PartsInfo* part : parts)
        reads.push_back(LoadOutline(*part, space));
    return RecordReads(parts, reads);
}

}  // namespace kesto
