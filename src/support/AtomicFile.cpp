#include "support/AtomicFile.h"

#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <vector>

#ifdef _WIN32
#include <fcntl.h>
#include <io.h>
#include <share.h>
#include <sys/stat.h>
#include <windows.h>

#include <cerrno>
#include <random>
#else
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#endif

namespace kesto {

namespace {

const std::string kTempMarker = ".kesto-";
const std::string kTempTail = "XXXXXX";  // mkstemp's template: six letters or digits

// Who watches the writes of this process: nobody in the programs, a test when it sets one.
WriteWatcher* gWatcher = nullptr;

void Reached(WriteStep step) {
    if (gWatcher != nullptr)
        gWatcher->Reached(step);
}

#ifndef _WIN32
// The rename is an entry of the folder: without syncing the folder, a power cut after the
// exit code can bring the old file back. File systems that cannot sync a folder say EINVAL.
bool SyncFolderOf(const std::string& target) {
    const std::filesystem::path folder = std::filesystem::path(target).parent_path();
    const int fd = ::open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY);
    if (fd < 0)
        return false;
    const bool synced = ::fsync(fd) == 0 || errno == EINVAL;
    ::close(fd);
    return synced;
}
#endif

bool IsTempTail(const std::string& tail) {
    if (tail.size() != kTempTail.size())
        return false;
    // ASCII only, whatever the locale: mkstemp draws from A-Z, a-z and 0-9.
    for (const char c : tail) {
        const bool letterOrDigit =
            (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9');
        if (!letterOrDigit)
            return false;
    }
    return true;
}

#ifdef _WIN32
// mkstemp as Windows lacks it: a new file of six random letters or digits after prefix,
// opened in text mode (lines end in CR LF), never one that already exists. -1 on failure.
int CreateTemporary(const std::string& prefix, std::string& name) {
    static constexpr char kLetters[] =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789";
    std::random_device seed;
    std::mt19937 random(seed());
    std::uniform_int_distribution<size_t> pick(0, sizeof kLetters - 2);
    for (int attempt = 0; attempt < 100; ++attempt) {
        name = prefix;
        for (size_t i = 0; i < kTempTail.size(); ++i)
            name += kLetters[pick(random)];
        int fd = -1;
        const errno_t rc = ::_sopen_s(&fd, name.c_str(), _O_CREAT | _O_EXCL | _O_WRONLY | _O_TEXT,
                                      _SH_DENYWR, _S_IREAD | _S_IWRITE);
        if (rc == 0)
            return fd;
        if (rc != EEXIST)
            break;
    }
    name.clear();
    return -1;
}
#endif

}  // namespace

AtomicFile::AtomicFile(std::string target) : target_(std::move(target)) {}

AtomicFile::~AtomicFile() {
    Discard();
}

bool AtomicFile::Open() {
    Discard();
#ifdef _WIN32
    const int fd = CreateTemporary(target_ + kTempMarker, temp_);
    if (fd < 0)
        return false;
    if (!OpenStream(fd))
        ::_close(fd);
#else
    std::vector<char> name(target_.begin(), target_.end());
    const std::string suffix = kTempMarker + kTempTail;
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
    if (!OpenStream(fd))
        ::close(fd);
#endif
    if (file_ == nullptr) {
        if (!temp_.empty())
            std::remove(temp_.c_str());
        temp_.clear();
        return false;
    }
    Reached(WriteStep::TemporaryCreated);
    return true;
}

bool AtomicFile::OpenStream(int fd) {
    file_ = gWatcher != nullptr ? gWatcher->OpenStream(fd) : nullptr;
#ifdef _WIN32
    if (file_ == nullptr)
        file_ = ::_fdopen(fd, "wt");
#else
    if (file_ == nullptr)
        file_ = ::fdopen(fd, "w");
#endif
    fd_ = file_ != nullptr ? fd : -1;
    return file_ != nullptr;
}

bool AtomicFile::Commit() {
    if (file_ == nullptr)
        return false;
    bool ok = std::fflush(file_) == 0 && !std::ferror(file_);
#ifdef _WIN32
    ok = ok && ::_commit(fd_) == 0;
#else
    ok = ok && ::fsync(fd_) == 0;
#endif
    ok = (std::fclose(file_) == 0) && ok;
    file_ = nullptr;
    fd_ = -1;
    if (ok)
        Reached(WriteStep::FileSynced);
#ifdef _WIN32
    // Refused (the old file kept) while another program holds the target without sharing it.
    // Write-through returns once the new name is on the disk too.
    ok = ok && MoveFileExA(temp_.c_str(), target_.c_str(),
                           MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH) != 0;
#else
    ok = ok && std::rename(temp_.c_str(), target_.c_str()) == 0;
#endif
    if (!ok) {
        std::remove(temp_.c_str());
        temp_.clear();
        return false;
    }
    temp_.clear();
    Reached(WriteStep::Renamed);
#ifndef _WIN32
    if (!SyncFolderOf(target_))
        return false;
    Reached(WriteStep::FolderSynced);
#endif
    return true;
}

void AtomicFile::Discard() {
    if (file_ != nullptr) {
        std::fclose(file_);
        file_ = nullptr;
        fd_ = -1;
    }
    if (!temp_.empty()) {
        std::remove(temp_.c_str());
        temp_.clear();
    }
}

void AtomicFile::Watch(WriteWatcher* watcher) {
    gWatcher = watcher;
}

bool AtomicFile::IsTemporaryName(const std::string& targetName, const std::string& name) {
    const std::string prefix = targetName + kTempMarker;
    return !targetName.empty() && name.size() > prefix.size() &&
           name.compare(0, prefix.size(), prefix) == 0 && IsTempTail(name.substr(prefix.size()));
}

int AtomicFile::RemoveStaleTemporaries(const std::string& target) {
    namespace fs = std::filesystem;
    const fs::path path(target);
    const std::string targetName = path.filename().string();
    if (targetName.empty())
        return 0;
    const fs::path folder = path.has_parent_path() ? path.parent_path() : fs::path(".");
    std::vector<fs::path> stale;
    std::error_code ec;
    for (fs::directory_iterator it(folder, ec), end; !ec && it != end; it.increment(ec)) {
        // A symbolic link or a folder is never one of ours, whatever its name.
        std::error_code typeError;
        if (IsTemporaryName(targetName, it->path().filename().string()) &&
            it->symlink_status(typeError).type() == fs::file_type::regular)
            stale.push_back(it->path());
    }
    int removed = 0;
    for (const fs::path& file : stale)
        removed += fs::remove(file, ec) ? 1 : 0;
    return removed;
}

}  // namespace kesto
