// The Debian package as a user meets it: unpacked into a fresh root (dpkg-deb -x, nothing
// installed on this machine), its programs run from there with a bare environment whose PATH
// holds nothing of the build folder, on a copy of the sample installation it ships.
#include <gtest/gtest.h>
#include <sys/wait.h>

#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include "common/TestFiles.h"
#include "support/Version.h"

namespace kesto {
namespace {

namespace fs = std::filesystem;

// The sample's command line after the program's path, as in make demo.
constexpr const char* kSampleArgs = "pallet/pallets.txt 0 0 1400 10 1";
// The folders of the package's programs and sample, inside the root.
const fs::path kBin = "usr/bin";
const fs::path kSample = "usr/share/kesto/examples/install";
const fs::path kMan = "usr/share/man/man1";

std::string Quoted(const fs::path& path) {
    std::string quoted = "'";
    for (const char c : path.string())
        quoted += c == '\'' ? std::string("'\\''") : std::string(1, c);
    return quoted + "'";
}

// The package of this version that ctest's set-up step made with cpack.
fs::path PackageFile() {
    const std::string prefix = std::string("kesto_") + KestoVersion() + "_";
    std::error_code ec;
    for (const auto& entry : fs::directory_iterator(test::BinaryDir() / "package-test", ec)) {
        const std::string name = entry.path().filename().string();
        if (name.rfind(prefix, 0) == 0 && entry.path().extension() == ".deb")
            return entry.path();
    }
    return {};
}

struct Outcome {
    int ExitCode = -1;
    std::string Out;
    std::string Err;
};

// Runs command through the shell in folder; its output is kept in files of scratch.
Outcome RunIn(const fs::path& folder, const std::string& command, const fs::path& scratch) {
    const fs::path out = scratch / "run.out";
    const fs::path err = scratch / "run.err";
    const std::string line = "cd " + Quoted(folder) + " && " + command + " >" + Quoted(out) +
                             " 2>" + Quoted(err) + " </dev/null";
    const int status = std::system(line.c_str());
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, test::ReadFile(out), test::ReadFile(err)};
}

// What a user's shell gives a program: only this environment, PATH without the build folder.
std::string BareEnvironment(const std::string& path, const fs::path& home) {
    return "env -i PATH=" + path + " HOME=" + Quoted(home) +
           " XDG_CONFIG_HOME=" + Quoted(home / "config") + " QT_QPA_PLATFORM=offscreen";
}

// The width and height in a PNG file's header; 0 x 0 when it is none.
std::pair<uint32_t, uint32_t> PngSize(const fs::path& file) {
    const std::string bytes = test::ReadFile(file);
    if (bytes.size() < 24 || bytes.compare(1, 3, "PNG") != 0)
        return {0, 0};
    const auto at = [&bytes](size_t i) {
        uint32_t value = 0;
        for (size_t k = 0; k < 4; ++k)
            value = value << 8 | static_cast<unsigned char>(bytes[i + k]);
        return value;
    };
    return {at(16), at(20)};
}

// A fresh root with the package unpacked into it, and a home and scratch folder beside it.
class InstalledPackage : public ::testing::Test {
  protected:
    void SetUp() override {
        deb_ = PackageFile();
        ASSERT_FALSE(deb_.empty()) << "no .deb in " << (test::BinaryDir() / "package-test");
        root_ = folder_.Path() / "root";
        fs::create_directories(root_);
        fs::create_directories(Home());
        const Outcome unpack = Tool("dpkg-deb -x " + Quoted(deb_) + " " + Quoted(root_));
        ASSERT_EQ(unpack.ExitCode, 0) << unpack.Err;
    }

    fs::path Home() const { return folder_.Path() / "home"; }
    fs::path Installed(const fs::path& relative) const { return root_ / relative; }

    // A tool of this machine (dpkg-deb, man, the validators) run in the scratch folder.
    Outcome Tool(const std::string& command) const {
        return RunIn(folder_.Path(), command, folder_.Path());
    }

    // The sample installation of the package copied to a folder of its own, as a user does.
    fs::path CopySample(const std::string& name) const {
        const fs::path copy = folder_.Path() / name;
        fs::copy(Installed(kSample), copy, fs::copy_options::recursive);
        return copy;
    }

