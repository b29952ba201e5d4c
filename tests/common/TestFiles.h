// Temporary folders and files for tests that build their input from code.
#pragma once

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

namespace kesto::test {

// The source and build folders of the project: the environment's KESTO_SOURCE_DIR and
// KESTO_BINARY_DIR when set, else those the tests were built in.
inline std::filesystem::path SourceDir() {
    const char* source = std::getenv("KESTO_SOURCE_DIR");
    return std::filesystem::path(source != nullptr ? source : KESTO_SOURCE_DIR_DEFAULT);
}

inline std::filesystem::path BinaryDir() {
    const char* binary = std::getenv("KESTO_BINARY_DIR");
    return std::filesystem::path(binary != nullptr ? binary : KESTO_BINARY_DIR_DEFAULT);
}

// A fresh folder named after the running test, removed at the end.
class TempFolder {
  public:
    TempFolder() {
        const auto* info = ::testing::UnitTest::GetInstance()->current_test_info();
        std::string name = "kesto-";
        if (info != nullptr)
            name += std::string(info->test_suite_name()) + "-" + info->name();
        name += "-" + std::to_string(::getpid());
        for (char& c : name) {
            if (c == '/')
                c = '_';
        }
        path_ = std::filesystem::temp_directory_path() / name;
        std::filesystem::remove_all(path_);
        std::filesystem::create_directories(path_);
    }
    ~TempFolder() {
        std::error_code ec;
        std::filesystem::remove_all(path_, ec);
    }
    const std::filesystem::path& Path() const { return path_; }
    std::string operator/(const std::string& name) const { return (path_ / name).string(); }

  private:
    std::filesystem::path path_;
};

// Writes text as it stands (no line-end translation), creating folders.
inline void WriteFile(const std::string& path, const std::string& text) {
    std::filesystem::create_directories(std::filesystem::path(path).parent_path());
    std::ofstream out(path, std::ios::binary);
    out << text;
}

inline std::string ReadFile(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    std::stringstream s;
    s << in.rdbuf();
    return s.str();
}

inline std::vector<std::string> ReadLines(const std::string& path) {
    std::vector<std::string> lines;
    std::ifstream in(path, std::ios::binary);
    for (std::string line; std::getline(in, line);)
        lines.push_back(line);
    return lines;
}

}  // namespace kesto::test
