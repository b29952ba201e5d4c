// Shared by the output tests: a job filled in code inside a fresh temporary folder, with the
// operator and the host machine replaced, and helpers to read back what was written.
#pragma once

#include <gtest/gtest.h>
#include <signal.h>
#include <sys/resource.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <memory>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

#include "app/CKestoApp.h"
#include "support/Platform.h"
#include "support/RecordingOperator.h"

namespace kesto::test {

namespace fs = std::filesystem;

// A host machine whose system folder is a test's own folder and that keeps no user values.
class FolderHostStore : public HostStore {
  public:
    explicit FolderHostStore(std::string folder) : folder_(std::move(folder)) {}
    SystemFolderResult SystemFolder() override { return {SystemFolderStatus::Ok, folder_}; }
    std::optional<std::string> ReadUserValue(const std::string&) override { return std::nullopt; }
    bool WriteUserValue(const std::string&, const std::string&) override { return true; }

  private:
    std::string folder_;
};

inline std::string ReadBytes(const fs::path& path) {
    std::ifstream in(path, std::ios::binary);
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

inline std::vector<std::string> ReadLines(const fs::path& path) {
    std::ifstream in(path, std::ios::binary);
    std::vector<std::string> lines;
    for (std::string line; std::getline(in, line);)
        lines.push_back(line);
    return lines;
}

inline void WriteBytes(const fs::path& path, const std::string& text) {
    fs::create_directories(path.parent_path());
    std::ofstream(path, std::ios::binary) << text;
}

// Files written beyond `bytes` fail with EFBIG for the life of the object (as a full disk
// would), so a write failure can be provoked also when the tests run as root.
class FileSizeLimit {
  public:
    explicit FileSizeLimit(rlim_t bytes) {
        getrlimit(RLIMIT_FSIZE, &saved_);
        oldHandler_ = signal(SIGXFSZ, SIG_IGN);
        rlimit limit = saved_;
        limit.rlim_cur = bytes;
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FileSizeLimit() {
        setrlimit(RLIMIT_FSIZE, &saved_);
        signal(SIGXFSZ, oldHandler_);
    }
    FileSizeLimit(const FileSizeLimit&) = delete;
    FileSizeLimit& operator=(const FileSizeLimit&) = delete;

  private:
    rlimit saved_{};
    void (*oldHandler_)(int) = nullptr;
};

// A test with its own folder, system folder "<folder>/sys", a recording operator and a job.
class OutputTest : public ::testing::Test {
  protected:
    void SetUp() override {
        const auto* info = ::testing::UnitTest::GetInstance()->current_test_info();
        dir_ = fs::temp_directory_path() / ("kesto-" + std::string(info->test_suite_name()) + "-" +
                                            info->name() + "-" + std::to_string(getpid()));
        fs::remove_all(dir_);
        fs::create_directories(dir_ / "sys");
        host_ = std::make_unique<FolderHostStore>((dir_ / "sys").string());
        InstallHostStore(host_.get());
        app_ = std::make_unique<CKestoApp>();
        app_->PalletCount = 4;
    }
    void TearDown() override {
        app_.reset();
        InstallHostStore(nullptr);
        fs::remove_all(dir_);
    }

    PartsInfo& AddPart(const std::string& code, int32_t koutei, int32_t num1,
                       const std::string& groupKey = "G1", int32_t num2 = 0) {
        PartsInfo& part = app_->PartsList.Append();
        part.Seq = ++app_->PartsList.Count;
        part.No = part.Seq;
        part.Code = code;
        part.KouteiNo = koutei;
        part.Name = "N" + code;
        part.Text1 = "T" + code;
        part.Num1 = num1;
        part.Num2 = num2;
        part.GroupKey = groupKey;
        part.Text4 = "0000";
        return part;
    }
    int32_t AddBlock(int32_t koutei, int32_t pallet) {
        BlockInfo block;
        block.KouteiNo = koutei;
        block.PalletNo = pallet;
        app_->Blocks.push_back(block);
        app_->BlocksCapacity = app_->BlocksCount = static_cast<int32_t>(app_->Blocks.size());
        return app_->BlocksCount - 1;
    }
    HaichiInfo& AddStack(PartsInfo& part, int32_t block, int32_t value, double x = 0,
                         double y = 0) {
        HaichiInfo& stack = *app_->AddHaichiInfo();
        stack.Part = &part;
        stack.BlockIndex = block;
        stack.Value = value;
        stack.X = x;
        stack.Y = y;
        part.Work[1] += value;
        return stack;
    }
    void AddBox(int32_t no, int32_t kind) {
        BoxInfo& box = app_->BoxList.Append();
        box.Name = "B" + std::to_string(no);
        box.No = no;
        box.Kind = kind;
        if (no < 100)
            ++app_->BoxList.Count;
    }
    KouteiInfo& AddKoutei(int32_t no, const std::string& name2) {
        KouteiInfo& process = app_->KouteiList.Append();
        ++app_->KouteiList.Count;
        process.No = no;
        process.Name1 = "K" + std::to_string(no);
        process.Name2 = name2;
        return process;
    }
    PalletInfo& AddPallet(int32_t no, const std::string& name) {
        PalletInfo& pallet = app_->PalletList.Append();
        ++app_->PalletList.Count;
        pallet.No = no;
        pallet.Name = name;
        return pallet;
    }
    std::string PathOf(const std::string& name) const { return (dir_ / name).string(); }

    fs::path dir_;
    std::unique_ptr<FolderHostStore> host_;
    InstalledRecorder operator_;
    std::unique_ptr<CKestoApp> app_;
};

}  // namespace kesto::test
