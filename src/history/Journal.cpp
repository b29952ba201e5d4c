#include "history/Journal.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <ctime>
#include <filesystem>
#include <system_error>

namespace kesto {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view kMagic = "kesto-journal ";
constexpr std::string_view kJobWord = "job ";
constexpr size_t kTimeLength = 23;  // YYYY-MM-DDTHH:MM:SS.mmm

struct VerbWord {
    JournalVerb Verb;
    std::string_view Word;
};

constexpr std::array<VerbWord, 24> kVerbWords = {{
    {JournalVerb::Process, "process"},
    {JournalVerb::Pallet, "pallet"},
    {JournalVerb::View, "view"},
    {JournalVerb::Direct, "direct"},
    {JournalVerb::ThreeD, "3d"},
    {JournalVerb::Grid, "grid"},
    {JournalVerb::BlockDraw, "blockdraw"},
    {JournalVerb::Hit, "hit"},
    {JournalVerb::Box, "box"},
    {JournalVerb::Down, "down"},
    {JournalVerb::Up, "up"},
    {JournalVerb::Left, "left"},
    {JournalVerb::Right, "right"},
    {JournalVerb::Sheets, "sheets"},
    {JournalVerb::Drop, "drop"},
    {JournalVerb::BandDrop, "banddrop"},
    {JournalVerb::Retry, "retry"},
    {JournalVerb::Auto, "auto"},
    {JournalVerb::Undo, "undo"},
    {JournalVerb::Redo, "redo"},
    {JournalVerb::Ok, "ok"},
    {JournalVerb::Cancel, "cancel"},
    {JournalVerb::Area, "area"},
    {JournalVerb::Window, "window"},
}};

constexpr std::string_view kFitWord = "fit";
constexpr double kThousandths = 1000;

constexpr std::array<std::pair<PalletView, std::string_view>, 4> kViewWords = {{
    {PalletView::Flat, "flat"},
    {PalletView::Danmen, "danmen"},
    {PalletView::FourPallet, "4pallet"},
    {PalletView::TwoPallet, "2pallet"},
}};

constexpr std::array<std::pair<HitBy, std::string_view>, 2> kHitWords = {{
    {HitBy::Block, "block"},
    {HitBy::Single, "single"},
}};

std::optional<JournalVerb> VerbOf(std::string_view word) {
    for (const VerbWord& entry : kVerbWords) {
        if (entry.Word == word)
            return entry.Verb;
    }
    return std::nullopt;
}

bool IsToggle(JournalVerb verb) {
    return verb == JournalVerb::Direct || verb == JournalVerb::ThreeD ||
           verb == JournalVerb::Grid || verb == JournalVerb::BlockDraw;
}

// The verbs of one number in Value.
bool TakesOneValue(JournalVerb verb) {
    return verb == JournalVerb::Process || verb == JournalVerb::Pallet ||
           verb == JournalVerb::Box || verb == JournalVerb::Down || verb == JournalVerb::Up ||
           verb == JournalVerb::Right || IsToggle(verb);
}

bool TakesNothing(JournalVerb verb) {
    return verb == JournalVerb::Retry || verb == JournalVerb::Auto || verb == JournalVerb::Undo ||
           verb == JournalVerb::Redo || verb == JournalVerb::Ok || verb == JournalVerb::Cancel;
}

// --- writing a command ---

void AddNumber(std::string& text, int32_t number) {
    text += ' ';
    text += std::to_string(number);
}

void AddRect(std::string& text, const IntRect& rect) {
    AddNumber(text, rect.Left);
    AddNumber(text, rect.Top);
    AddNumber(text, rect.Right);
    AddNumber(text, rect.Bottom);
}

// Three decimals whatever the locale (the window's locale may write a comma).
void AddMillimetres(std::string& text, double mm) {
    std::array<char, 48> buffer{};
    const auto [end, ec] = std::to_chars(buffer.data(), buffer.data() + buffer.size(), mm,
                                         std::chars_format::fixed, 3);
    text += ' ';
    text.append(buffer.data(), ec == std::errc() ? end : buffer.data());
}

void AddNumbers(std::string& text, const std::vector<int32_t>& numbers) {
    for (const int32_t number : numbers)
        AddNumber(text, number);
}

template <class T, size_t N>
std::string_view WordOf(const std::array<std::pair<T, std::string_view>, N>& words, T value) {
    for (const auto& [known, word] : words) {
        if (known == value)
            return word;
    }
    return words.front().second;
}

void AddArguments(std::string& text, const JournalCommand& command) {
    switch (command.Verb) {
        case JournalVerb::View:
            text += ' ';
            text += WordOf(kViewWords, command.View);
            return;
        case JournalVerb::Hit:
            text += ' ';
            text += WordOf(kHitWords, command.Hit);
            return;
        case JournalVerb::Left:
            AddNumbers(text, command.Stacks);
            return;
        case JournalVerb::Sheets:
            AddNumber(text, command.Stack);
            AddNumber(text, command.Value);
            return;
        case JournalVerb::Area:
            AddNumber(text, command.ClientWidth);
            AddNumber(text, command.ClientHeight);
            return;
        case JournalVerb::Window:
            if (!command.Window) {
                text += ' ';
                text += kFitWord;
                return;
            }
            for (const double mm : {command.Window->XMin, command.Window->XMax,
                                    command.Window->YMin, command.Window->YMax})
                AddMillimetres(text, mm);
            return;
        case JournalVerb::Drop:
            AddNumber(text, command.ClientWidth);
            AddNumber(text, command.ClientHeight);
            AddRect(text, command.Drop);
            AddNumbers(text, command.Stacks);
            return;
        case JournalVerb::BandDrop:
            AddNumber(text, command.ClientWidth);
            AddNumber(text, command.ClientHeight);
            AddNumber(text, command.ShiftX);
            AddNumber(text, command.ShiftY);
            for (const BandEntryAtPress& entry : command.Band) {
                AddNumber(text, entry.Stack);
                AddRect(text, entry.Rect);
            }
            text += " /";
            AddNumbers(text, command.Stacks);
            return;
        default:
            break;
    }
    if (IsToggle(command.Verb))
        AddNumber(text, command.Value != 0 ? 1 : 0);
    else if (TakesOneValue(command.Verb))
        AddNumber(text, command.Value);
}

// --- reading a line ---

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

// The decimal number of digits [at, at + count) of text, all digits.
int DigitsAt(std::string_view text, size_t at, size_t count) {
    int value = 0;
    for (size_t i = at; i < at + count; ++i)
        value = value * 10 + (text[i] - '0');
    return value;
}

int DaysInMonth(int year, int month) {
    static constexpr std::array<int, 12> kDays = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    const bool leap = (year % 4 == 0 && year % 100 != 0) || year % 400 == 0;
    return month == 2 && leap ? 29 : kDays[static_cast<size_t>(month - 1)];
}

// YYYY-MM-DDTHH:MM:SS.mmm, a date of the calendar and a time of the day.
bool IsJournalTime(std::string_view text) {
    if (text.size() != kTimeLength)
        return false;
    constexpr std::string_view kShape = "dddd-dd-ddTdd:dd:dd.ddd";
    for (size_t i = 0; i < kTimeLength; ++i) {
        if (kShape[i] == 'd' ? !IsDigit(text[i]) : text[i] != kShape[i])
            return false;
    }
    const int year = DigitsAt(text, 0, 4);
    const int month = DigitsAt(text, 5, 2);
    const int day = DigitsAt(text, 8, 2);
    return month >= 1 && month <= 12 && day >= 1 && day <= DaysInMonth(year, month) &&
           DigitsAt(text, 11, 2) <= 23 && DigitsAt(text, 14, 2) <= 59 &&
           DigitsAt(text, 17, 2) <= 59;
}

// A command word is printable ASCII without blanks; anything else is damage, not a command of
// a later version.
bool IsCommandWord(std::string_view word) {
    return !word.empty() &&
           std::all_of(word.begin(), word.end(), [](char c) { return c > ' ' && c < 0x7f; });
}

std::vector<std::string_view> SplitWords(std::string_view line) {
    std::vector<std::string_view> words;
    size_t start = 0;
    for (;;) {
        const size_t blank = line.find(' ', start);
        if (blank == std::string_view::npos) {
            words.push_back(line.substr(start));
            return words;
        }
        words.push_back(line.substr(start, blank - start));
        start = blank + 1;
    }
}

// Reads the arguments of one command into a JournalCommand, or says what is wrong with them.
class ArgumentReader {
  public:
    ArgumentReader(std::string_view word, std::vector<std::string_view> arguments)
        : word_(word), arguments_(std::move(arguments)) {}

