// A test installation for the start-up readers: a system folder with its setup list and the
// services of a job (an operator that records what it was shown, a host store in memory whose
// system folder is this folder, a message table). Every test gets its own folder and services;
// nothing process-wide is touched.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "common/MiniInstallation.h"
#include "common/TestFiles.h"
#include "common/TestServices.h"
#include "support/Services.h"

namespace kesto::test {

class Installation {
  public:
    Installation() = default;
    Installation(const Installation&) = delete;
    Installation& operator=(const Installation&) = delete;

    // The services of a job run on this installation.
    kesto::Services Get() { return Test.Get(); }
    operator kesto::Services() { return Get(); }

    // bin/Ks_Setup.ini with the given "KEY : value" entries.
    void WriteSetupList(const std::vector<std::string>& entries) const {
        WriteFile(Folder / "bin/Ks_Setup.ini", SetupListText(entries));
    }
    // The usual list: the job in job/job.txt, the settings in the system folder itself.
    void WriteDefaultSetupList() const { WriteSetupList({"IEJ : job/job.txt", "MSG : ./"}); }

    std::string Path(const std::string& relative) const { return Folder / relative; }
    std::string Write(const std::string& relative, const std::string& text) const {
        WriteFile(Path(relative), text);
        return Path(relative);
    }

    TempFolder Folder;
    TestServices Test{Folder.Path().string()};  // the system folder is Folder
    RecordingOperator& Operator = Test.Op;
    MemoryHostStore& Host = Test.Host;
    MessageTable& Messages = Test.Messages;
};

}  // namespace kesto::test
