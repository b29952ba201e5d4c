#include "support/Paths.h"

#include <algorithm>

namespace kesto {

namespace {

// Both separators count, so values written for either platform join cleanly.
bool IsSeparator(char c) {
    return c == '/' || c == '\\';
}

}  // namespace

std::string NormalizeSeparators(std::string path) {
    std::replace_if(path.begin(), path.end(), IsSeparator, kPathSeparator);
    return path;
}

std::string JoinPath(const std::string& folder, const std::string& name) {
    if (folder.empty())
        return name;
    size_t folderEnd = folder.size();
    while (folderEnd > 0 && IsSeparator(folder[folderEnd - 1]))
        --folderEnd;
    size_t nameStart = 0;
    while (nameStart < name.size() && IsSeparator(name[nameStart]))
        ++nameStart;
    return folder.substr(0, folderEnd) + kPathSeparator + name.substr(nameStart);
}

std::string WithTrailingSeparator(const std::string& folder) {
    if (folder.empty() || IsSeparator(folder.back()))
        return folder;
    return folder + kPathSeparator;
}

}  // namespace kesto