    // args[from, to) as numbers; false (Why set) when one is none.
    bool Numbers(size_t from, size_t to, std::vector<int32_t>& numbers) {
        numbers.clear();
        for (size_t i = from; i < to; ++i) {
            int32_t number = 0;
            if (!Number(i, number))
                return false;
            numbers.push_back(number);
        }
        return true;
    }

    bool Number(size_t at, int32_t& number) {
        const std::string_view text = arguments_[at];
        const char* first = text.data();
        const char* last = text.data() + text.size();
        const auto [end, ec] = std::from_chars(first, last, number);
        if (text.empty() || end != last || ec == std::errc::invalid_argument) {
            why_ = "argument " + std::to_string(at + 1) + " of " + std::string(word_) +
                   " is not a decimal number";
            return false;
        }
        if (ec != std::errc()) {
            why_ = "argument " + std::to_string(at + 1) + " of " + std::string(word_) +
                   " is beyond 32 bits";
            return false;
        }
        return true;
    }

    // A millimetre written as decimals: an optional '-', digits, an optional fraction.
    bool Millimetres(size_t at, double& mm) {
        const std::string_view text = arguments_[at];
        const char* first = text.data();
        const char* last = text.data() + text.size();
        const auto [end, ec] = std::from_chars(first, last, mm, std::chars_format::fixed);
        const bool digitsOnly = std::all_of(
            first, last, [](char c) { return (c >= '0' && c <= '9') || c == '.' || c == '-'; });
        if (text.empty() || end != last || ec != std::errc() || !digitsOnly ||
            !(std::fabs(mm) <= kJournalWindowMax)) {
            why_ = "argument " + std::to_string(at + 1) + " of " + std::string(word_) +
                   " is not a millimetre";
            return false;
        }
        return true;
    }

