#include "support/TextFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#ifndef _WIN32
#include <unistd.h>
#endif

#include <algorithm>
#include <cctype>
#include <charconv>
#include <cstdlib>
#include <limits>
#include <memory>

#include "support/Platform.h"

namespace kesto {

namespace {

constexpr char kBlank = ' ';
constexpr char kTab = '\t';
constexpr char kQuote = '"';
constexpr char kComma = ',';

// A file is written by one thread at a time: with the GNU C library its lines go out without
// taking its lock, which the library takes for every call once the process has a second thread.
size_t WriteUnlocked(const char* bytes, size_t count, std::FILE* file) {
#if defined(__GLIBC__)
    return fwrite_unlocked(bytes, 1, count, file);
#else
    return std::fwrite(bytes, 1, count, file);
#endif
}

int PutUnlocked(char c, std::FILE* file) {
#if defined(__GLIBC__)
    return fputc_unlocked(c, file);
#else
    return std::fputc(c, file);
#endif
}

// The length of text as the fixed buffers see it: up to its first zero byte, at most max bytes.
size_t CTextLength(const std::string& text, size_t max) {
    const size_t zero = text.find('\0');
    return std::min(zero == std::string::npos ? text.size() : zero, max);
}

std::string CText(const std::string& text, size_t max) {
    return text.substr(0, CTextLength(text, max));
}

// The bytes up to the next line feed into line, the line feed left out. False at the end of the
// file, where a last line without its line feed stays in line but does not count as a line.
bool ReadRawLine(std::string& line, std::FILE* file) {
#ifdef _WIN32
    for (;;) {
        const int c = std::fgetc(file);
        if (c == EOF)
            return false;
        if (c == '\n')
            return true;
        line.push_back(static_cast<char>(c));
    }
#else
    // getline finds the line feed in the stream's buffer at once; the line may hold zero bytes.
    char* buffer = nullptr;
    size_t capacity = 0;
    const ssize_t length = ::getline(&buffer, &capacity, file);
    const std::unique_ptr<char, decltype(&std::free)> owner(buffer, &std::free);
    if (length <= 0)
        return false;
    const bool complete = buffer[length - 1] == '\n';
    line.assign(buffer, static_cast<size_t>(length) - (complete ? 1 : 0));
    return complete;
#endif
}

constexpr bool IsTwoByteLead(unsigned char byte) {
    return byte >= 0x80 && byte <= 0x9C;
}

// The plain bytes of a field, outside a quote ([0]) and after an opening quote ([1]), where
// a comma belongs to the field.
constexpr auto kPlainBytes = [] {
    std::array<std::array<bool, 256>, 2> plain{};
    for (int quoted = 0; quoted < 2; ++quoted) {
        for (int byte = 0; byte < 256; ++byte) {
            const auto c = static_cast<char>(byte);
            plain[quoted][byte] = !IsTwoByteLead(static_cast<unsigned char>(byte)) && c != '\0' &&
                                  c != '\n' && c != '\r' && c != kQuote &&
                                  (c != kComma || quoted == 1);
        }
    }
    return plain;
}();

// One pass over list.Line; a field holds at most kFieldSize - 1 bytes and further bytes are
// dropped, fields after the 128th are ignored. Bytes go straight into their field.
class FieldSplitter {
  public:
    explicit FieldSplitter(FieldList& list) : list_(list) {
        list_.Count = 0;
        // Cleared, not replaced: a list split line after line keeps its fields' storage.
        for (std::string& field : list_.Fields)
            field.clear();
        list_.QuoteMarks.fill(false);
        limit_ = std::min(list_.Line.size(), static_cast<size_t>(kLineSize - 1));
    }

    void Run() {
        const char* line = list_.Line.data();
        std::string* field = Target();
        size_t i = 0;
        for (;;) {
            const char c = i < limit_ ? line[i] : '\0';
            if (IsTwoByteLead(static_cast<unsigned char>(c))) {
                Append(*field, c);
                // A lead byte at the very end has no second byte to take.
                if (i + 1 < limit_) {
                    Append(*field, line[i + 1]);
                    zeroInField_ = zeroInField_ || line[i + 1] == '\0';
                }
                i += 2;
                continue;
            }
            const bool endOfLine = c == '\0' || c == '\n' || c == '\r';
            if (endOfLine || (c == kComma && quotes_ != 1)) {
                StoreField(*field);
                if (endOfLine)
                    return;
                field = Target();
            } else if (c == kQuote) {
                CountQuote(field->size());
            } else {
                // A run of bytes that only go into the field is appended at once.
                size_t end = i + 1;
                while (end < limit_ && IsPlain(line[end]))
                    ++end;
                AppendRun(*field, line + i, end - i);
                i = end;
                continue;
            }
            ++i;
        }
    }

