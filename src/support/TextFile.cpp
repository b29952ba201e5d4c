#include "support/TextFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#ifndef _WIN32
#include <unistd.h>
#endif

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <limits>

#include "support/Platform.h"

namespace kesto {

namespace {

constexpr char kBlank = ' ';
constexpr char kTab = '\t';
constexpr char kQuote = '"';
constexpr char kComma = ',';

// The text as the fixed buffers see it: up to its first zero byte, at most max bytes.
std::string CText(const std::string& text, size_t max) {
    return text.substr(0, std::min(text.find('\0'), max));
}

bool IsTwoByteLead(unsigned char byte) {
    return byte >= 0x80 && byte <= 0x9C;
}

// One pass over list.Line; the field buffer holds at most kFieldSize - 1 bytes and further
// bytes are dropped, fields after the 128th are ignored.
class FieldSplitter {
  public:
    explicit FieldSplitter(FieldList& list) : list_(list) {
        list_.Count = 0;
        list_.Fields.fill(std::string());
        list_.QuoteMarks.fill(false);
        limit_ = std::min(list_.Line.size(), static_cast<size_t>(kLineSize - 1));
    }

    void Run() {
        size_t i = 0;
        for (;;) {
            const char c = ByteAt(i);
            if (IsTwoByteLead(static_cast<unsigned char>(c))) {
                Append(c);
                // A lead byte at the very end has no second byte to take.
                if (i + 1 < limit_)
                    Append(list_.Line[i + 1]);
                i += 2;
                continue;
            }
            const bool endOfLine = c == '\0' || c == '\n' || c == '\r';
            if (endOfLine || (c == kComma && quotes_ != 1)) {
                StoreField();
                if (endOfLine)
                    return;
                buffer_.clear();
            } else if (c == kQuote) {
                CountQuote();
            } else {
                Append(c);
            }
            ++i;
        }
    }

  private:
    char ByteAt(size_t i) const { return i < limit_ ? list_.Line[i] : '\0'; }

    void Append(char c) {
        if (buffer_.size() < static_cast<size_t>(kFieldSize - 1))
            buffer_.push_back(c);
    }

    void CountQuote() {
        if (++quotes_ == 2) {
            quotes_ = 0;
        } else {
            list_.QuoteMarks[buffer_.size()] = true;
        }
    }

    void StoreField() {
        if (list_.Count >= kFieldCount)
            return;
        list_.Fields[list_.Count] = CText(buffer_, kFieldSize - 1);
        ++list_.Count;
    }

    FieldList& list_;
    size_t limit_ = 0;
    std::string buffer_;
    int quotes_ = 0;
};

#ifndef _WIN32
// Only a regular file is read: a FIFO would block the open until some writer came, and a
// folder or a device is no text file. Such a path counts as a file that cannot be opened.
std::FILE* OpenRegularFileForReading(const std::string& path) {
    const int fd = ::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    if (fd < 0)
        return nullptr;
    struct stat status {};
    const bool regular = ::fstat(fd, &status) == 0 && S_ISREG(status.st_mode);
    const int flags = ::fcntl(fd, F_GETFL);
    if (!regular || flags < 0 || ::fcntl(fd, F_SETFL, flags & ~O_NONBLOCK) != 0) {
        ::close(fd);
        return nullptr;
    }
    std::FILE* file = ::fdopen(fd, "r");
    if (file == nullptr)
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
    for (;;) {
        const int c = std::fgetc(file);
        if (c == EOF)
            return -1;
        if (c == '\n')
            break;
        line.push_back(static_cast<char>(c));
    }
    if (!line.empty() && line.back() == '\r') {
        line.pop_back();
    }
    return static_cast<int>(line.size());
}

int WriteLine(const std::string& text, std::FILE* file) {
    if (file == nullptr)
        return 0;
    const std::string out = CText(text, kLineSize - 1) + "\n";
    return std::fwrite(out.data(), 1, out.size(), file) == out.size() ? 1 : 0;
}

void TrimLine(std::string& text, int mode) {
    std::replace(text.begin(), text.end(), kTab, kBlank);
    if (mode == 2 || mode == 3) {
        const auto last = text.find_last_not_of(kBlank);
        text.erase(last == std::string::npos ? 0 : last + 1);
    }
    if (mode == 1 || mode == 3) {
        const auto first = text.find_first_not_of(kBlank);
        text.erase(0, first == std::string::npos ? text.size() : first);
    }
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

void SplitWords(const std::string& source, FieldList& list) {
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
    SplitFields(list);
}

void SplitLine(const std::string& line, FieldList& list) {
    list.Line = line;
    SplitFields(list);
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
