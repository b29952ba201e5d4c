#include "history/Journal.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <system_error>

#include "support/Paths.h"

#ifdef _WIN32
#include <fcntl.h>
#include <io.h>
#include <share.h>
#include <sys/stat.h>
#include <windows.h>
#else
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#endif

namespace kesto {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view kDiscarded = ".discarded";
constexpr std::string_view kJournalExtension = ".journal";
// How many ".discarded.N" names are tried before DiscardJournal gives up.
constexpr int kDiscardedNamesMax = 10000;

// Set by the tests only (JournalWriter::Watch).
JournalWatcher* gAppendWatcher = nullptr;

#ifdef _WIN32
int OpenForAppending(const std::string& path) {
    int fd = -1;
    if (::_sopen_s(&fd, path.c_str(), _O_RDWR | _O_CREAT | _O_APPEND | _O_BINARY | _O_NOINHERIT,
                   _SH_DENYNO, _S_IREAD | _S_IWRITE) != 0)
        return -1;
    return fd;
}

int64_t SizeOf(int fd) {
    return ::_filelengthi64(fd);
}

// Reads count bytes at offset; fewer at the end of the file.
std::string ReadAt(int fd, int64_t offset, size_t count) {
    std::string bytes(count, '\0');
    if (::_lseeki64(fd, offset, SEEK_SET) < 0)
        return "";
    const int n = ::_read(fd, bytes.data(), static_cast<unsigned>(count));
    bytes.resize(n > 0 ? static_cast<size_t>(n) : 0);
    return bytes;
}

bool WriteAll(int fd, std::string_view bytes) {
    return ::_write(fd, bytes.data(), static_cast<unsigned>(bytes.size())) ==
           static_cast<int>(bytes.size());
}

bool SyncData(int fd) {
    return FlushFileBuffers(reinterpret_cast<HANDLE>(::_get_osfhandle(fd))) != 0;
}

bool Truncate(int fd, int64_t size) {
    return ::_chsize_s(fd, size) == 0;
}

// Windows makes a file's name durable with the file.
bool SyncFolderOf(const std::string&) {
    return true;
}

void CloseFile(int fd) {
    ::_close(fd);
}
#else
int OpenForAppending(const std::string& path) {
    // Per-user state: only its owner reads it.
    return ::open(path.c_str(), O_RDWR | O_CREAT | O_APPEND | O_CLOEXEC, 0600);
}

int64_t SizeOf(int fd) {
    struct stat status {};
    if (::fstat(fd, &status) != 0 || !S_ISREG(status.st_mode))
        return -1;
    return static_cast<int64_t>(status.st_size);
}

std::string ReadAt(int fd, int64_t offset, size_t count) {
    std::string bytes(count, '\0');
    const ssize_t n = ::pread(fd, bytes.data(), count, static_cast<off_t>(offset));
    bytes.resize(n > 0 ? static_cast<size_t>(n) : 0);
    return bytes;
}

bool WriteAll(int fd, std::string_view bytes) {
    ssize_t n = 0;
    do {
        n = ::write(fd, bytes.data(), bytes.size());
    } while (n < 0 && errno == EINTR);
    // A part of a line is not retried: the rest would land after whatever came between.
    return n == static_cast<ssize_t>(bytes.size());
}

bool Truncate(int fd, int64_t size) {
    return ::ftruncate(fd, static_cast<off_t>(size)) == 0;
}

bool SyncData(int fd) {
#ifdef __APPLE__
    return ::fsync(fd) == 0;
#else
    return ::fdatasync(fd) == 0;
#endif
}

// A new file's name is an entry of its folder: synced, it survives a power cut too. File
// systems that cannot sync a folder say EINVAL.
bool SyncFolderOf(const std::string& path) {
    const fs::path folder = fs::path(path).parent_path();
    const int fd =
        ::open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (fd < 0)
        return false;
    const bool synced = ::fsync(fd) == 0 || errno == EINVAL;
    ::close(fd);
    return synced;
}

void CloseFile(int fd) {
    ::close(fd);
}
#endif

// Cuts off what follows the last line end of a file of size bytes: the part of a line whose
// write was cut short. false when there is no line end near the end, or the cut fails.
bool CutTornLine(int fd, int64_t size) {
    const auto tail = static_cast<size_t>(std::min<int64_t>(size, kJournalLineMax + 1));
    const std::string bytes = ReadAt(fd, size - static_cast<int64_t>(tail), tail);
    const size_t lineEnd = bytes.rfind('\n');
    if (bytes.size() != tail || lineEnd == std::string::npos)
        return false;
    const int64_t whole = size - static_cast<int64_t>(tail) + static_cast<int64_t>(lineEnd) + 1;
    return whole == size || (Truncate(fd, whole) && SyncData(fd));
}

// Renames from to to unless to exists; false when to exists or the rename fails.
bool RenameWithoutReplacing(const std::string& from, const std::string& to) {
#ifdef _WIN32
    return MoveFileExA(from.c_str(), to.c_str(), 0) != 0;
#else
    // A hard link is refused when the name is taken, whoever made it meanwhile.
    if (::link(from.c_str(), to.c_str()) == 0)
        return ::unlink(from.c_str()) == 0;
    if (errno == EEXIST)
        return false;
    // File systems without hard links: look first, then rename.
    std::error_code ec;
    if (fs::exists(to, ec) || ec)
        return false;
    return std::rename(from.c_str(), to.c_str()) == 0;
#endif
}

}  // namespace

