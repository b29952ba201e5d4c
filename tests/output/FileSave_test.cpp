#include <filesystem>

#include "common/OutputTestKit.h"
#include "output/CKs_FileSave.h"

namespace kesto::test {
namespace {

using Lines = std::vector<std::string>;

class SaveAll : public OutputTest {
  protected:
    void SetUp() override {
        OutputTest::SetUp();
        AddBox(0, 10);
        AddBox(1, 11);
    }
    void WriteSetupList(const std::string& entries) {
        WriteFile(dir_ / "sys" / "bin" / "Ks_Setup.ini", "#File\n" + entries + "#End\n");
        fs::create_directories(dir_ / "sys" / "out");
    }
    void AddExactPart() {
        AddStack(*app_, AddPart({.Code = "A", .Quantity = 4}),
                 {.Block = AddBlock(1, 1), .Pieces = 4, .CountOnPart = true});
    }
    // Part A, 4 of its 10 pieces on one stack of the given level: short, so message 208 comes.
    void AddShortPart(int32_t level = 0) {
        AddStack(*app_, AddPart({.Code = "A", .Quantity = 10}),
                 {.Block = AddBlock(1, 1), .Pieces = 4, .Level = level, .CountOnPart = true});
    }
    fs::path Out(const std::string& name) const { return dir_ / "sys" / "out" / name; }
    // The last ten bytes of each line of the save file: save number, level, code, block and
    // corner of a stack line whose numbers are single digits.
    Lines SavedLineEnds() const {
        Lines ends;
        for (const std::string& line : ReadLines(Out("save.csv")))
            ends.push_back(line.substr(line.size() < 10 ? 0 : line.size() - 10));
        return ends;
    }
};

TEST_F(SaveAll, EmptyPartsListSucceedsAtOnceWithoutFiles) {
    EXPECT_EQ(FileSave().SaveAll(), Outcome::Done());

    EXPECT_EQ(std::distance(fs::directory_iterator(dir_ / "sys"), fs::directory_iterator{}), 0);
}

TEST_F(SaveAll, WritesTheResultFileThenTheSaveFile) {
    WriteSetupList("IEK : out/res.csv\nIEL : out/save.csv\n");
    AddExactPart();

    EXPECT_TRUE(FileSave().SaveAll().Ok());

    EXPECT_EQ(ReadLines(Out("res.csv")), (Lines{"A,1,NA,1002,4,PLT001-G1,1,A"}));
    EXPECT_EQ(ReadLines(Out("res.csv_tmp")), (Lines{"A,1,NA,1,4"}));
    EXPECT_EQ(ReadLines(Out("save.csv")),
              (Lines{"A,1,NA,1,4,    0.0000,    0.0000,10,TA,    0.0000,    0.0000,    "
                     "0.0000,0,1,A,0,0"}));
}

TEST_F(SaveAll, FailedResultFileWritesNoSaveFile) {
    WriteSetupList("IEK : missing/res.csv\nIEL : out/save.csv\n");
    AddExactPart();

    EXPECT_EQ(FileSave().SaveAll(), Outcome::Failed(9021));

    EXPECT_FALSE(fs::exists(Out("save.csv")));
}

TEST_F(SaveAll, ResultKeyMissingCountsAsCannotOpen) {
    WriteSetupList("IEL : out/save.csv\n");
    AddExactPart();

    EXPECT_EQ(FileSave().SaveAll(), Outcome::Failed(9021));

    EXPECT_FALSE(fs::exists(Out("save.csv")));
}

TEST_F(SaveAll, SaveKeyMissingFailsAfterTheResultFile) {
    WriteSetupList("IEK : out/res.csv\n");
    AddExactPart();

    EXPECT_EQ(FileSave().SaveAll(), Outcome::Failed(9023));

    EXPECT_TRUE(fs::exists(Out("res.csv")));
}

TEST_F(SaveAll, ShortPartAcceptedDeletesTheResultAndStillWritesTheSaveFile) {
    WriteSetupList("IEK : out/res.csv\nIEL : out/save.csv\n");
    AddShortPart();
    WriteFile(Out("res.csv"), "old\n");

    EXPECT_TRUE(FileSave().SaveAll().Ok());

    EXPECT_FALSE(fs::exists(Out("res.csv")));
    EXPECT_EQ(ReadLines(Out("save.csv")).size(), 1u);
}

TEST_F(SaveAll, ShortPartRefusedWritesNoSaveFile) {
    WriteSetupList("IEK : out/res.csv\nIEL : out/save.csv\n");
    AddShortPart();
    operator_.Answer = OkCancel::Cancel;

    EXPECT_EQ(FileSave().SaveAll(), Outcome::Failed());

    EXPECT_FALSE(fs::exists(Out("save.csv")));
}

TEST_F(SaveAll, ShortPartRefusedKeepsTheOldSaveFileAndLeavesNoTemporary) {
    WriteSetupList("IEK : out/res.csv\nIEL : out/save.csv\n");
    AddShortPart();
    WriteFile(Out("save.csv"), "old save\n");
    operator_.Answer = OkCancel::Cancel;

    EXPECT_EQ(FileSave().SaveAll(), Outcome::Failed());

    EXPECT_EQ(ReadFile(Out("save.csv")), "old save\n");
    // The side file and the old save file: no temporary of the save file is left.
    EXPECT_EQ(std::distance(fs::directory_iterator(dir_ / "sys" / "out"), fs::directory_iterator{}),
              2);
}

TEST_F(SaveAll, SaveFileKeepsItsOldBytesWhileTheShortPartsQuestionIsOpen) {
    WriteSetupList("IEK : out/res.csv\nIEL : out/save.csv\n");
    AddShortPart();
    WriteFile(Out("save.csv"), "old save\n");
    std::string seenDuringTheQuestion;
    operator_.OnAsk = [&](int) { seenDuringTheQuestion = ReadFile(Out("save.csv")); };

    EXPECT_TRUE(FileSave().SaveAll().Ok());

    EXPECT_EQ(seenDuringTheQuestion, "old save\n");
    EXPECT_EQ(ReadLines(Out("save.csv")).size(), 1u);
}

TEST_F(SaveAll, SaveFileCarriesTheLevelsTheResultGroupsNumbered) {
    WriteSetupList("IEK : out/res.csv\nIEL : out/save.csv\n");
    // Pallets 1 and 3 lie in the pairs (1,2) and (3,4): groups 1 and 2.
    AddStack(*app_, AddPart({.Code = "A", .Quantity = 4}),
             {.Block = AddBlock(1, 1), .Pieces = 4, .Level = 9, .CountOnPart = true});
    AddStack(*app_, AddPart({.Code = "B", .Quantity = 2}),
             {.Block = AddBlock(1, 3), .Pieces = 2, .Level = 9, .CountOnPart = true});

    EXPECT_TRUE(FileSave().SaveAll().Ok());

    EXPECT_EQ(SavedLineEnds(), (Lines{",0,1,A,0,0", ",0,2,B,1,0"}));
}

TEST_F(SaveAll, WithPartsShortTheSaveFileKeepsTheLevelsOfBefore) {
    WriteSetupList("IEK : out/res.csv\nIEL : out/save.csv\n");
    AddShortPart(7);

    EXPECT_TRUE(FileSave().SaveAll().Ok());

    EXPECT_EQ(SavedLineEnds(), (Lines{",0,7,A,0,0"}));
}

TEST_F(SaveAll, RemovesTheStaleTemporariesOfItsThreeFilesBeforeWriting) {
    WriteSetupList("IEK : out/res.csv\nIEL : out/save.csv\n");
    AddExactPart();
    const std::vector<std::string> stale = {"res.csv.kesto-AbC123", "res.csv_tmp.kesto-000000",
                                            "save.csv.kesto-zzzzzz"};
    const std::vector<std::string> kept = {"res.csv.kesto-notours", "other.csv.kesto-ABC123",
                                           "save.csv.kesto-ABC12"};
    for (const std::string& name : stale)
        WriteFile(Out(name), "torn");
    for (const std::string& name : kept)
        WriteFile(Out(name), "not ours");

    EXPECT_TRUE(FileSave().SaveAll().Ok());

    for (const std::string& name : stale)
        EXPECT_FALSE(fs::exists(Out(name))) << name;
    for (const std::string& name : kept)
        EXPECT_EQ(ReadFile(Out(name)), "not ours") << name;
    // Three written files and the three foreign names: nothing else is left in the folder.
    EXPECT_EQ(std::distance(fs::directory_iterator(dir_ / "sys" / "out"), fs::directory_iterator{}),
              6);
}

TEST_F(SaveAll, RemovesStaleTemporariesAlsoWhenTheJobHasNoParts) {
    WriteSetupList("IEK : out/res.csv\nIEL : out/save.csv\n");
    WriteFile(Out("save.csv.kesto-ABC123"), "torn");

    EXPECT_TRUE(FileSave().SaveAll().Ok());

    EXPECT_FALSE(fs::exists(Out("save.csv.kesto-ABC123")));
    EXPECT_FALSE(fs::exists(Out("save.csv")));
}

TEST_F(SaveAll, LeavesTemporariesOfTheTargetsInOtherFoldersAlone) {
    WriteSetupList("IEK : out/res.csv\nIEL : out/save.csv\n");
    AddExactPart();
    WriteFile((dir_ / "sys" / "res.csv.kesto-ABC123").string(), "not ours");

    EXPECT_TRUE(FileSave().SaveAll().Ok());

    EXPECT_EQ(ReadFile((dir_ / "sys" / "res.csv.kesto-ABC123").string()), "not ours");
}

}  // namespace
}  // namespace kesto::test
