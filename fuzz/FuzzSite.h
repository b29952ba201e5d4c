// The installation a fuzz harness runs in: a system folder of its own, whose files each run
// overwrites with its input, and the services of a job on it. Nobody is asked anything: the
// operator answers OK to every question and the host keeps no per-user values and no state.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>

#include "support/Services.h"

namespace kesto::fuzz {

class SilentOperator : public Operator {
  public:
    void ShowMessageBox(const std::string&) override {}
    OkCancel AskKaku(int, int) override { return OkCancel::Ok; }
    bool AskOffsetWarning(const std::string&) override { return true; }
};

class FolderHostStore : public HostStore {
  public:
    explicit FolderHostStore(std::string folder) : folder_(std::move(folder)) {}
    SystemFolderResult SystemFolder() override { return {SystemFolderStatus::Ok, folder_}; }
    std::optional<std::string> ReadUserValue(const std::string&) override { return std::nullopt; }
    bool WriteUserValue(const std::string&, const std::string&) override { return true; }
    std::string StateFolder() override { return ""; }

  private:
    std::string folder_;
};

class FuzzSite {
  public:
    // Makes the folder (emptied first); the site removes it when it goes.
    explicit FuzzSite(std::filesystem::path folder);
    ~FuzzSite();
    FuzzSite(const FuzzSite&) = delete;
    FuzzSite& operator=(const FuzzSite&) = delete;

    // A folder of this process under the temporary folder, for a fuzzer's one site.
    static std::filesystem::path ProcessFolder();

    const std::filesystem::path& Folder() const { return folder_; }
    std::string Path(const std::string& relative) const;
    // Writes the bytes as they stand at relative, making its folders.
    void Write(const std::string& relative, const uint8_t* data, size_t size) const;
    void Write(const std::string& relative, const std::string& text) const;
    // The services of one job: the messages are the caller's, fresh for each run.
    Services Make(MessageTable& messages) { return Services{op_, host_, messages}; }

  private:
    std::filesystem::path folder_;
    SilentOperator op_;
    FolderHostStore host_;
};

// True when the bytes name a device or kernel file (/dev, /proc, /sys, either separator): a
// path the program would follow there reads the machine, which never ends, not a file.
bool NamesMachineFile(const uint8_t* data, size_t size);

}  // namespace kesto::fuzz
