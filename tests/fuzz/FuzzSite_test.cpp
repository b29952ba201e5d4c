#include "FuzzSite.h"

#include <gtest/gtest.h>

#include <string>

#include "common/TestFiles.h"

namespace kesto::fuzz {
namespace {

using test::ReadFile;
using test::TempFolder;

bool Names(const std::string& text) {
    return NamesMachineFile(reinterpret_cast<const uint8_t*>(text.data()), text.size());
}

TEST(FuzzSite, WritesBytesAsTheyStandWithTheirFolders) {
    TempFolder temp;
    FuzzSite site(temp.Path() / "site");
    const std::string bytes("a\r\nb\0c", 6);
    site.Write("deep/er/file.txt", bytes);
    EXPECT_EQ(ReadFile(site.Path("deep/er/file.txt")), bytes);
    // A second write replaces the first whole, it does not append.
    site.Write("deep/er/file.txt", "x");
    EXPECT_EQ(ReadFile(site.Path("deep/er/file.txt")), "x");
}

TEST(FuzzSite, IsTheSystemFolderOfItsServicesAndGoesWithTheSite) {
    TempFolder temp;
    const auto folder = temp.Path() / "site";
    {
        FuzzSite site(folder);
        MessageTable messages;
        const Services services = site.Make(messages);
        EXPECT_EQ(services.Host.SystemFolder().Folder, folder.string());
        EXPECT_EQ(services.Op.AskKaku(208, 0), OkCancel::Ok);
        EXPECT_TRUE(services.Op.AskOffsetWarning("far"));
        EXPECT_FALSE(services.Host.ReadUserValue("IsDirect").has_value());
        EXPECT_TRUE(std::filesystem::is_directory(folder));
    }
    EXPECT_FALSE(std::filesystem::exists(folder));
}

TEST(FuzzSite, ProcessFolderIsNamedAfterTheProcess) {
    const std::string name = FuzzSite::ProcessFolder().filename().string();
    EXPECT_EQ(name, "kesto-fuzz-" + std::to_string(::getpid()));
}

TEST(FuzzSite, MachineFilesAreNamedWithEitherSeparator) {
    EXPECT_TRUE(Names("A1,1,x,outline,/dev/zero,1"));
    EXPECT_TRUE(Names("\\proc\\self\\mem"));
    EXPECT_TRUE(Names("../../sys/kernel"));
    EXPECT_FALSE(Names("outline/A001.txt"));
    EXPECT_FALSE(Names("device,process,system"));
    EXPECT_FALSE(Names(""));
}

}  // namespace
}  // namespace kesto::fuzz