JournalWriter::JournalWriter(JournalWriter&& other) noexcept
    : fd_(std::exchange(other.fd_, -1)), failed_(other.failed_) {}

JournalWriter& JournalWriter::operator=(JournalWriter&& other) noexcept {
    if (this != &other) {
        Close();
        fd_ = std::exchange(other.fd_, -1);
        failed_ = other.failed_;
    }
    return *this;
}

JournalWriter::~JournalWriter() {
    Close();
}

bool JournalWriter::Fail() {
    failed_ = true;
    Close();
    return false;
}

bool JournalWriter::Open(const std::string& path, const std::string& jobHex) {
    Close();
    failed_ = false;
    if (!IsJobHex(jobHex))
        return Fail();
    std::error_code ec;
    const fs::path folder = fs::path(path).parent_path();
    if (!folder.empty())
        fs::create_directories(folder, ec);
    fd_ = OpenForAppending(path);
    const int64_t size = fd_ >= 0 ? SizeOf(fd_) : -1;
    if (size < 0)
        return Fail();
    const std::string header = JournalHeader(jobHex);
    // Room for the header as an editor with CR LF lines keeps it.
    const std::string start = ReadAt(fd_, 0, header.size() + 2);
    if (static_cast<size_t>(size) < header.size() && header.starts_with(start) &&
        start.size() == static_cast<size_t>(size)) {
        // A new file, or one whose header was being written when the process stopped.
        if (!Truncate(fd_, 0) || !WriteAll(fd_, header) || !SyncData(fd_) || !SyncFolderOf(path))
            return Fail();
        return true;
    }
    const JournalFile file = ReadJournal(start);
    if (!file.Error.empty() || file.Job != jobHex || !CutTornLine(fd_, size))
        return Fail();
    return true;
}

bool JournalWriter::Append(const std::string& line) {
    if (failed_ || fd_ < 0)
        return false;
    const bool oneLine =
        !line.empty() && line.size() <= kJournalLineMax && line.find('\n') == line.size() - 1;
    if (!oneLine || !WriteAll(fd_, line) || !SyncData(fd_))
        return Fail();
    if (gAppendWatcher != nullptr)
        gAppendWatcher->Appended();
    return true;
}

void JournalWriter::Watch(JournalWatcher* watcher) {
    gAppendWatcher = watcher;
}

void JournalWriter::Close() {
    if (fd_ >= 0)
        CloseFile(fd_);
    fd_ = -1;
}

std::string JournalPath(const std::string& folder, const std::string& jobHex) {
    return JoinPath(JoinPath(folder, "journal"), jobHex + std::string(kJournalExtension));
}

bool DiscardJournal(const std::string& path) {
    std::error_code ec;
    if (!fs::is_regular_file(fs::symlink_status(path, ec)))
        return false;
    const std::string base = path + std::string(kDiscarded);
    if (RenameWithoutReplacing(path, base))
        return true;
    for (int n = 1; n <= kDiscardedNamesMax; ++n) {
        if (!fs::exists(path, ec))
            return false;
        if (RenameWithoutReplacing(path, base + "." + std::to_string(n)))
            return true;
    }
    return false;
}

bool KeepEndedJournalAside(const std::string& path) {
    std::error_code ec;
    if (!fs::is_regular_file(fs::symlink_status(path, ec)) || !ReadJournalFile(path).End)
        return false;
    const std::string stem = path.substr(0, path.size() - kJournalExtension.size());
    for (int n = 1; n <= kDiscardedNamesMax; ++n) {
        if (RenameWithoutReplacing(path,
                                   stem + "." + std::to_string(n) + std::string(kJournalExtension)))
            return true;
    }
    return false;
}

void PruneEndedJournals(const std::string& journalFolder, size_t keep) {
    struct Ended {
        fs::file_time_type Written;
        fs::path Path;
    };
    std::vector<Ended> ended;
    std::error_code ec;
    for (fs::directory_iterator it(journalFolder, ec), end; !ec && it != end; it.increment(ec)) {
        const fs::path& path = it->path();
        std::error_code typeError;
        if (path.extension() != kJournalExtension ||
            it->symlink_status(typeError).type() != fs::file_type::regular)
            continue;
        if (!ReadJournalFile(path.string()).End)
            continue;
        std::error_code timeError;
        const fs::file_time_type written = fs::last_write_time(path, timeError);
        if (!timeError)
            ended.push_back({written, path});
    }
    if (ended.size() <= keep)
        return;
    // The newest first; the same time in the order of the names, so every run agrees.
    std::sort(ended.begin(), ended.end(), [](const Ended& a, const Ended& b) {
        return a.Written != b.Written ? a.Written > b.Written : a.Path < b.Path;
    });
    for (size_t i = keep; i < ended.size(); ++i)
        fs::remove(ended[i].Path, ec);
}

}  // namespace kesto
