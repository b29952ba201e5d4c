#include "support/Platform.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <vector>

#include "support/AtomicFile.h"
#include "support/Paths.h"

#ifdef _WIN32
#include <windows.h>
#endif

namespace kesto {

namespace {

// The system folder is at most 255 characters, as the registry value it stands for.
constexpr size_t kSystemFolderMax = 255;

std::string EnvValue(const char* name) {
    const char* value = std::getenv(name);
    return value != nullptr ? value : "";
}

}  // namespace

#ifdef _WIN32

namespace {

constexpr const char* kMachineKey = "SOFTWARE\\ORVONetwork\\Common\\SystemInformation";
constexpr const char* kUserKey = "Software\\ORVONetwork\\Vardo\\Kesto";

// Opens path for reading: in this program's own view of the registry, else in the 32-bit view,
// where a 32-bit installer of the host programs leaves the machine-wide values.
bool OpenForReading(HKEY root, const char* path, HKEY* key) {
    return RegOpenKeyExA(root, path, 0, KEY_READ, key) == ERROR_SUCCESS ||
           RegOpenKeyExA(root, path, 0, KEY_READ | KEY_WOW64_32KEY, key) == ERROR_SUCCESS;
}

// A string value of an open key, whatever its length; nullopt when it is missing or no string.
std::optional<std::string> QueryString(HKEY key, const char* name) {
    DWORD type = 0;
    DWORD size = 0;
    if (RegQueryValueExA(key, name, nullptr, &type, nullptr, &size) != ERROR_SUCCESS ||
        type != REG_SZ)
        return std::nullopt;
    // Room for a terminator that a value stored without one does not bring.
    std::vector<char> value(size + 1, '\0');
    if (RegQueryValueExA(key, name, nullptr, &type, reinterpret_cast<BYTE*>(value.data()), &size) !=
        ERROR_SUCCESS)
        return std::nullopt;
    return std::string(value.data());
}

std::optional<std::string> ReadRegistryString(HKEY root, const char* path, const char* name,
                                              bool* keyOpened) {
    HKEY key;
    *keyOpened = OpenForReading(root, path, &key);
    if (!*keyOpened)
        return std::nullopt;
    auto value = QueryString(key, name);
    RegCloseKey(key);
    return value;
}

}  // namespace

SystemFolderResult DefaultHostStore::SystemFolder() {
    bool opened = false;
    auto value = ReadRegistryString(HKEY_LOCAL_MACHINE, kMachineKey, "ORVOSystemRoot", &opened);
    if (!opened)
        return {SystemFolderStatus::NoKey, {}};
    if (!value)
        return {SystemFolderStatus::NoValue, {}};
    return {SystemFolderStatus::Ok, value->substr(0, kSystemFolderMax)};
}

std::optional<std::string> DefaultHostStore::ReadUserValue(const std::string& name) {
    bool opened = false;
    return ReadRegistryString(HKEY_CURRENT_USER, kUserKey, name.c_str(), &opened);
}

bool DefaultHostStore::WriteUserValue(const std::string& name, const std::string& text) {
    HKEY key;
    if (RegCreateKeyExA(HKEY_CURRENT_USER, kUserKey, 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &key,
                        nullptr) != ERROR_SUCCESS)
        return false;
    // Stored without its terminating zero, as the other programs of the machine store theirs.
    const LONG rc =
        RegSetValueExA(key, name.c_str(), 0, REG_SZ, reinterpret_cast<const BYTE*>(text.c_str()),
                       static_cast<DWORD>(text.size()));
    RegCloseKey(key);
    return rc == ERROR_SUCCESS;
}

std::string DefaultHostStore::UserValuesPath() {
    return std::string("HKEY_CURRENT_USER\\") + kUserKey;
}

std::string DefaultHostStore::MachineIniPath() {
    return std::string("HKEY_LOCAL_MACHINE\\") + kMachineKey;
}

std::string DefaultHostStore::StateFolder() {
    const std::string local = EnvValue("LOCALAPPDATA");
    return local.empty() ? "" : JoinPath(local, "Kesto");
}

#else

namespace {

// The lines of a small settings file, a carriage return before each line feed dropped.
std::optional<std::vector<std::string> > ReadLines(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    if (!in)
        return std::nullopt;
    std::vector<std::string> lines;
    for (std::string line; std::getline(in, line);) {
        if (!line.empty() && line.back() == '\r')
            line.pop_back();
        lines.push_back(line);
    }
    return lines;
}

std::string TrimBlanks(const std::string& text) {
    const auto first = text.find_first_not_of(" \t");
    if (first == std::string::npos)
        return "";
    return text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

// The value of "name=value" in lines; section headers and ';' comments never match.
std::optional<std::string> FindValue(const std::vector<std::string>& lines,
                                     const std::string& name) {
    for (const auto& line : lines) {
        const auto equals = line.find('=');
        if (equals == std::string::npos)
            continue;
        if (TrimBlanks(line.substr(0, equals)) == name)
            return TrimBlanks(line.substr(equals + 1));
    }
    return std::nullopt;
}

}  // namespace

SystemFolderResult DefaultHostStore::SystemFolder() {
    const std::string fromEnv = EnvValue("ORVOSystemRoot");
    if (!fromEnv.empty())
        return {SystemFolderStatus::Ok, fromEnv.substr(0, kSystemFolderMax)};
    const auto lines = ReadLines(machineIni_);
    if (!lines)
        return {SystemFolderStatus::NoKey, {}};
    const auto value = FindValue(*lines, "ORVOSystemRoot");
    if (!value || value->empty())
        return {SystemFolderStatus::NoValue, {}};
    return {SystemFolderStatus::Ok, value->substr(0, kSystemFolderMax)};
}

std::optional<std::string> DefaultHostStore::ReadUserValue(const std::string& name) {
    const auto lines = ReadLines(UserValuesPath());
    if (!lines)
        return std::nullopt;
    return FindValue(*lines, name);
}

bool DefaultHostStore::WriteUserValue(const std::string& name, const std::string& text) {
    const std::string path = UserValuesPath();
    std::vector<std::string> lines = ReadLines(path).value_or(std::vector<std::string>{});
    const std::string wanted = name + "=" + text;
    bool replaced = false;
    bool changed = false;
    for (auto& line : lines) {
        const auto equals = line.find('=');
        if (!replaced && equals != std::string::npos &&
            TrimBlanks(line.substr(0, equals)) == name) {
            changed = line != wanted;
            line = wanted;
            replaced = true;
        }
    }
    if (!replaced) {
        lines.push_back(wanted);
        changed = true;
    }
    // A value the file already holds as it would be written is not written again: a run that
    // changes nothing leaves the file, and the disk, alone.
    if (!changed)
        return true;
    std::error_code ec;
    std::filesystem::create_directories(std::filesystem::path(path).parent_path(), ec);
    AtomicFile out(path);
    if (!out.Open())
        return false;
    for (const auto& line : lines)
        std::fprintf(out.get(), "%s\n", line.c_str());
    return out.Commit();
}

std::string DefaultHostStore::UserValuesPath() {
    std::string base = EnvValue("XDG_CONFIG_HOME");
    if (base.empty())
        base = EnvValue("HOME") + "/.config";
    return base + "/ORVONetwork/Vardo/Kesto.ini";
}

std::string DefaultHostStore::MachineIniPath() {
    return "/etc/ORVONetwork/SystemInformation.ini";
}

std::string DefaultHostStore::StateFolder() {
    // The base directory rules ask to ignore a relative XDG_STATE_HOME, as if it were unset.
    const std::string state = EnvValue("XDG_STATE_HOME");
    if (!state.empty() && state.front() == '/')
        return JoinPath(state, "kesto");
    const std::string home = EnvValue("HOME");
    return home.empty() ? "" : JoinPath(home, ".local/state/kesto");
}

#endif

std::string LocalDateTimeText(std::time_t when) {
    std::tm local{};
#ifdef _WIN32
    if (localtime_s(&local, &when) != 0)
        return "";
#else
    if (localtime_r(&when, &local) == nullptr)
        return "";
#endif
    char text[32];
    return std::strftime(text, sizeof text, "%Y-%m-%d %H:%M", &local) > 0 ? text : "";
}

}  // namespace kesto