  private:
    // The field the next bytes go to; past the last one, a scratch field that is thrown away.
    std::string* Target() {
        return list_.Count < kFieldCount ? &list_.Fields[list_.Count] : &overflow_;
    }

    static void Append(std::string& field, char c) {
        if (field.size() < static_cast<size_t>(kFieldSize - 1))
            field.push_back(c);
    }

    // The run is appended whole and the field then cut to its room: a copy of a length the
    // compiler cannot bound goes to the library's memcpy, which is fast on short runs, where an
    // inlined copy of a bounded length is not.
    static void AppendRun(std::string& field, const char* bytes, size_t count) {
        field.append(bytes, count);
        if (field.size() > static_cast<size_t>(kFieldSize - 1))
            field.resize(kFieldSize - 1);
    }

    // A byte that neither ends the field or the line, nor counts as a quote or a lead byte.
    bool IsPlain(char c) const {
        return kPlainBytes[quotes_ == 1 ? 1 : 0][static_cast<unsigned char>(c)];
    }

    void CountQuote(size_t position) {
        if (++quotes_ == 2) {
            quotes_ = 0;
        } else {
            list_.QuoteMarks[position] = true;
        }
    }

    // A field ends at its first zero byte, as the fixed buffers read it.
    void StoreField(std::string& field) {
        if (list_.Count >= kFieldCount) {
            overflow_.clear();
            zeroInField_ = false;
            return;
        }
        // Only the byte after a lead byte can bring a zero into a field.
        if (zeroInField_)
            field.resize(CTextLength(field, field.size()));
        zeroInField_ = false;
        ++list_.Count;
    }

