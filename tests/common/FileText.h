// Whole files as text, without the test framework, so that the fuzz harnesses can share the
// installation writer with the tests.
#pragma once

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

namespace kesto::test {

// Writes text as it stands (no line-end translation), creating folders.
inline void WriteFile(const std::filesystem::path& path, const std::string& text) {
    std::filesystem::create_directories(path.parent_path());
    std::ofstream out(path, std::ios::binary);
    out << text;
}

inline std::string ReadFile(const std::filesystem::path& path) {
    std::ifstream in(path, std::ios::binary);
    std::stringstream s;
    s << in.rdbuf();
    return s.str();
}

}  // namespace kesto::test
