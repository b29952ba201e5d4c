#include "support/AtomicFile.h"

#include <cstdlib>
#include <vector>

#ifdef _WIN32
#include <io.h>
#include <windows.h>
#else
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace kesto {

AtomicFile::AtomicFile(std::string target) : target_(std::move(target)) {}

AtomicFile::~AtomicFile() {
    Discard();
}

bool AtomicFile::Open() {
    Discard();
#ifdef _WIN32
    temp_ = target_ + ".kesto-tmp";
    file_ = std::fopen(temp_.c_str(), "w");
#else
    std::vector<char> name(target_.begin(), target_.end());
    const std::string suffix = ".kesto-XXXXXX";
    name.insert(name.end(), suffix.begin(), suffix.end());
    name.push_back('\0');
    const int fd = ::mkstemp(name.data());
    if (fd < 0) {
        temp_.clear();
        return false;
    }
    // mkstemp creates 0600; the result files are read by other programs of the machine.
    ::fchmod(fd, 0644);
    temp_ = name.data();
    file_ = ::fdopen(fd, "w");
    if (file_ == nullptr) {
        ::close(fd);
    }
#endif
    if (file_ == nullptr) {
        if (!temp_.empty())
            std::remove(temp_.c_str());
        temp_.clear();
        return false;
    }
    return true;
}

bool AtomicFile::Commit() {
    if (file_ == nullptr)
        return false;
    bool ok = std::fflush(file_) == 0 && !std::ferror(file_);
#ifndef _WIN32
    ok = ok && ::fsync(::fileno(file_)) == 0;
#endif
    ok = (std::fclose(file_) == 0) && ok;
    file_ = nullptr;
#ifdef _WIN32
    ok = ok && MoveFileExA(temp_.c_str(), target_.c_str(), MOVEFILE_REPLACE_EXISTING) != 0;
#else
    ok = ok && std::rename(temp_.c_str(), target_.c_str()) == 0;
#endif
    if (!ok) {
        std::remove(temp_.c_str());
    }
    temp_.clear();
    return ok;
}

void AtomicFile::Discard() {
    if (file_ != nullptr) {
        std::fclose(file_);
        file_ = nullptr;
    }
    if (!temp_.empty()) {
        std::remove(temp_.c_str());
        temp_.clear();
    }
}

}  // namespace kesto
