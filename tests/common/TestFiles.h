// Temporary folders and files for tests that build their input from code.
#pragma once

#include <gtest/gtest.h>
#ifdef _WIN32
#include <process.h>
#else
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>
#endif

#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "common/FileText.h"

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

inline int ProcessId() {
#ifdef _WIN32
    return ::_getpid();
#else
    return static_cast<int>(::getpid());
#endif
}

// A fresh folder named after the running test, removed at the end.
class TempFolder {
  public:
    TempFolder() {
        const auto* info = ::testing::UnitTest::GetInstance()->current_test_info();
        std::string name = "kesto-";
        if (info != nullptr)
            name += std::string(info->test_suite_name()) + "-" + info->name();
        name += "-" + std::to_string(ProcessId());
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

inline std::vector<std::string> ReadLines(const std::filesystem::path& path) {
    std::vector<std::string> lines;
    std::ifstream in(path, std::ios::binary);
    for (std::string line; std::getline(in, line);) {
#ifdef _WIN32
        // Lines written in Windows text mode end in CR LF.
        if (!line.empty() && line.back() == '\r')
            line.pop_back();
#endif
        lines.push_back(line);
    }
    return lines;
}

// text as a file written in the platform's text mode holds it: each "\n" is "\r\n" on Windows.
inline std::string TextModeBytes(const std::string& text) {
#ifdef _WIN32
    std::string bytes;
    for (const char c : text)
        bytes += c == '\n' ? std::string("\r\n") : std::string(1, c);
    return bytes;
#else
    return text;
#endif
}

// Leaves a socket at path (on Windows a folder): it exists for the file system, but no one can
// open it as a file, not even the super-user.
inline void MakeUnopenable(const std::string& path) {
    std::filesystem::create_directories(std::filesystem::path(path).parent_path());
#ifdef _WIN32
    std::filesystem::remove(path);
    ASSERT_TRUE(std::filesystem::create_directory(path)) << path;
#else
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    ASSERT_LT(path.size(), sizeof address.sun_path) << path;
    std::memcpy(address.sun_path, path.c_str(), path.size() + 1);
    const int fd = ::socket(AF_UNIX, SOCK_STREAM, 0);
    ASSERT_GE(fd, 0);
    ASSERT_EQ(::bind(fd, reinterpret_cast<sockaddr*>(&address), sizeof address), 0) << path;
    ::close(fd);
#endif
}

}  // namespace kesto::test
