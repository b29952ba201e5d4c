// The Japanese sample installation (examples/ja laid over examples/install) run by kesto-batch
// as a host runs it: its files carry the job's Shift_JIS texts byte for byte, and what reaches
// the terminal is UTF-8.
#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <sstream>
#include <string>
#include <vector>

#include "common/E2eCases.h"

namespace kesto {
namespace {

namespace fs = std::filesystem;

const char* kSampleArgs = "pallet/pallets.txt 0 0 1400 10 1";
// The operator stopped at the offset warning: 999, of which POSIX keeps the low 8 bits.
#if defined(_WIN32)
constexpr int kStoppedAtOffsetWarning = 999;
#else
constexpr int kStoppedAtOffsetWarning = 231;
#endif
const char* kOutputs[] = {"out/kesto_result.csv", "out/kesto_result.csv_tmp",
                          "out/kesto_haichi.csv"};

// examples/install in folder/install, with the files of examples/<language>/install over it.
fs::path CopySample(const fs::path& folder, const std::string& language) {
    const fs::path install = folder / "install";
    const auto options = fs::copy_options::recursive | fs::copy_options::overwrite_existing;
    fs::create_directories(install);
    fs::copy(test::SourceDir() / "examples" / "install", install, options);
    if (!language.empty())
        fs::copy(test::SourceDir() / "examples" / language / "install", install, options);
    return install;
}

std::vector<std::string> Split(const std::string& line) {
    std::vector<std::string> fields;
    std::stringstream stream(line);
    for (std::string field; std::getline(stream, field, ',');)
        fields.push_back(field);
    if (!line.empty() && line.back() == ',')
        fields.emplace_back();
    return fields;
}

// One column of every part line of a job file, by part code.
std::map<std::string, std::string> ColumnByCode(const fs::path& job, size_t column) {
    std::map<std::string, std::string> names;
    bool parts = false;
    for (const std::string& line : test::ReadLines(job.string())) {
        if (line.rfind('#', 0) == 0) {
            parts = line == "#PartsInfo";
            continue;
        }
        const auto fields = Split(line);
        if (parts && fields.size() > column)
            names[fields[0]] = fields[column];
    }
    return names;
}

// text with every comma-separated field that equals a key of names replaced by its value.
std::string ReplaceFields(const std::string& text,
                          const std::map<std::string, std::string>& names) {
    std::string out;
    std::stringstream lines(text);
    for (std::string line; std::getline(lines, line);) {
        std::string joined;
        const auto fields = Split(line);
        for (size_t i = 0; i < fields.size(); ++i) {
            const auto found = names.find(fields[i]);
            joined += (i > 0 ? "," : "") + (found != names.end() ? found->second : fields[i]);
        }
        out += joined + "\n";
    }
    return out;
}

class JapaneseSample : public testing::Test {
  protected:
    test::TempFolder temp;
};

TEST_F(JapaneseSample, WrittenFilesAreTheEnglishRunsWithTheJobsShiftJisNames) {
    const fs::path english = CopySample(temp.Path() / "en", "");
    const fs::path japanese = CopySample(temp.Path() / "ja", "ja");
    ASSERT_EQ(test::RunBatchProcess(english, "ok", kSampleArgs, temp.Path() / "en.log"), 0);
    ASSERT_EQ(test::RunBatchProcess(japanese, "ok", kSampleArgs, temp.Path() / "ja.log"), 0)
        << test::ReadFile((temp.Path() / "ja.log").string());
    // The same job but for its names (columns 3 and 4): English name -> Shift_JIS name.
    std::map<std::string, std::string> translation;
    for (const size_t column : {2u, 3u}) {
        const auto englishNames = ColumnByCode(english / "job" / "kesto_job.txt", column);
        const auto japaneseNames = ColumnByCode(japanese / "job" / "kesto_job.txt", column);
        ASSERT_EQ(englishNames.size(), 40u);
        for (const auto& [code, name] : englishNames)
            translation[name] = japaneseNames.at(code);
    }
    ASSERT_EQ(translation.size(), 80u);
    for (const char* output : kOutputs) {
        const std::string written = test::ReadFile((japanese / output).string());
        EXPECT_EQ(written, ReplaceFields(test::ReadFile((english / output).string()), translation))
            << output;
    }
    // "ブラケット左" as the job has it, in the result and in the save file.
    const std::string bracket = "\x83\x75\x83\x89\x83\x50\x83\x62\x83\x67\x8D\xB6";
    EXPECT_EQ(translation.at("Bracket left"), bracket);
    EXPECT_NE(test::ReadFile((japanese / kOutputs[0]).string()).find(bracket), std::string::npos);
    EXPECT_NE(test::ReadFile((japanese / kOutputs[2]).string()).find(bracket), std::string::npos);
}

TEST_F(JapaneseSample, TerminalGetsUtf8ProcessNamesAndMessages) {
    const fs::path japanese = CopySample(temp.Path(), "ja");
    const fs::path log = temp.Path() / "log.txt";
    // Offset A 1000 puts the upper offset line of PAL-A below its stacks: message 209.
    EXPECT_EQ(test::RunBatchProcess(japanese, "cancel", "pallet/pallets.txt 0 0 1000 15 1", log),
              kStoppedAtOffsetWarning);
    const std::string printed = test::ReadFile(log.string());
    EXPECT_NE(printed.find("01 レーザー加工 on PAL-A"), std::string::npos) << printed;
    EXPECT_NE(printed.find("kesto: パレットのオフセットを越えた山があります。続けますか？"),
              std::string::npos)
        << printed;
}

}  // namespace
}  // namespace kesto
