// Shared by the output tests: a job filled in code inside a fresh temporary folder, with the
// test's own services (a recording operator, a host machine in memory whose system folder is
// "<folder>/sys"). Files are read back with the helpers of TestFiles.h.
#pragma once

#include <gtest/gtest.h>
#ifndef _WIN32
#include <signal.h>
#include <sys/resource.h>
#endif

#include <filesystem>
#include <memory>
#include <string>

#include "app/CKestoApp.h"
#include "common/PartFields.h"
#include "common/StackFields.h"
#include "common/TestFiles.h"
#include "common/TestServices.h"
#include "output/CKs_FileSave.h"

namespace kesto::test {

namespace fs = std::filesystem;

#ifdef _WIN32
// Windows has no per-process file size limit: the tests that need one are skipped there.
#define KESTO_NEEDS_FILE_SIZE_LIMIT() GTEST_SKIP() << "no file size limit on Windows"
class FileSizeLimit {
  public:
    explicit FileSizeLimit(long) {}
};
#else
#define KESTO_NEEDS_FILE_SIZE_LIMIT() static_cast<void>(0)
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
#endif

// A test with its own folder, system folder "<folder>/sys", a recording operator and a job.
class OutputTest : public ::testing::Test {
  protected:
    void SetUp() override {
        fs::create_directories(dir_ / "sys");
        testServices_.Host.Folder.Folder = (dir_ / "sys").string();
        app_ = std::make_unique<CKestoApp>();
        app_->Settings.PalletCount = 4;
    }
    void TearDown() override { app_.reset(); }

    // The output worker on this test's job and services.
    CKs_FileSave FileSave() { return CKs_FileSave(*app_, services_); }

    // A part as named, with the texts the files show filled in where not named: No = Seq, Name
    // "N<Code>", DisplayName "T<Code>", GroupKey "G1", SensitiveSides "0000".
    PartsInfo& AddPart(const PartFields& fields) {
        PartsInfo& part = test::AddPart(*app_, fields);
        if (part.No == 0)
            part.No = part.Seq;
        if (part.Name.empty())
            part.Name = "N" + part.Code;
        if (part.DisplayName.empty())
            part.DisplayName = "T" + part.Code;
        if (part.GroupKey.empty())
            part.GroupKey = "G1";
        if (part.SensitiveSides.empty())
            part.SensitiveSides = "0000";
        return part;
    }
    int32_t AddBlock(int32_t koutei, int32_t pallet) {
        BlockInfo block;
        block.KouteiNo = koutei;
        block.PalletNo = pallet;
        return app_->Blocks.AddBlock(block);
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
        process.Name = "K" + std::to_string(no);
        process.PalletName = name2;
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

    TempFolder folder_;
    const fs::path dir_ = folder_.Path();
    TestServices testServices_;
    RecordingOperator& operator_ = testServices_.Op;
    Services services_ = testServices_.Get();
    std::unique_ptr<CKestoApp> app_;
};

}  // namespace kesto::test
