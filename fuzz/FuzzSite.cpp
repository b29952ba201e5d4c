#include "FuzzSite.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <fstream>
#include <string_view>

namespace kesto::fuzz {

FuzzSite::FuzzSite(std::filesystem::path folder)
    : folder_(std::move(folder)), host_(folder_.string()) {
    std::error_code ec;
    std::filesystem::remove_all(folder_, ec);
    std::filesystem::create_directories(folder_);
}

FuzzSite::~FuzzSite() {
    std::error_code ec;
    std::filesystem::remove_all(folder_, ec);
}

std::filesystem::path FuzzSite::ProcessFolder() {
    return std::filesystem::temp_directory_path() / ("kesto-fuzz-" + std::to_string(::getpid()));
}

std::string FuzzSite::Path(const std::string& relative) const {
    return (folder_ / relative).string();
}

void FuzzSite::Write(const std::string& relative, const uint8_t* data, size_t size) const {
    const std::filesystem::path path = folder_ / relative;
    std::filesystem::create_directories(path.parent_path());
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    out.write(reinterpret_cast<const char*>(data), static_cast<std::streamsize>(size));
}

void FuzzSite::Write(const std::string& relative, const std::string& text) const {
    Write(relative, reinterpret_cast<const uint8_t*>(text.data()), text.size());
}

bool NamesMachineFile(const uint8_t* data, size_t size) {
    std::string text(reinterpret_cast<const char*>(data), size);
    std::replace(text.begin(), text.end(), '\\', '/');
    constexpr std::array<std::string_view, 3> kFolders{"/dev", "/proc", "/sys"};
    return std::any_of(kFolders.begin(), kFolders.end(), [&](std::string_view folder) {
        return text.find(folder) != std::string::npos;
    });
}

}  // namespace kesto::fuzz