    // program (a path) run in the system folder install, with the bare environment and PATH.
    Outcome RunProgram(const fs::path& program, const std::string& args, const fs::path& install,
                       const std::string& path, const std::string& extraEnv = "") const {
        return RunIn(install,
                     BareEnvironment(path, Home()) + " ORVOSystemRoot=" + Quoted(install) + " " +
                         extraEnv + " " + Quoted(program) + " " + args,
                     folder_.Path());
    }

    // An installed program started by name, as a user types it: PATH leads to the root.
    Outcome RunInstalled(const std::string& name, const std::string& args) const {
        return RunProgram(name, args, folder_.Path(), Installed(kBin).string() + ":/usr/bin:/bin");
    }

    test::TempFolder folder_;
    fs::path deb_;
    fs::path root_;
};

TEST_F(InstalledPackage, PutsProgramsSampleManualPagesAndMenuEntryInTheirPlaces) {
    for (const char* program : {"kesto", "kesto-batch", "kesto-picture"}) {
        const fs::perms perms = fs::status(Installed(kBin / program)).permissions();
        EXPECT_NE(perms & fs::perms::others_exec, fs::perms::none) << program;
    }
    for (const char* file :
         {"usr/share/kesto/examples/install/bin/Ks_Setup.ini",
          "usr/share/kesto/examples/install/Kesto.ini",
          "usr/share/kesto/examples/install/job/kesto_job.txt", "usr/share/man/man1/kesto.1.gz",
          "usr/share/man/man1/kesto-batch.1.gz", "usr/share/man/man1/kesto-picture.1.gz",
          "usr/share/applications/org.kesto.Kesto.desktop",
          "usr/share/metainfo/org.kesto.Kesto.metainfo.xml",
          "usr/share/icons/hicolor/32x32/apps/kesto.png",
          "usr/share/icons/hicolor/scalable/apps/kesto.svg", "usr/share/doc/kesto/copyright"})
        EXPECT_TRUE(fs::is_regular_file(Installed(file))) << file;
    EXPECT_TRUE(fs::is_directory(Installed(kSample / "out")));
    EXPECT_FALSE(fs::exists(Installed(kSample / "out" / ".gitkeep")));
    EXPECT_EQ(PngSize(Installed("usr/share/icons/hicolor/32x32/apps/kesto.png")),
              std::make_pair(32u, 32u));
}

TEST_F(InstalledPackage, ControlNamesThePackageItsVersionAndTheLibrariesTheProgramsNeed) {
    const Outcome fields = Tool("dpkg-deb -f " + Quoted(deb_) +
                                " Package Version Maintainer Section Description Depends");
    ASSERT_EQ(fields.ExitCode, 0) << fields.Err;
    EXPECT_NE(fields.Out.find("Package: kesto\n"), std::string::npos) << fields.Out;
    EXPECT_NE(fields.Out.find(std::string("Version: ") + KestoVersion() + "\n"), std::string::npos)
        << fields.Out;
    EXPECT_NE(fields.Out.find("Maintainer: "), std::string::npos);
    EXPECT_NE(fields.Out.find("Section: misc\n"), std::string::npos);
    // Worked out by dpkg-shlibdeps from the programs, with the platform plugins Qt loads.
    for (const char* library :
         {"libc6 (>=", "libstdc++6 (>=", "libqt6widgets6 (>=", "libqt6gui6 (>=", "libqt6core6 (>=",
          "libqt6printsupport6 (>=", "qt6-qpa-plugins"})
        EXPECT_NE(fields.Out.find(library), std::string::npos) << library << "\n" << fields.Out;
}

TEST_F(InstalledPackage, BatchRunsTheInstalledSampleWritingTheFilesOfTheBuildsBatch) {
    const fs::path installed = CopySample("installed");
    const fs::path built = CopySample("built");
    const Outcome run = RunProgram(Installed(kBin / "kesto-batch"), kSampleArgs, installed,
                                   Installed(kBin).string() + ":/usr/bin:/bin");
    ASSERT_EQ(run.ExitCode, 0) << run.Out << run.Err;
    const Outcome reference = RunProgram(test::BinaryDir() / "kesto-batch", kSampleArgs, built,
                                         Installed(kBin).string() + ":/usr/bin:/bin");
    ASSERT_EQ(reference.ExitCode, 0) << reference.Err;
    for (const char* file :
         {"out/kesto_result.csv", "out/kesto_result.csv_tmp", "out/kesto_haichi.csv"}) {
        const std::string bytes = test::ReadFile(installed / file);
        EXPECT_FALSE(bytes.empty()) << file;
        EXPECT_EQ(bytes, test::ReadFile(built / file)) << file;
    }
}

TEST_F(InstalledPackage, BatchFindsThePictureProgramInstalledBesideIt) {
    const fs::path installed = CopySample("installed");
    // Not on PATH: only the folder of kesto-batch can lead to the picture program.
    const Outcome run = RunProgram(Installed(kBin / "kesto-batch"),
                                   "--picture out/placement.png " + std::string(kSampleArgs),
                                   installed, "/usr/bin:/bin");
    ASSERT_EQ(run.ExitCode, 0) << run.Out << run.Err;
    EXPECT_EQ(run.Err.find("picture not written"), std::string::npos) << run.Err;
    EXPECT_NE(run.Out.find("Pictures:"), std::string::npos) << run.Out;
    // A picture per process, then the listing.
    for (const char* image : {"out/placement-01.png", "out/placement-02.png",
                              "out/placement-03.png", "out/placement-04.png"})
        EXPECT_EQ(PngSize(installed / image), std::make_pair(1600u, 1000u)) << image;
}

TEST_F(InstalledPackage, WindowOpensTheInstalledSampleOffscreenAndTakesItsScreenshot) {
    const fs::path installed = CopySample("installed");
    const fs::path shot = folder_.Path() / "window.png";
    const Outcome run =
        RunProgram("kesto", kSampleArgs, installed, Installed(kBin).string() + ":/usr/bin:/bin",
                   "KESTO_SCREENSHOT=" + Quoted(shot));
    EXPECT_EQ(run.ExitCode, 100) << run.Err;
    EXPECT_EQ(PngSize(shot), std::make_pair(1600u, 900u));
    EXPECT_FALSE(fs::exists(installed / "out" / "kesto_result.csv"));
}

TEST_F(InstalledPackage, EveryProgramShowsTheProjectsVersion) {
    for (const std::string program : {"kesto", "kesto-batch", "kesto-picture"}) {
        const Outcome run = RunInstalled(program, "--version");
        EXPECT_EQ(run.ExitCode, 0) << program << run.Err;
        EXPECT_EQ(run.Out, VersionLine(program) + "\n");
    }
}

TEST_F(InstalledPackage, BatchAndPictureProgramPrintTheirUsageOnHelp) {
    for (const std::string program : {"kesto-batch", "kesto-picture"}) {
        const Outcome run = RunInstalled(program, "--help");
        EXPECT_EQ(run.ExitCode, 0) << program << run.Err;
        EXPECT_EQ(run.Out.rfind("usage: " + program + " ", 0), 0u) << run.Out;
        EXPECT_NE(run.Out.find(program + " --help | --version"), std::string::npos) << run.Out;
    }
}

TEST_F(InstalledPackage, ManualPagesRenderWithoutWarnings) {
    const std::vector<std::pair<std::string, std::vector<std::string>>> pages = {
        {"kesto", {"SYNOPSIS", "EXIT STATUS", "ORVOSystemRoot", "KESTO_SCREENSHOT", "9020"}},
        {"kesto-batch", {"SYNOPSIS", "--answer", "--picture-size", "EXIT STATUS", "EXAMPLES"}},
        {"kesto-picture", {"SYNOPSIS", "kesto-batch"}}};
    for (const auto& [page, words] : pages) {
        const Outcome run =
            Tool("MANWIDTH=80 man --warnings -l " + Quoted(Installed(kMan / (page + ".1.gz"))));
        EXPECT_EQ(run.ExitCode, 0) << page << run.Err;
        EXPECT_EQ(run.Err, "") << page;
        for (const std::string& word : words)
            EXPECT_NE(run.Out.find(word), std::string::npos) << page << ": " << word;
        EXPECT_NE(run.Out.find(std::string("Kesto ") + KestoVersion()), std::string::npos);
    }
}

TEST_F(InstalledPackage, DesktopEntryAndMetainfoPassTheirValidators) {
    const Outcome desktop =
        Tool("desktop-file-validate " +
             Quoted(Installed("usr/share/applications/org.kesto.Kesto.desktop")));
    EXPECT_EQ(desktop.ExitCode, 0) << desktop.Out << desktop.Err;
    EXPECT_EQ(desktop.Out + desktop.Err, "");
    const Outcome metainfo =
        Tool("appstreamcli validate --no-net " +
             Quoted(Installed("usr/share/metainfo/org.kesto.Kesto.metainfo.xml")));
    EXPECT_EQ(metainfo.ExitCode, 0) << metainfo.Out << metainfo.Err;
}

TEST_F(InstalledPackage, LintianReportsNoError) {
    const Outcome lintian = Tool("lintian --fail-on error " + Quoted(deb_));
    EXPECT_EQ(lintian.ExitCode, 0) << lintian.Out << lintian.Err;
    EXPECT_EQ(lintian.Out.find("E: "), std::string::npos) << lintian.Out;
}

// dpkg -r deletes exactly the files of the package's list: with every file under /usr, no
// maintainer script and no configuration file, removing it leaves nothing behind. What the
// programs write goes to the system folder and the user's folder, never into the package's.
TEST_F(InstalledPackage, HoldsOnlyFilesUnderUsrAndNothingThatOutlivesRemoval) {
    const Outcome contents = Tool("dpkg-deb -c " + Quoted(deb_));
    ASSERT_EQ(contents.ExitCode, 0) << contents.Err;
    EXPECT_NE(contents.Out.find("./usr/bin/kesto-batch\n"), std::string::npos);
    for (size_t start = 0; start < contents.Out.size();) {
        const size_t end = contents.Out.find('\n', start);
        const std::string line = contents.Out.substr(start, end - start);
        start = end == std::string::npos ? contents.Out.size() : end + 1;
        const std::string path = line.substr(line.rfind(' ') + 1);
        EXPECT_TRUE(path == "./" || path.rfind("./usr/", 0) == 0) << line;
    }
    const Outcome control = Tool("dpkg-deb -e " + Quoted(deb_) + " control && ls control");
    ASSERT_EQ(control.ExitCode, 0) << control.Err;
    EXPECT_EQ(control.Out, "control\nmd5sums\n");
}

// dpkg itself installs and removes the package in a throwaway root of its own (an empty
// database; the libraries live on this machine, not in that root, hence --force-depends).
TEST_F(InstalledPackage, DpkgRemovesEverythingItInstalledInAThrowawayRoot) {
    const fs::path target = folder_.Path() / "dpkg-root";
    const fs::path database = target / "var" / "lib" / "dpkg";
    for (const char* folder : {"info", "updates", "triggers"})
        fs::create_directories(database / folder);
    test::WriteFile(database / "status", "");
    test::WriteFile(database / "available", "");
    const std::string dpkg = "dpkg --root=" + Quoted(target) + " --log=/dev/null --force-not-root ";
    const Outcome install = Tool(dpkg + "--force-depends -i " + Quoted(deb_));
    ASSERT_EQ(install.ExitCode, 0) << install.Out << install.Err;
    EXPECT_TRUE(fs::is_regular_file(target / kBin / "kesto-batch"));
    EXPECT_TRUE(fs::is_regular_file(target / kSample / "bin" / "Ks_Setup.ini"));
    const Outcome remove = Tool(dpkg + "-r kesto");
    ASSERT_EQ(remove.ExitCode, 0) << remove.Out << remove.Err;
    // Only dpkg's own database is left in the root.
    std::vector<std::string> left;
    for (const auto& entry : fs::directory_iterator(target))
        left.push_back(entry.path().filename().string());
    EXPECT_EQ(left, std::vector<std::string>{"var"});
    // Without configuration files, nothing of it stays known either (no "config-files" state).
    const Outcome status = Tool("dpkg-query --admindir=" + Quoted(database) + " -W kesto");
    EXPECT_NE(status.ExitCode, 0);
    EXPECT_NE(status.Err.find("no packages found matching kesto"), std::string::npos)
        << status.Out << status.Err;
}

}  // namespace
}  // namespace kesto
