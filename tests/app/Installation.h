// A test installation for the start-up readers: system folder, setup list, per-user values and
// an operator that records what it was shown. Every test gets its own folder.
#pragma once

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <cstring>
#include <string>
#include <vector>

#include "common/TestFiles.h"
#include "support/MessageFile.h"
#include "support/Platform.h"
#include "support/RecordingOperator.h"

namespace kesto::test {

// Leaves a socket at path: it exists for the file system, but no one can open it as a file,
// not even the super-user.
inline void MakeUnopenable(const std::string& path) {
    std::filesystem::create_directories(std::filesystem::path(path).parent_path());
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    ASSERT_LT(path.size(), sizeof address.sun_path) << path;
    std::memcpy(address.sun_path, path.c_str(), path.size() + 1);
    const int fd = ::socket(AF_UNIX, SOCK_STREAM, 0);
    ASSERT_GE(fd, 0);
    ASSERT_EQ(::bind(fd, reinterpret_cast<sockaddr*>(&address), sizeof address), 0) << path;
    ::close(fd);
}

class Installation {
  public:
    // Points the system folder and the per-user values into the folder; installs Operator.
    Installation() {
        UseInstallation(Folder.Path().string(), Folder / "config");
        InstallOperator(&Operator);
    }
    ~Installation() {
        InstallOperator(nullptr);
        FreeMessageFile();
    }
    Installation(const Installation&) = delete;
    Installation& operator=(const Installation&) = delete;

    // bin/Ks_Setup.ini with the given "KEY : value" entries.
    void WriteSetupList(const std::vector<std::string>& entries) const {
        std::string text = "#File\n";
        for (const std::string& entry : entries)
            text += entry + "\n";
        WriteFile(Folder / "bin/Ks_Setup.ini", text + "#End\n");
    }
    // The usual list: the job in job/job.txt, the settings in the system folder itself.
    void WriteDefaultSetupList() const { WriteSetupList({"IEJ : job/job.txt", "MSG : ./"}); }

    std::string Path(const std::string& relative) const { return Folder / relative; }
    std::string Write(const std::string& relative, const std::string& text) const {
        WriteFile(Path(relative), text);
        return Path(relative);
    }

    TempFolder Folder;
    RecordingOperator Operator;
};

}  // namespace kesto::test
