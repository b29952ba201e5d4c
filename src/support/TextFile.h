// Reading, writing and splitting the text lines of every file the system handles.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <string>

namespace kesto {

class Operator;

constexpr int kLineSize = 1024;   // bytes of one line, terminator included
constexpr int kFieldCount = 128;  // fields of one split line
constexpr int kFieldSize = 128;   // bytes of one field, terminator included

// One line split into comma-separated fields. Fields beyond Count are empty.
struct FieldList {
    std::string Line;  // the line to split, at most kLineSize - 1 bytes are looked at
    std::array<std::string, kFieldCount> Fields;
    int32_t Count = 0;
    std::array<bool, kFieldCount> QuoteMarks{};  // slot marks of the last split

    const std::string& operator[](int i) const;  // "" outside 0..kFieldCount-1
};

// Owns a FILE* and closes it.
class TextFile {
  public:
    TextFile() = default;
    TextFile(const TextFile&) = delete;
    TextFile& operator=(const TextFile&) = delete;
    TextFile(TextFile&& other) noexcept;
    TextFile& operator=(TextFile&& other) noexcept;
    ~TextFile();

    std::FILE* get() const { return file_; }
    explicit operator bool() const { return file_ != nullptr; }
    void Close();
    void Reset(std::FILE* f);

  private:
    std::FILE* file_ = nullptr;
};

// Opens path with a C mode ("rt", "r", "wt", ...). Returns 1 when opened, 0 otherwise.
int OpenFile(const std::string& path, const char* mode, TextFile& out);

// Reads one line up to its line feed into `line` (line feed dropped). A carriage return
// directly before the line feed is dropped too (Windows text mode); any other byte is kept.
// Returns the length, or -1 at end of file: a last line without line feed is never delivered.
int ReadLine(std::string& line, std::FILE* file);

// What became of reading a whole file.
enum class WholeFile {
    Read,        // the bytes are there
    Missing,     // nothing at the path (FileExists says 0)
    Unreadable,  // something is there, but no regular file that can be opened
};

// All bytes of a regular file in one go, the way OpenFile and ReadLine would meet them: a
// read error ends the bytes there as it ends ReadLine's lines. Fewer system calls than a
// stream, for the many small files of a job.
WholeFile ReadWholeFile(const std::string& path, std::string& bytes);

// The lines of bytes in memory, one per call, as ReadLine delivers them from a file: -1 at
// the end, where a last line without its line feed is not delivered. at: where the next
// line starts (0 for the first).
int NextLine(const std::string& bytes, size_t& at, std::string& line);

// Writes text (cut to 1023 bytes) and a line feed in one write. 1 when written, else 0.
int WriteLine(const std::string& text, std::FILE* file);

// Tabs become blanks; mode 2 or 3 trims the right end, 1 or 3 the left end.
void TrimLine(std::string& text, int mode);

// Splits list.Line into list.Fields (quotes, two-byte lead bytes, slot marks).
void SplitFields(FieldList& list);
// As SplitFields, then trims (mode 3) every field whose quote slot mark is not set.
void SplitFieldsTrim(FieldList& list);
// Turns a blank-separated line into a comma-separated one in list.Line, to be split.
void WordsToLine(const std::string& source, FieldList& list);
// WordsToLine, then SplitFieldsTrim: the words of a blank-separated line as its fields.
void SplitWords(const std::string& source, FieldList& list);

// Convenience: list.Line = line; SplitFieldsTrim (which splits).
void SplitLine(const std::string& line, FieldList& list);

// 1 when the file exists.
int FileExists(const std::string& path);
// The same, reporting a missing file to the operator as " File Not Found : path".
int FileExists(const std::string& path, Operator& shown);

// atol as on a platform whose long has 32 bits: saturates at the int32 limits.
int32_t AtoL(const std::string& text);
double AtoF(const std::string& text);

// Copies text cut to a fixed field width (width includes the terminator of the record field).
std::string CutField(const std::string& text, size_t width);

}  // namespace kesto