    bool Count(size_t wanted) {
        if (arguments_.size() == wanted)
            return true;
        if (wanted == 0)
            why_ = std::string(word_) + " takes no arguments";
        else
            why_ = std::string(word_) + " needs exactly " + std::to_string(wanted) +
                   (wanted == 1 ? " argument" : " arguments");
        return false;
    }

    bool AtLeast(size_t count, size_t wanted) {
        if (count >= wanted)
            return true;
        why_ = std::string(word_) + " needs at least " + std::to_string(wanted) +
               (wanted == 1 ? " number" : " numbers");
        return false;
    }

    template <class T, size_t N>
    bool Choice(const std::array<std::pair<T, std::string_view>, N>& words, T& value) {
        if (!Count(1))
            return false;
        for (const auto& [known, word] : words) {
            if (word == arguments_[0]) {
                value = known;
                return true;
            }
        }
        why_ = "unknown " + std::string(word_) + " \"" + std::string(arguments_[0].substr(0, 16)) +
               "\"";
        return false;
    }

    bool Read(JournalCommand& command);

    const std::string& Why() const { return why_; }

  private:
    bool ReadDrop(JournalCommand& command);
    bool ReadBandDrop(JournalCommand& command);
    bool ReadWindow(JournalCommand& command);

    std::string_view word_;
    std::vector<std::string_view> arguments_;
    std::string why_;
};

bool ArgumentReader::ReadDrop(JournalCommand& command) {
    std::vector<int32_t> numbers;
    if (!AtLeast(arguments_.size(), 6) || !Numbers(0, arguments_.size(), numbers))
        return false;
    command.ClientWidth = numbers[0];
    command.ClientHeight = numbers[1];
    command.Drop = IntRect{numbers[2], numbers[3], numbers[4], numbers[5]};
    command.Stacks.assign(numbers.begin() + 6, numbers.end());
    return true;
}

bool ArgumentReader::ReadBandDrop(JournalCommand& command) {
    const auto slash = std::find(arguments_.begin(), arguments_.end(), "/");
    if (slash == arguments_.end()) {
        why_ = "banddrop needs a '/' after its band";
        return false;
    }
    const auto before = static_cast<size_t>(slash - arguments_.begin());
    std::vector<int32_t> numbers;
    if (!AtLeast(before, 9) || !Numbers(0, before, numbers))
        return false;
    if ((before - 4) % 5 != 0) {
        why_ = "banddrop's band needs 5 numbers a stack";
        return false;
    }
    command.ClientWidth = numbers[0];
    command.ClientHeight = numbers[1];
    command.ShiftX = numbers[2];
    command.ShiftY = numbers[3];
    for (size_t i = 4; i < numbers.size(); i += 5) {
        command.Band.push_back(BandEntryAtPress{
            numbers[i], IntRect{numbers[i + 1], numbers[i + 2], numbers[i + 3], numbers[i + 4]}});
    }
    return Numbers(before + 1, arguments_.size(), command.Stacks);
}

bool ArgumentReader::ReadWindow(JournalCommand& command) {
    if (arguments_.size() == 1 && arguments_[0] == kFitWord) {
        command.Window.reset();
        return true;
    }
    if (arguments_.size() != 4) {
        why_ = "window needs fit or 4 millimetres";
        return false;
    }
    WorldWindow w;
    if (!Millimetres(0, w.XMin) || !Millimetres(1, w.XMax) || !Millimetres(2, w.YMin) ||
        !Millimetres(3, w.YMax))
        return false;
    if (!(w.XMin < w.XMax) || !(w.YMin < w.YMax)) {
        why_ = "window's minimum is not below its maximum";
        return false;
    }
    command.Window = w;
    return true;
}

bool ArgumentReader::Read(JournalCommand& command) {
    const JournalVerb verb = command.Verb;
    if (TakesNothing(verb))
        return Count(0);
    if (TakesOneValue(verb)) {
        if (!Count(1) || !Number(0, command.Value))
            return false;
        if (IsToggle(verb) && command.Value != 0 && command.Value != 1) {
            why_ = std::string(word_) + " takes 0 or 1";
            return false;
        }
        return true;
    }
    switch (verb) {
        case JournalVerb::View:
            return Choice(kViewWords, command.View);
        case JournalVerb::Hit:
            return Choice(kHitWords, command.Hit);
        case JournalVerb::Left:
            return Numbers(0, arguments_.size(), command.Stacks);
        case JournalVerb::Sheets:
            return Count(2) && Number(0, command.Stack) && Number(1, command.Value);
        case JournalVerb::Area:
            return Count(2) && Number(0, command.ClientWidth) && Number(1, command.ClientHeight);
        case JournalVerb::Drop:
            return ReadDrop(command);
        case JournalVerb::BandDrop:
            return ReadBandDrop(command);
        case JournalVerb::Window:
            return ReadWindow(command);
        default:
            why_ = "no rule for " + std::string(word_);
            return false;
    }
}

ParsedJournalLine MalformedLine(std::string why) {
    ParsedJournalLine parsed;
    parsed.Kind = ParsedJournalLine::Kind::Malformed;
    parsed.Why = std::move(why);
    return parsed;
}

// A line without its "\n" or "\r\n"; a carriage return of its own stays a byte of the line.
std::string_view WithoutLineEnd(std::string_view line) {
    if (line.empty() || line.back() != '\n')
        return line;
    line.remove_suffix(1);
    if (!line.empty() && line.back() == '\r')
        line.remove_suffix(1);
    return line;
}

// One line without its line end.
ParsedJournalLine ParseLineBody(std::string_view line) {
    if (line.size() + 1 > kJournalLineMax)
        return MalformedLine("line longer than " + std::to_string(kJournalLineMax) + " bytes");
    std::vector<std::string_view> words = SplitWords(line);
    if (!IsJournalTime(words[0]))
        return MalformedLine("the line does not start with a time YYYY-MM-DDTHH:MM:SS.mmm");
    ParsedJournalLine parsed = MalformedLine("");
    parsed.Time = std::string(words[0]);
    if (words.size() < 2) {
        parsed.Why = "no command after the time";
        return parsed;
    }
    if (!IsCommandWord(words[1])) {
        parsed.Why = words[1].empty() ? "more than one blank between words, or a blank at the end"
                                      : "the command word is not printable text";
        return parsed;
    }
    parsed.Word = std::string(words[1]);
    const auto verb = VerbOf(words[1]);
    if (!verb) {
        parsed.Kind = ParsedJournalLine::Kind::Unknown;
        return parsed;
    }
    words.erase(words.begin(), words.begin() + 2);
    if (std::find(words.begin(), words.end(), std::string_view()) != words.end()) {
        parsed.Why = "more than one blank between words, or a blank at the end";
        return parsed;
    }
    parsed.Command.Verb = *verb;
    ArgumentReader reader(parsed.Word, std::move(words));
    if (!reader.Read(parsed.Command)) {
        parsed.Command = JournalCommand{};
        parsed.Why = reader.Why();
        return parsed;
    }
    parsed.Kind = ParsedJournalLine::Kind::Command;
    return parsed;
}

// --- reading a file ---

// The next line of text from at: its bytes without the line end, and whether it had one.
struct TextLine {
    std::string_view Bytes;
    bool Ended = false;
};

std::optional<TextLine> NextTextLine(std::string_view text, size_t& at) {
    if (at >= text.size())
        return std::nullopt;
    const size_t end = text.find('\n', at);
    TextLine line;
    if (end == std::string_view::npos) {
        line.Bytes = text.substr(at);
        at = text.size();
        return line;
    }
    line.Bytes = text.substr(at, end - at);
    line.Ended = true;
    at = end + 1;
    if (!line.Bytes.empty() && line.Bytes.back() == '\r')
        line.Bytes.remove_suffix(1);
    return line;
}

// A version as written: decimal digits without a leading zero, at most 9 of them.
std::optional<int> VersionOf(std::string_view text) {
    if (text.empty() || text.size() > 9 || (text.size() > 1 && text[0] == '0') ||
        !std::all_of(text.begin(), text.end(), IsDigit))
        return std::nullopt;
    return DigitsAt(text, 0, text.size());
}

// Reads the two header lines into file (Version, Job, or Error); at moves past them.
void ReadHeader(std::string_view text, size_t& at, JournalFile& file) {
    const auto first = NextTextLine(text, at);
    if (!first || !first->Bytes.starts_with(kMagic)) {
        file.Error = "not a journal: the first line is not \"kesto-journal 1\"";
        return;
    }
    const auto version = VersionOf(first->Bytes.substr(kMagic.size()));
    if (!version) {
        file.Error = "not a journal: the first line names no version";
        return;
    }
    file.Version = *version;
    if (*version != kJournalVersion) {
        file.Error = "journal version " + std::to_string(*version) + ", this program reads " +
                     std::to_string(kJournalVersion);
        return;
    }
    const auto second = first->Ended ? NextTextLine(text, at) : std::nullopt;
    if (!second || !second->Ended) {
        file.Error = "the journal's header is cut short";
        return;
    }
    if (!second->Bytes.starts_with(kJobWord) || !IsJobHex(second->Bytes.substr(kJobWord.size()))) {
        file.Error = "the second line is not \"job\" and 64 lowercase hexadecimal digits";
        return;
    }
    file.Job = std::string(second->Bytes.substr(kJobWord.size()));
}

std::optional<JournalVerb> EndOf(const JournalFile& file) {
    for (auto it = file.Lines.rbegin(); it != file.Lines.rend(); ++it) {
        const ParsedJournalLine& line = it->second;
        if (line.Kind != ParsedJournalLine::Kind::Command)
            continue;
        const JournalVerb verb = line.Command.Verb;
        if (verb == JournalVerb::Ok || verb == JournalVerb::Cancel)
            return verb;
        return std::nullopt;
    }
    return std::nullopt;
}

// The bytes of a regular file of at most kJournalFileMax bytes; an Error in file otherwise.
std::optional<std::string> ReadBounded(const std::string& path, JournalFile& file) {
    std::error_code ec;
    const fs::file_status status = fs::status(path, ec);
    if (ec || !fs::exists(status)) {
        file.Error = "no journal at " + path;
        return std::nullopt;
    }
    if (!fs::is_regular_file(status)) {
        file.Error = "the journal " + path + " is not a file";
        return std::nullopt;
    }
    std::FILE* in = std::fopen(path.c_str(), "rb");
    if (in == nullptr) {
        file.Error = "cannot open the journal " + path;
        return std::nullopt;
    }
    std::string bytes;
    std::array<char, 65536> chunk;
    size_t n = 0;
    while (bytes.size() <= kJournalFileMax &&
           (n = std::fread(chunk.data(), 1, chunk.size(), in)) > 0)
        bytes.append(chunk.data(), n);
    const bool failed = std::ferror(in) != 0;
    std::fclose(in);
    if (failed) {
        file.Error = "cannot read the journal " + path;
        return std::nullopt;
    }
    return bytes;
}

}  // namespace

