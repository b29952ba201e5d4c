#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "app/InputReaders.h"
#include "common/AllocFailure.h"
#include "common/Installation.h"
#include "support/TextFile.h"

namespace kesto {
namespace {

class JobFileTest : public ::testing::Test {
  protected:
    Outcome Read(const std::string& text) {
        installation.WriteDefaultSetupList();
        installation.Write("job/job.txt", text);
        return ReadJobFile(app, installation);
    }
    std::vector<std::string> Codes() const {
        std::vector<std::string> codes;
        for (const PartsInfo& p : app.PartsList)
            codes.push_back(p.Code);
        return codes;
    }
    test::Installation installation;
    CKestoApp app;
};

// A #PartsInfo line of process 1 with the given code and outline columns.
std::string PartLine(const std::string& code, const std::string& outline = "",
                     const std::string& hasOutline = "0") {
    return code + ",1,Name,T1,100,50,1,2,0,0,0,,,1,G," + "AB," + outline + "," + hasOutline +
           ",,K9,1\n";
}

TEST_F(JobFileTest, FileWithoutSectionsGivesEmptyListsAndSuccess) {
    ASSERT_EQ(Read("A,1,2\n; comment\n#Unknown\n1,2,3\n"), Outcome::Done());
    EXPECT_TRUE(app.BoxList.Empty());
    EXPECT_TRUE(app.KouteiList.Empty());
    EXPECT_TRUE(app.PartsList.Empty());
}

TEST_F(JobFileTest, BoxLineFillsItsColumns) {
    ASSERT_TRUE(Read("#BoxInfo\nSB1,5,2,1.5,2.5,3.5,4.5\n#End\n").Ok());
    ASSERT_EQ(app.BoxList.Count, 1);
    const BoxInfo& box = app.BoxList.Items.front();
    EXPECT_EQ(box.Name, "SB1");
    EXPECT_EQ(box.No, 5);
    EXPECT_EQ(box.Kind, 2);
    EXPECT_DOUBLE_EQ(box.PartSizes.MinX, 1.5);
    EXPECT_DOUBLE_EQ(box.PartSizes.MaxY, 4.5);
}

TEST_F(JobFileTest, BoxNumbered100IsListedButNotCounted) {
    ASSERT_TRUE(Read("#BoxInfo\nA,99\nB,100\nC,150\n#End\n").Ok());
    EXPECT_EQ(app.BoxList.Items.size(), 3u);
    EXPECT_EQ(app.BoxList.Count, 1);
}

TEST_F(JobFileTest, KouteiLineFillsItsColumns) {
    ASSERT_TRUE(Read("#KouteiInfo\n 3 , CUT , PAL-A \n#End\n").Ok());
    ASSERT_EQ(app.KouteiList.Count, 1);
    const KouteiInfo& k = app.KouteiList.Items.front();
    EXPECT_EQ(k.No, 3);
    EXPECT_EQ(k.Name, "CUT");
    EXPECT_EQ(k.PalletName, "PAL-A");
    EXPECT_EQ(k.Pallet, nullptr);
}

TEST_F(JobFileTest, PartsLineFillsEveryColumn) {
    ASSERT_TRUE(Read("#PartsInfo\nA012,4,Bracket,BRK-1,250.5,150.25,11,8,100,7,4,T2,T3,2.5,G01,"
                     "0000,,0,skip,K042,10.5\n#End\n")
                    .Ok());
    const PartsInfo& p = app.PartsList.Items.front();
    EXPECT_EQ(p.Seq, 1);
    EXPECT_EQ(p.No, 12);
    EXPECT_EQ(p.Code, "A012");
    EXPECT_EQ(p.KouteiNo, 4);
    EXPECT_EQ(p.Name, "Bracket");
    EXPECT_EQ(p.DisplayName, "BRK-1");
    EXPECT_DOUBLE_EQ(p.SizeX, 250.5);
    EXPECT_DOUBLE_EQ(p.SizeY, 150.25);
    EXPECT_EQ(p.DirCode, 11);
    EXPECT_EQ(p.DirText, "UD");
    EXPECT_EQ(p.Quantity, 8);
    EXPECT_EQ(p.Destination, 100);
    EXPECT_EQ(p.SaveNumber, 7);
    EXPECT_EQ(p.PerStackLimit, 4);
    EXPECT_EQ(p.SheetText, "T2");
    EXPECT_EQ(p.MaterialName, "T3");
    EXPECT_DOUBLE_EQ(p.Thickness, 2.5);
    EXPECT_EQ(p.GroupKey, "G01");
    EXPECT_EQ(p.SensitiveSides, "0000");
    EXPECT_EQ(p.OutlinePath, "");
    EXPECT_EQ(p.HasOutline, 0);
    EXPECT_EQ(p.SaveKey, 42);
    EXPECT_DOUBLE_EQ(p.PieceHeight, 10.5);
    EXPECT_EQ(p.PartialQuantity, 0);
    EXPECT_EQ(p.SortDone, 0);
    EXPECT_EQ(app.PartsList.Count, 1);
}

TEST_F(JobFileTest, CodeNumberRule) {
    ASSERT_TRUE(Read("#PartsInfo\n12\nA12\nAB12\n0\n-5\n#End\n").Ok());
    std::vector<int32_t> numbers;
    for (const PartsInfo& p : app.PartsList)
        numbers.push_back(p.No);
    EXPECT_EQ(numbers, (std::vector<int32_t>{12, 12, 0, 0, -5}));
}

TEST_F(JobFileTest, DirTextByDirCode) {
    ASSERT_TRUE(Read("#PartsInfo\nA1,,,,,,1\nA2,,,,,,10\nA3,,,,,,11\nA4,,,,,,5\n#End\n").Ok());
    std::vector<std::string> texts;
    for (const PartsInfo& p : app.PartsList)
        texts.push_back(p.DirText);
    EXPECT_EQ(texts, (std::vector<std::string>{"U", "D", "UD", ""}));
}

TEST_F(JobFileTest, Num5FromTheSecondCharacterOfColumn20) {
    ASSERT_TRUE(
        Read("#PartsInfo\nA1,,,,,,,,,,,,,,,,,,,K17\nA2,,,,,,,,,,,,,,,,,,,7\nA3\n#End\n").Ok());
    std::vector<int32_t> keys;
    for (const PartsInfo& p : app.PartsList)
        keys.push_back(p.SaveKey);
    EXPECT_EQ(keys, (std::vector<int32_t>{17, 0, 0}));
}

TEST_F(JobFileTest, SeqCountsThePartsBefore) {
    ASSERT_TRUE(Read("#PartsInfo\nA1\nA2\n#End\n#PartsInfo\nA3\n#End\n").Ok());
    std::vector<int32_t> seqs;
    for (const PartsInfo& p : app.PartsList)
        seqs.push_back(p.Seq);
    EXPECT_EQ(seqs, (std::vector<int32_t>{1, 2, 3}));
}

TEST_F(JobFileTest, TextColumnsAreCutToTheirFields) {
    const std::string l100(100, 'L');
    ASSERT_TRUE(Read("#BoxInfo\n" + l100 + "\n#End\n#KouteiInfo\n1," + l100 + "," + l100 +
                     "\n#End\n#PartsInfo\nABCDEFGHIJ,1," + l100 + "," + l100 + ",0,0,0,0,0,0,0," +
                     l100 + "," + l100 + ",0," + l100 + ",ABCDEFG," + l100 + "\n#End\n")
                    .Ok());
    EXPECT_EQ(app.BoxList.Items.front().Name, std::string(31, 'L'));
    EXPECT_EQ(app.KouteiList.Items.front().Name, std::string(31, 'L'));
    EXPECT_EQ(app.KouteiList.Items.front().PalletName, std::string(31, 'L'));
    const PartsInfo& p = app.PartsList.Items.front();
    EXPECT_EQ(p.Code, "ABCDEFG");
    EXPECT_EQ(p.Name, std::string(63, 'L'));
    EXPECT_EQ(p.DisplayName, std::string(51, 'L'));
    EXPECT_EQ(p.SheetText, std::string(31, 'L'));
    EXPECT_EQ(p.MaterialName, std::string(63, 'L'));
    EXPECT_EQ(p.GroupKey, std::string(7, 'L'));
    EXPECT_EQ(p.SensitiveSides, "ABCD");
    EXPECT_EQ(p.OutlinePath, std::string(100, 'L'));
}

TEST_F(JobFileTest, FieldsOver127BytesAreCut) {
    ASSERT_TRUE(
        Read("#PartsInfo\nA1,1,N,N,0,0,0,0,0,0,0,T,T,0,G,T," + std::string(300, 'p') + "\n#End\n")
            .Ok());
    EXPECT_EQ(app.PartsList.Items.front().OutlinePath, std::string(127, 'p'));
}

TEST_F(JobFileTest, EndOutsideASectionIsIgnored) {
    ASSERT_TRUE(Read("#End\n#KouteiInfo\n1,A,B\n#End\n#End\n").Ok());
    EXPECT_EQ(app.KouteiList.Count, 1);
}

TEST_F(JobFileTest, SectionWithoutEndKeepsItsRecords) {
    ASSERT_TRUE(Read("#BoxInfo\nA,1\nB,2\n").Ok());
    EXPECT_EQ(app.BoxList.Count, 2);
}

TEST_F(JobFileTest, BlankLineInASectionIsARecordOfEmptyColumns) {
    ASSERT_TRUE(Read("#KouteiInfo\n\n   \n#End\n").Ok());
    ASSERT_EQ(app.KouteiList.Count, 2);
    EXPECT_EQ(app.KouteiList.Items.front().No, 0);
    EXPECT_EQ(app.KouteiList.Items.front().Name, "");
}

TEST_F(JobFileTest, HeaderInsideASectionIsARecordOfIt) {
    ASSERT_TRUE(Read("#BoxInfo\n#KouteiInfo\n1,A\n#End\n").Ok());
    EXPECT_EQ(app.BoxList.Count, 2);
    EXPECT_EQ(app.BoxList.Items.front().Name, "#KouteiInfo");
    EXPECT_TRUE(app.KouteiList.Empty());
}

TEST_F(JobFileTest, SectionsInAnyOrderAndRepeated) {
    ASSERT_TRUE(
        Read("#KouteiInfo\n2,B,P\n#End\n#BoxInfo\nX,1\n#End\n#KouteiInfo\n1,A,P\n#End\n").Ok());
    ASSERT_EQ(app.KouteiList.Count, 2);
    EXPECT_EQ(app.KouteiList.Items.front().No, 2);
    EXPECT_EQ(app.KouteiList.Items.back().No, 1);
    EXPECT_EQ(app.BoxList.Count, 1);
}

TEST_F(JobFileTest, HeadersAreTrimmedAndTabsCount) {
    ASSERT_TRUE(Read("\t#KouteiInfo  \n1,A\n  #End\t\n").Ok());
    EXPECT_EQ(app.KouteiList.Count, 1);
}

TEST_F(JobFileTest, CrLfFileReadsAsLf) {
    ASSERT_TRUE(Read("#KouteiInfo\r\n1,A,B\r\n#End\r\n").Ok());
    ASSERT_EQ(app.KouteiList.Count, 1);
    EXPECT_EQ(app.KouteiList.Items.front().PalletName, "B");
}

TEST_F(JobFileTest, LastLineWithoutLineFeedIsNotRead) {
    ASSERT_TRUE(Read("#KouteiInfo\n1,A\n2,B").Ok());
    EXPECT_EQ(app.KouteiList.Count, 1);
}

TEST_F(JobFileTest, EmptyFileGivesEmptyLists) {
    ASSERT_TRUE(Read("").Ok());
    EXPECT_TRUE(app.PartsList.Empty());
}

TEST_F(JobFileTest, QuotedCommaStaysInTheColumn) {
    ASSERT_TRUE(Read("#KouteiInfo\n1,\"A,B\",C\n#End\n").Ok());
    EXPECT_EQ(app.KouteiList.Items.front().Name, "A,B");
    EXPECT_EQ(app.KouteiList.Items.front().PalletName, "C");
}

TEST_F(JobFileTest, BinaryBytesStayInTheColumns) {
    constexpr char kText[] = "#KouteiInfo\n1,\x8C,,\xFF\x01\n#End\n";
    ASSERT_TRUE(Read(std::string(kText, sizeof kText - 1)).Ok());
    EXPECT_EQ(app.KouteiList.Items.front().Name, "\x8C,");
    EXPECT_EQ(app.KouteiList.Items.front().PalletName, "\xFF\x01");
}

TEST_F(JobFileTest, LinesOver1024BytesAreCut) {
    ASSERT_TRUE(Read("#KouteiInfo\n1,A" + std::string(1100, 'x') + ",B\n#End\n").Ok());
    const KouteiInfo& k = app.KouteiList.Items.front();
    EXPECT_EQ(k.Name, "A" + std::string(30, 'x'));
    EXPECT_EQ(k.PalletName, "");
}

TEST_F(JobFileTest, MissingOutlineResetsHasOutline) {
    ASSERT_EQ(Read("#PartsInfo\n" + PartLine("A1", installation.Path("none.txt"), "1") + "#End\n"),
              Outcome::Done());
    EXPECT_EQ(app.PartsList.Items.front().HasOutline, 0);
}

TEST_F(JobFileTest, OutlineIsReadWhenHasOutlineIsOne) {
    const std::string outline = installation.Write("shape/a1.txt", "Line 0 1 2 3 0 0 10 0\n");
    ASSERT_TRUE(Read("#PartsInfo\n" + PartLine("A1", outline, "1") + PartLine("A2", outline, "2") +
                     "#End\n")
                    .Ok());
    const PartsInfo& first = app.PartsList.Items.front();
    EXPECT_EQ(first.HasOutline, 1);
    ASSERT_EQ(first.ShapeCount, 1);
    EXPECT_EQ(first.Shapes[0].Kind, kShapeLine);
    EXPECT_EQ(app.PartsList.Items.back().ShapeCount, 0);
    EXPECT_EQ(app.PartsList.Items.back().HasOutline, 2);
}

TEST_F(JobFileTest, UnopenableOutlineStoresItsCodeWithoutStopping) {
    const std::string outline = installation.Path("shape/a1.sock");
    test::MakeUnopenable(outline);
    ASSERT_EQ(Read("#PartsInfo\n" + PartLine("A1", outline, "1") + PartLine("A2") + "#End\n"),
              Outcome::Done(9026));
    EXPECT_EQ(app.PartsList.Items.front().HasOutline, 0);
    EXPECT_EQ(app.PartsList.Count, 2);
}

TEST_F(JobFileTest, OutlinesLeftUnreadKeepTheFlagAndGiveNoShapes) {
    const std::string outline = installation.Write("shape/a1.txt", "Line 0 1 2 3 0 0 10 0\n");
    const std::string unopenable = installation.Path("shape/a2.sock");
    test::MakeUnopenable(unopenable);
    installation.WriteDefaultSetupList();
    installation.Write("job/job.txt", "#PartsInfo\n" + PartLine("A1", outline, "1") +
                                          PartLine("A2", unopenable, "1") +
                                          PartLine("A3", installation.Path("none.txt"), "1") +
                                          "#End\n");
    ASSERT_EQ(ReadJobFile(app, installation, OutlineFiles::Unread), Outcome::Done());
    ASSERT_EQ(app.PartsList.Count, 3);
    for (const PartsInfo& p : app.PartsList) {
        EXPECT_EQ(p.HasOutline, 1) << p.Code;
        EXPECT_EQ(p.ShapeCount, 0) << p.Code;
        EXPECT_TRUE(p.Shapes.empty()) << p.Code;
    }
}

TEST_F(JobFileTest, PartsAreSortedWhenThereAreProcesses) {
    ASSERT_TRUE(Read("#KouteiInfo\n1,A,P\n#End\n#PartsInfo\nS,1,,,10,10,,,,,,,,,G\nL,1,,,20,10,,,,,"
                     ",,,,G\n#End\n")
                    .Ok());
    EXPECT_EQ(Codes(), (std::vector<std::string>{"L", "S"}));
    EXPECT_EQ(app.PartsList.Items.front().SortDone, 1);
}

TEST_F(JobFileTest, PartsStayInFileOrderWithoutProcesses) {
    ASSERT_TRUE(Read("#PartsInfo\nS,1,,,10,10,,,,,,,,,G\nL,1,,,20,10,,,,,,,,,G\n#End\n").Ok());
    EXPECT_EQ(Codes(), (std::vector<std::string>{"S", "L"}));
    EXPECT_EQ(app.PartsList.Items.front().SortDone, 0);
}

TEST_F(JobFileTest, NoJobEntryInTheSetupList) {
    installation.WriteSetupList({"MSG : ./"});
    EXPECT_EQ(ReadJobFile(app, installation), Outcome::Failed(9010));
}

TEST_F(JobFileTest, MissingJobFile) {
    installation.WriteDefaultSetupList();
    EXPECT_EQ(ReadJobFile(app, installation), Outcome::Failed(9010));
}

TEST_F(JobFileTest, JobFileThatCannotBeOpened) {
    installation.WriteDefaultSetupList();
    test::MakeUnopenable(installation.Path("job/job.txt"));
    EXPECT_EQ(ReadJobFile(app, installation), Outcome::Failed(9011));
}

// Reads text with every allocation of at least minSize bytes failing (failed with code -1 when
// the file cannot be opened).
Outcome ReadFailing(CKestoApp& app, const std::string& path, size_t minSize) {
    TextFile file;
    if (OpenFile(path, "rt", file) == 0)
        return Outcome::Failed(-1);
    test::ScopedAllocFailure failure(minSize);
    return ReadJobLines(app, file.get());
}

TEST_F(JobFileTest, NoMemoryForABox) {
    const std::string path = installation.Write("j.txt", "#BoxInfo\nA,1\n#End\n");
    EXPECT_EQ(ReadFailing(app, path, sizeof(BoxInfo)), Outcome::Failed(9012));
    EXPECT_EQ(app.BoxList.Count, 0);
}

TEST_F(JobFileTest, NoMemoryForAKoutei) {
    const std::string path = installation.Write("j.txt", "#KouteiInfo\n1,A\n#End\n");
    EXPECT_EQ(ReadFailing(app, path, sizeof(KouteiInfo)), Outcome::Failed(9013));
}

TEST_F(JobFileTest, NoMemoryForAPartKeepsTheRecordsReadSoFar) {
    const std::string path = installation.Write(
        "j.txt", "#BoxInfo\nA,1\n#End\n#KouteiInfo\n1,A\n#End\n#PartsInfo\nP1\n#End\n");
    EXPECT_EQ(ReadFailing(app, path, sizeof(PartsInfo)), Outcome::Failed(9014));
    EXPECT_EQ(app.BoxList.Count, 1);
    EXPECT_EQ(app.KouteiList.Count, 1);
    EXPECT_TRUE(app.PartsList.Empty());
}

}  // namespace
}  // namespace kesto