    FieldList& list_;
    size_t limit_ = 0;
    std::string overflow_;
    int quotes_ = 0;
    bool zeroInField_ = false;
};

#ifndef _WIN32
// Only a regular file is read: a FIFO would block the open until some writer came, and a
// folder or a device is no text file. Such a path counts as a file that cannot be opened.
// The descriptor, and the file's size in size; -1 when there is none to read.
int OpenRegularFile(const std::string& path, off_t& size) {
    // O_NONBLOCK only keeps the open of a FIFO from waiting; a regular file reads as ever with it.
    const int fd = ::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    if (fd < 0)
        return -1;
    struct stat status {};
    if (::fstat(fd, &status) != 0 || !S_ISREG(status.st_mode)) {
        ::close(fd);
        return -1;
    }
    size = status.st_size;
    return fd;
}

std::FILE* OpenRegularFileForReading(const std::string& path) {
    off_t size = 0;
    const int fd = OpenRegularFile(path, size);
    std::FILE* file = fd < 0 ? nullptr : ::fdopen(fd, "r");
    if (file == nullptr && fd >= 0)
        ::close(fd);
    return file;
}
#endif

}  // namespace

const std::string& FieldList::operator[](int i) const {
    static const std::string empty;
    if (i < 0 || i >= kFieldCount)
        return empty;
    return Fields[i];
}

TextFile::TextFile(TextFile&& other) noexcept : file_(other.file_) {
    other.file_ = nullptr;
}

TextFile& TextFile::operator=(TextFile&& other) noexcept {
    if (this != &other) {
        Reset(other.file_);
        other.file_ = nullptr;
    }
    return *this;
}

TextFile::~TextFile() {
    Close();
}

void TextFile::Close() {
    Reset(nullptr);
}

void TextFile::Reset(std::FILE* f) {
    if (file_ != nullptr)
        std::fclose(file_);
    file_ = f;
}

int OpenFile(const std::string& path, const char* mode, TextFile& out) {
    std::string cmode = mode != nullptr ? mode : "r";
    // The text rules of reading are ReadLine's on every platform: Windows' text mode would
    // also end the file at a Ctrl-Z byte, so files are read as they stand.
    if (cmode == "r" || cmode == "rt") {
#ifdef _WIN32
        out.Reset(std::fopen(path.c_str(), "rb"));
#else
        out.Reset(OpenRegularFileForReading(path));
#endif
        return out ? 1 : 0;
    }
#ifndef _WIN32
    // 't' is a Windows runtime flag: lines written end in "\n" here, "\r\n" there.
    cmode.erase(std::remove(cmode.begin(), cmode.end(), 't'), cmode.end());
#endif
    out.Reset(std::fopen(path.c_str(), cmode.c_str()));
    return out ? 1 : 0;
}

int ReadLine(std::string& line, std::FILE* file) {
    line.clear();
    if (file == nullptr)
        return -1;
    if (!ReadRawLine(line, file))
        return -1;
    if (!line.empty() && line.back() == '\r') {
        line.pop_back();
    }
    return static_cast<int>(line.size());
}

WholeFile ReadWholeFile(const std::string& path, std::string& bytes) {
    bytes.clear();
#ifdef _WIN32
    TextFile file;
    file.Reset(path.empty() ? nullptr : std::fopen(path.c_str(), "rb"));
    if (!file)
        return FileExists(path) == 1 ? WholeFile::Unreadable : WholeFile::Missing;
    char chunk[65536];
    for (size_t n; (n = std::fread(chunk, 1, sizeof chunk, file.get())) > 0;)
        bytes.append(chunk, n);
    return WholeFile::Read;
#else
    off_t size = 0;
    const int fd = OpenRegularFile(path, size);
    if (fd < 0)
        return FileExists(path) == 1 ? WholeFile::Unreadable : WholeFile::Missing;
    const std::unique_ptr<const int, void (*)(const int*)> closer(
        &fd, [](const int* f) { ::close(*f); });
    constexpr size_t kChunk = size_t{1} << 24;
    const auto expected = static_cast<size_t>(std::max<off_t>(size, 0));
    for (;;) {
        // One byte more than is left: a short read at the expected size is the end.
        const size_t left = expected > bytes.size() ? expected - bytes.size() : 0;
        const size_t want = std::min(left + 1, kChunk);
        const size_t used = bytes.size();
        bytes.resize(used + want);
        const ssize_t n = ::read(fd, bytes.data() + used, want);
        bytes.resize(used + static_cast<size_t>(std::max<ssize_t>(n, 0)));
        if (n <= 0 || (static_cast<size_t>(n) < want && bytes.size() >= expected))
            break;
    }
    return WholeFile::Read;
#endif
}

int NextLine(const std::string& bytes, size_t& at, std::string& line) {
    line.clear();
    if (at >= bytes.size())
        return -1;
    const size_t end = bytes.find('\n', at);
    if (end == std::string::npos) {
        line.assign(bytes, at);
        at = bytes.size();
        return -1;
    }
    line.assign(bytes, at, end - at);
    at = end + 1;
    if (!line.empty() && line.back() == '\r')
        line.pop_back();
    return static_cast<int>(line.size());
}

int WriteLine(const std::string& text, std::FILE* file) {
    if (file == nullptr)
        return 0;
    const size_t length = CTextLength(text, kLineSize - 1);
    const bool written = WriteUnlocked(text.data(), length, file) == length;
    return written && PutUnlocked('\n', file) != EOF ? 1 : 0;
}

void TrimLine(std::string& text, int mode) {
    std::replace(text.begin(), text.end(), kTab, kBlank);
    size_t end = text.size();
    if (mode == 2 || mode == 3) {
        while (end > 0 && text[end - 1] == kBlank)
            --end;
    }
    size_t begin = 0;
    if (mode == 1 || mode == 3) {
        while (begin < end && text[begin] == kBlank)
            ++begin;
    }
    if (end < text.size())
        text.erase(end);
    if (begin > 0)
        text.erase(0, begin);
}

void SplitFields(FieldList& list) {
    FieldSplitter(list).Run();
}

void SplitFieldsTrim(FieldList& list) {
    SplitFields(list);
    for (int i = 0; i < list.Count; ++i) {
        if (!list.QuoteMarks[i])
            TrimLine(list.Fields[i], 3);
    }
}

void WordsToLine(const std::string& source, FieldList& list) {
    std::string work = CText(source, kLineSize - 1);
    int words = (!work.empty() && work[0] != kBlank) ? 1 : 0;
    for (size_t i = 0; i < work.size(); ++i) {
        if (work[i] == kBlank)
            continue;
        if (i > 0 && words > 0)
            work[i - 1] = kComma;
        ++words;
        while (i + 1 < work.size() && work[i + 1] != kBlank)
            ++i;
    }
    list.Line = work;
}

namespace {

// A byte of a plain word: printable ASCII that neither quotes nor separates.
constexpr bool IsPlainWordByte(char c) {
    return c > kBlank && c <= '~' && c != kQuote && c != kComma;
}

// The split of a line of plain words and blanks (room for it and each of its words, at most
// kFieldCount words) is its words, which go straight into their fields; false, nothing split,
// for any other line. Fields beyond the last split's Count are empty already.
bool SplitPlainWords(const std::string& source, FieldList& list) {
    if (source.size() >= static_cast<size_t>(kLineSize))
        return false;
    struct Word {
        size_t Start;
        size_t Length;
    };
    Word words[kFieldCount];  // filled up to count, never read beyond
    size_t count = 0;
    for (size_t i = 0; i < source.size();) {
        if (source[i] == kBlank) {
            ++i;
            continue;
        }
        size_t end = i;
        while (end < source.size() && IsPlainWordByte(source[end]))
            ++end;
        const bool wordEndsWell = end > i && (end == source.size() || source[end] == kBlank);
        // The first field holds the blanks before its word too, and a field keeps at most
        // kFieldSize - 1 bytes.
        const size_t fieldStart = count == 0 ? 0 : i;
        if (!wordEndsWell || end - fieldStart >= static_cast<size_t>(kFieldSize) ||
            count == std::size(words))
            return false;
        words[count++] = {i, end - i};
        i = end;
    }
    // The comma line WordsToLine makes: the blank before each word but the first.
    list.Line = source;
    for (size_t k = 1; k < count; ++k)
        list.Line[words[k].Start - 1] = kComma;
    const auto before = static_cast<size_t>(std::clamp(list.Count, 0, kFieldCount));
    // A line without words is one empty field.
    const size_t fields = std::max<size_t>(count, 1);
    for (size_t k = 0; k < count; ++k)
        list.Fields[k].assign(source, words[k].Start, words[k].Length);
    for (size_t k = count; k < std::max(fields, before); ++k)
        list.Fields[k].clear();
    list.QuoteMarks.fill(false);
    list.Count = static_cast<int32_t>(fields);
    return true;
}

}  // namespace

void SplitWords(const std::string& source, FieldList& list) {
    if (SplitPlainWords(source, list))
        return;
    WordsToLine(source, list);
    SplitFieldsTrim(list);
}

void SplitLine(const std::string& line, FieldList& list) {
    // The split depends on the line alone: one split before the trimming one gives the same.
    list.Line = line;
    SplitFieldsTrim(list);
}

int FileExists(const std::string& path) {
    struct stat status {};
    return !path.empty() && ::stat(path.c_str(), &status) == 0 ? 1 : 0;
}

int FileExists(const std::string& path, Operator& shown) {
    if (FileExists(path) == 1)
        return 1;
    shown.ShowMessageBox((" File Not Found : " + path).substr(0, 127));
    return 0;
}

int32_t AtoL(const std::string& text) {
    size_t i = 0;
    while (i < text.size() && std::isspace(static_cast<unsigned char>(text[i])))
        ++i;
    bool negative = false;
    if (i < text.size() && (text[i] == '+' || text[i] == '-'))
        negative = text[i++] == '-';
    int64_t value = 0;
    constexpr int64_t kLimit = int64_t{std::numeric_limits<int32_t>::max()} + 1;
    for (; i < text.size() && std::isdigit(static_cast<unsigned char>(text[i])); ++i) {
        value = std::min(value * 10 + (text[i] - '0'), kLimit);
    }
    if (negative)
        return static_cast<int32_t>(-value);
    return static_cast<int32_t>(std::min(value, kLimit - 1));
}

double AtoF(const std::string& text) {
    // A plain decimal number is read by from_chars, which rounds as strtod does (both give
    // the nearest double); anything else (hex, inf, nan, out of range) goes to strtod.
    const char* p = text.c_str();
    const char* end = p + text.size();
    while (std::isspace(static_cast<unsigned char>(*p)))
        ++p;
    const bool negative = *p == '-';
    if (*p == '+' || *p == '-')
        ++p;
    const bool decimal = std::isdigit(static_cast<unsigned char>(p[0])) ||
                         (p[0] == '.' && std::isdigit(static_cast<unsigned char>(p[1])));
    const bool hex = p[0] == '0' && (p[1] == 'x' || p[1] == 'X');
    double value = 0;
    if (decimal && !hex && std::from_chars(p, end, value).ec == std::errc())
        return negative ? -value : value;
    // atof itself, but through strtod: Windows' own atof reads no "nan" and no "inf", where
    // MinGW's strtod reads them as the C99 library does.
    return std::strtod(text.c_str(), nullptr);
}

std::string CutField(const std::string& text, size_t width) {
    if (width == 0)
        return "";
    return text.substr(0, width - 1);
}

}  // namespace kesto