bool IsCorrection(JournalVerb verb) {
    switch (verb) {
        case JournalVerb::Down:
        case JournalVerb::Up:
        case JournalVerb::Left:
        case JournalVerb::Right:
        case JournalVerb::Sheets:
        case JournalVerb::Drop:
        case JournalVerb::BandDrop:
        case JournalVerb::Retry:
        case JournalVerb::Auto:
        case JournalVerb::Undo:
        case JournalVerb::Redo:
            return true;
        default:
            return false;
    }
}

WorldWindow JournalRounded(const WorldWindow& window) {
    // A whole number of thousandths divided by 1000 is the double nearest that decimal, which
    // is what reading the decimal back gives.
    const auto round = [](double mm) { return std::round(mm * kThousandths) / kThousandths; };
    return WorldWindow{round(window.XMin), round(window.XMax), round(window.YMin),
                       round(window.YMax)};
}

std::string JournalWord(JournalVerb verb) {
    for (const VerbWord& entry : kVerbWords) {
        if (entry.Verb == verb)
            return std::string(entry.Word);
    }
    return "";
}

std::string FormatJournalCommand(const JournalCommand& command) {
    std::string text = JournalWord(command.Verb);
    AddArguments(text, command);
    return text;
}

std::string JournalTimeText(std::chrono::system_clock::time_point when) {
    using namespace std::chrono;
    const auto seconds = floor<std::chrono::seconds>(when);
    const auto millis = duration_cast<milliseconds>(when - seconds).count();
    const std::time_t whole = system_clock::to_time_t(seconds);
    std::tm local{};
#ifdef _WIN32
    const bool known = localtime_s(&local, &whole) == 0;
#else
    const bool known = localtime_r(&whole, &local) != nullptr;
#endif
    if (!known || local.tm_year + 1900 < 0 || local.tm_year + 1900 > 9999)
        return "1970-01-01T00:00:00.000";
    char text[96];
    std::snprintf(text, sizeof text, "%04d-%02d-%02dT%02d:%02d:%02d.%03d", local.tm_year + 1900,
                  local.tm_mon + 1, local.tm_mday, local.tm_hour, local.tm_min,
                  std::min(local.tm_sec, 59), static_cast<int>(millis));
    return text;
}

