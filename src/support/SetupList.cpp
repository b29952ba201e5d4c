#include "support/SetupList.h"

#include <cctype>
#include <optional>

#include "support/Paths.h"
#include "support/Services.h"
#include "support/TextFile.h"

namespace kesto {

namespace {

constexpr size_t kSetupLineMax = 127;
constexpr size_t kKeyWordMax = 63;
constexpr size_t kSeparatorWordMax = 15;
constexpr size_t kValueWordMax = 127;
// One "%Ns" conversion: skips white space, then takes up to max non-blank characters.
std::string ScanWord(const std::string& text, size_t& pos, size_t max) {
    while (pos < text.size() && std::isspace(static_cast<unsigned char>(text[pos])))
        ++pos;
    const size_t start = pos;
    while (pos < text.size() && pos - start < max &&
           !std::isspace(static_cast<unsigned char>(text[pos])))
        ++pos;
    return text.substr(start, pos - start);
}

struct SetupEntry {
    std::string Key;
    std::string Value;
};

// An entry line: comment removed, trailing blanks trimmed, then "key : value" when it has ':'.
std::optional<SetupEntry> ParseEntry(std::string line) {
    line.erase(std::min(line.find('#'), line.size()));
    TrimLine(line, 2);
    if (line.find(':') == std::string::npos)
        return std::nullopt;
    size_t pos = 0;
    SetupEntry entry;
    entry.Key = ScanWord(line, pos, kKeyWordMax);
    ScanWord(line, pos, kSeparatorWordMax);
    entry.Value = ScanWord(line, pos, kValueWordMax);
    return entry;
}

bool StartsWith(const std::string& line, const char* prefix) {
    return line.rfind(prefix, 0) == 0;
}

// The value of the first entry with key between "#File" and "#End"; "" when there is none.
std::string FindSetupValue(std::FILE* file, const std::string& key) {
    std::string line;
    bool inList = false;
    while (ReadLine(line, file) >= 0) {
        line = line.substr(0, std::min(line.find('\0'), kSetupLineMax));
        if (!inList) {
            inList = StartsWith(line, "#File");
            continue;
        }
        if (StartsWith(line, "#End"))
            break;
        const auto entry = ParseEntry(line);
        if (entry && entry->Key == key)
            return entry->Value;
    }
    return "";
}

// What follows the key's value in a data file's name; each part only when given.
enum class NameSuffix { None, Part1, Part1Part2, Part1DotPart2, BothPartsDotted, MacPara, Debug };

struct DataKind {
    int Kind;
    const char* Key;
    NameSuffix Suffix;
};

// The kinds of every program sharing the setup list; this program uses 94, 96 and 97.
constexpr DataKind kDataKinds[] = {
    {0, "MCN", NameSuffix::None},
    {1, "OTF", NameSuffix::MacPara},
    {2, "IFI", NameSuffix::None},
    {3, "RAW", NameSuffix::None},
    {4, "TUR", NameSuffix::Part1},
    {5, "PMT", NameSuffix::None},
    {6, "IDX", NameSuffix::None},
    {7, "PRD", NameSuffix::None},
    {8, "IEA", NameSuffix::BothPartsDotted},
    {9, "TFM", NameSuffix::Part1},
    {10, "STR", NameSuffix::Part1},
    {11, "IFO", NameSuffix::None},
    {50, "INF", NameSuffix::None},
    {51, "NAL", NameSuffix::None},
    {52, "INF", NameSuffix::Part1DotPart2},
    {54, "NCD", NameSuffix::Part1DotPart2},
    {55, "NJK", NameSuffix::Part1Part2},
    {56, "BXM", NameSuffix::Part1Part2},
    {57, "IEM", NameSuffix::Part1Part2},
    {58, "IEB", NameSuffix::Part1Part2},
    {59, "IE9", NameSuffix::Part1Part2},
    {77, "IE7", NameSuffix::Part1Part2},
    {78, "WN2", NameSuffix::Part1Part2},
    {79, "WN1", NameSuffix::Part1Part2},
    {80, "IE0", NameSuffix::Part1Part2},
    {81, "IE1", NameSuffix::None},
    {82, "IE2", NameSuffix::None},
    {83, "IE5", NameSuffix::None},
    {84, "IE4", NameSuffix::None},
    {85, "IE3", NameSuffix::Part1Part2},
    {86, "IE6", NameSuffix::None},
    {87, "IEC", NameSuffix::None},
    {88, "IEE", NameSuffix::None},
    {89, "IEF", NameSuffix::Part1},
    {90, "IFJ", NameSuffix::None},
    {91, "IEG", NameSuffix::None},
    {92, "IEH", NameSuffix::None},
    {93, "IEI", NameSuffix::None},
    {94, "IEJ", NameSuffix::None},
    {95, "IFM", NameSuffix::None},
    {96, "IEK", NameSuffix::None},
    {97, "IEL", NameSuffix::None},
    {98, "OTF", NameSuffix::Part1Part2},
    {99, "TMP", NameSuffix::Part1Part2},
    {301, "WN0", NameSuffix::None},
    {999, "OTF", NameSuffix::Debug},
};

const DataKind* FindDataKind(int kind) {
    for (const auto& entry : kDataKinds) {
        if (entry.Kind == kind)
            return &entry;
    }
    return nullptr;
}

std::string Given(const char* part) {
    return part != nullptr ? part : "";
}

// The key's value followed by the kind's suffix; "" when the value is missing.
std::string DataFileName(const Services& services, const DataKind& kind, const char* part1,
                         const char* part2) {
    const std::string name = GetSetupValue(services, kind.Key);
    if (name.empty())
        return "";
    switch (kind.Suffix) {
        case NameSuffix::None:
            return name;
        case NameSuffix::Part1:
            return name + Given(part1);
        case NameSuffix::Part1Part2:
            return name + Given(part1) + Given(part2);
        case NameSuffix::Part1DotPart2:
            return name + Given(part1) + (part2 != nullptr ? "." + Given(part2) : "");
        case NameSuffix::BothPartsDotted:
            if (part1 == nullptr || part2 == nullptr)
                return "";
            return name + part1 + "." + part2;
        case NameSuffix::MacPara:
            return name + "mac_para." + Given(part1);
        case NameSuffix::Debug:
            return name + "debug.dat";
    }
    return "";
}

}  // namespace

int GetSystemFolder(const Services& services, std::string& folder) {
    const SystemFolderResult result = services.Host.SystemFolder();
    folder.clear();
    switch (result.Status) {
        case SystemFolderStatus::Ok:
            folder = result.Folder;
            return 1;
        case SystemFolderStatus::NoKey:
            services.Op.ShowMessageBox("OrvoFolderGet RegOpen Error");
            return 0;
        case SystemFolderStatus::NoValue:
            services.Op.ShowMessageBox("OrvoFolderGet Address Value Get Error");
            return 0;
    }
    return 0;
}

std::string SetupListPath(const Services& services) {
    std::string system;
    if (GetSystemFolder(services, system) == 1) {
        const std::string path = JoinPath(JoinPath(system, "bin"), "Ks_Setup.ini");
        if (FileExists(path, services.Op) == 1)
            return path;
    }
    return "Ks_Setup.ini";
}

std::string GetSetupValue(const Services& services, const std::string& key) {
    const std::string path = SetupListPath(services);
    TextFile file;
    if (OpenFile(path, "r", file) != 1) {
        services.Op.ShowMessageBox(path + " Open Error");
        return "";
    }
    return NormalizeSeparators(FindSetupValue(file.get(), key));
}

int GetSetupFolder(const Services& services, const std::string& key, std::string& folder) {
    std::string system;
    const bool haveSystem = GetSystemFolder(services, system) == 1;
    const std::string value = haveSystem ? GetSetupValue(services, key) : "";
    if (value.empty()) {
        folder.clear();
        return 0;
    }
    folder = JoinPath(system, value);
    return 1;
}

std::string GetDataFilePath(const Services& services, int kind, const char* part1,
                            const char* part2) {
    const DataKind* entry = FindDataKind(kind);
    if (entry == nullptr)
        return "";
    std::string system;
    GetSystemFolder(services, system);
    const std::string name = DataFileName(services, *entry, part1, part2);
    if (name.empty())
        return "";
    return JoinPath(system, name);
}

std::string GetDataFilePath(const Services& services, DataFile file) {
    return GetDataFilePath(services, static_cast<int>(file));
}

}  // namespace kesto