std::string JournalLine(const std::string& time, const JournalCommand& command) {
    return time + " " + FormatJournalCommand(command) + "\n";
}

std::string JournalHeader(const std::string& jobHex) {
    return std::string(kMagic) + std::to_string(kJournalVersion) + "\n" + std::string(kJobWord) +
           jobHex + "\n";
}

bool IsJobHex(std::string_view text) {
    return text.size() == 64 && std::all_of(text.begin(), text.end(), [](char c) {
               return IsDigit(c) || (c >= 'a' && c <= 'f');
           });
}

ParsedJournalLine ParseJournalLine(std::string_view line) {
    return ParseLineBody(WithoutLineEnd(line));
}

JournalFile ReadJournal(std::string_view text) {
    JournalFile file;
    if (text.size() > kJournalFileMax) {
        file.Error = "the journal is larger than " + std::to_string(kJournalFileMax) + " bytes";
        return file;
    }
    size_t at = 0;
    ReadHeader(text, at, file);
    if (!file.Error.empty())
        return file;
    int number = 2;
    while (const auto line = NextTextLine(text, at)) {
        if (file.Lines.size() == kJournalLinesMax) {
            file.Lines.clear();
            file.Error = "the journal has more than " + std::to_string(kJournalLinesMax) + " lines";
            return file;
        }
        ++number;
        ParsedJournalLine parsed = ParseLineBody(line->Bytes);
        if (!line->Ended) {
            // What a write cut short leaves; never taken as the command it may look like.
            parsed.Kind = ParsedJournalLine::Kind::CutShort;
            parsed.Command = JournalCommand{};
            parsed.Why = "the last line has no line end: its write was cut short";
        }
        file.Lines.emplace_back(number, std::move(parsed));
    }
    file.End = EndOf(file);
    return file;
}

JournalFile ReadJournalFile(const std::string& path) {
    JournalFile file;
    const auto bytes = ReadBounded(path, file);
    if (!bytes)
        return file;
    return ReadJournal(*bytes);
}

}  // namespace kesto
