#include "support/MessageFile.h"

#include <gtest/gtest.h>

#include <string>

#include "common/TestFiles.h"
#include "common/TestServices.h"

namespace kesto {
namespace {

using test::RecordingOperator;
using test::TempFolder;
using test::WriteFile;

// A table loaded from text written to a fresh file; the path stays for message checks.
class LoadedTable {
  public:
    explicit LoadedTable(const std::string& text) {
        WriteFile(Path, text);
        Result = Table.Load(Path, Op);
    }
    RecordingOperator Op;
    TempFolder Folder;
    std::string Path = Folder / "Kesto.ini";
    MessageTable Table;
    int Result = 0;
};

TEST(MessageTable, KeyKeepsItsBlankAndValueLosesUnquotedBlanks) {
    LoadedTable t("[S]\nA = x y\n");
    ASSERT_EQ(t.Result, 0);
    EXPECT_EQ(t.Table.Get("S", "A "), "xy");
    EXPECT_EQ(t.Table.Get("S", "A"), kMessageNotDefine);
}

TEST(MessageTable, QuotedValueKeepsQuotesAndTheBlankBetweenWords) {
    LoadedTable t("[S]\nK= \"two words\" \n");
    EXPECT_EQ(t.Table.Get("S", "K"), "\"two words\"");
}

TEST(MessageTable, SemicolonEndsTheValueEvenInsideQuotes) {
    LoadedTable t("[S]\nK=abc;def\nQ=\"a;b\"\n");
    EXPECT_EQ(t.Table.Get("S", "K"), "abc");
    EXPECT_EQ(t.Table.Get("S", "Q"), "\"a");
}

TEST(MessageTable, TabsOutsideQuotesAreDropped) {
    LoadedTable t("[S]\nK=\ta\tb\"\tc\"\n");
    EXPECT_EQ(t.Table.Get("S", "K"), "ab\"\tc\"");
}

TEST(MessageTable, HeaderWithoutClosingBracketHidesKeysUntilTheNextHeader) {
    LoadedTable t("[S]\nA=1\n[Broken\nB=2\n[T]\nC=3\n");
    EXPECT_EQ(t.Table.Get("S", "A"), "1");
    EXPECT_EQ(t.Table.Get("S", "B"), kMessageNotDefine);
    EXPECT_EQ(t.Table.Get("Broken", "B"), kMessageNotDefine);
    EXPECT_EQ(t.Table.Get("T", "C"), "3");
    EXPECT_TRUE(t.Op.Messages.empty());
}

TEST(MessageTable, EmptySectionNameClosesTheSection) {
    LoadedTable t("[S]\n[]\nB=2\n");
    EXPECT_EQ(t.Table.Get("S", "B"), kMessageNotDefine);
    EXPECT_EQ(t.Table.Get("", "B"), kMessageNotDefine);
}

TEST(MessageTable, KeyLineBeforeAnySectionIsIgnoredSilently) {
    LoadedTable t("A=1\nno equals here\n[S]\nB=2\n");
    EXPECT_EQ(t.Result, 0);
    EXPECT_EQ(t.Table.Get("S", "A"), kMessageNotDefine);
    EXPECT_EQ(t.Table.Get("S", "B"), "2");
    EXPECT_TRUE(t.Op.Messages.empty());
}

TEST(MessageTable, UnknownKeyOfAnExistingSectionIsNotDefined) {
    LoadedTable t("[S]\nA=1\n");
    EXPECT_EQ(t.Table.Get("S", "Z"), "Message Not Define");
    EXPECT_EQ(t.Table.Get("X", "A"), "Message Not Define");
}

TEST(MessageTable, SectionsOfTheSameNameAreAllSearchedFirstMatchWins) {
    LoadedTable t("[S]\nA=1\nA=9\n[T]\nB=0\n[S]\nA=2\nB=3\n");
    EXPECT_EQ(t.Table.Get("S", "A"), "1");
    EXPECT_EQ(t.Table.Get("S", "B"), "3");
}

TEST(MessageTable, FileDefaultEndsTheTable) {
    LoadedTable t("[S]\nA=1\n[FileDefault]\nB=2\n[T]\nC=3\n");
    EXPECT_EQ(t.Result, 0);
    EXPECT_EQ(t.Table.Get("S", "A"), "1");
    EXPECT_EQ(t.Table.Get("S", "B"), kMessageNotDefine);
    EXPECT_EQ(t.Table.Get("T", "C"), kMessageNotDefine);
}

TEST(MessageTable, CommentsBlankLinesAndIndentedLinesAreIgnored) {
    LoadedTable t("[S]\n; A=1\n\n B=2\n\r\nC=3\n");
    EXPECT_EQ(t.Table.Get("S", "A"), kMessageNotDefine);
    EXPECT_EQ(t.Table.Get("S", " B"), kMessageNotDefine);
    EXPECT_EQ(t.Table.Get("S", "C"), "3");
    EXPECT_TRUE(t.Op.Messages.empty());
}

TEST(MessageTable, LongSectionNameIsCutTo63Characters) {
    const std::string name(70, 's');
    LoadedTable t("[" + name + "]\nA=1\n");
    EXPECT_EQ(t.Table.Get(name.substr(0, 63), "A"), "1");
    EXPECT_EQ(t.Table.Get(name, "A"), kMessageNotDefine);
}

TEST(MessageTable, InvalidKeyLinesAreReportedWithThePathAndSkipped) {
    const std::string key31(31, 'k');
    const std::string key32(32, 'k');
    LoadedTable t("[S]\nno equals\n=empty key\n" + key32 + "=long\n" + key31 + "=ok\nB=2\n");
    EXPECT_EQ(t.Result, 0);
    const std::string message = "Invalid Key in the Specified File:[" + t.Path + "]";
    EXPECT_EQ(t.Op.Messages, (std::vector<std::string>{message, message, message}));
    EXPECT_EQ(t.Table.Get("S", key31), "ok");
    EXPECT_EQ(t.Table.Get("S", key32), kMessageNotDefine);
    EXPECT_EQ(t.Table.Get("S", "B"), "2");
}

TEST(MessageTable, ValueIsCutAt255Characters) {
    LoadedTable t("[S]\nA=" + std::string(300, 'v') + "\n");
    EXPECT_EQ(t.Table.Get("S", "A"), std::string(255, 'v'));
}

TEST(MessageTable, CarriageReturnLineFeedFilesReadLikeLineFeedFiles) {
    LoadedTable t("[S]\r\nA=1 2\r\n[T]\r\nB=\"x y\"\r\n");
    EXPECT_EQ(t.Table.Get("S", "A"), "12");
    EXPECT_EQ(t.Table.Get("T", "B"), "\"x y\"");
}

TEST(MessageTable, LastLineWithoutLineFeedIsNotRead) {
    LoadedTable t("[S]\nA=1\nB=2");
    EXPECT_EQ(t.Table.Get("S", "A"), "1");
    EXPECT_EQ(t.Table.Get("S", "B"), kMessageNotDefine);
}

TEST(MessageTable, MissingFileFailsWithOpenErrorMessage) {
    RecordingOperator recorder;
    TempFolder folder;
    MessageTable table;
    const std::string path = folder / "none.ini";
    EXPECT_EQ(table.Load(path, recorder), -1);
    EXPECT_FALSE(table.Loaded());
    ASSERT_EQ(recorder.Messages.size(), 1u);
    EXPECT_EQ(recorder.Messages[0], "File Open Error!![" + path + "]");
}

TEST(MessageTable, EmptyFileLoadsAnEmptyTable) {
    LoadedTable t("");
    EXPECT_EQ(t.Result, 0);
    EXPECT_TRUE(t.Table.Loaded());
    EXPECT_EQ(t.Table.Get("S", "A"), kMessageNotDefine);
}

TEST(MessageTable, LookupBeforeLoadAndAfterFreeIsNotDefined) {
    MessageTable table;
    EXPECT_FALSE(table.Loaded());
    EXPECT_EQ(table.Get("S", "A"), kMessageNotDefine);
    table.Free();
    LoadedTable t("[S]\nA=1\n");
    t.Table.Free();
    EXPECT_FALSE(t.Table.Loaded());
    EXPECT_EQ(t.Table.Get("S", "A"), kMessageNotDefine);
}

TEST(MessageTable, ReloadReplacesThePreviousTable) {
    LoadedTable t("[S]\nA=1\n");
    WriteFile(t.Folder / "other.ini", "[S]\nB=2\n");
    EXPECT_EQ(t.Table.Load(t.Folder / "other.ini", t.Op), 0);
    EXPECT_EQ(t.Table.Get("S", "A"), kMessageNotDefine);
    EXPECT_EQ(t.Table.Get("S", "B"), "2");
}

TEST(MessageFile, ServicesTableLoadsGetsAndFrees) {
    TempFolder folder;
    WriteFile(folder / "Kesto.ini", "[KakuDlg]\nMsg007=2,\"Seven pieces\"\n");
    test::TestServices services;
    MessageTable& table = services.Get().Messages;
    table.Free();
    EXPECT_FALSE(table.Loaded());
    EXPECT_EQ(table.Get("KakuDlg", "Msg007"), kMessageNotDefine);
    ASSERT_EQ(table.Load(folder / "Kesto.ini", services.Op), 0);
    EXPECT_TRUE(table.Loaded());
    EXPECT_EQ(table.Get("KakuDlg", "Msg007"), "2,\"Seven pieces\"");
    table.Free();
    EXPECT_FALSE(table.Loaded());
    EXPECT_EQ(table.Get("KakuDlg", "Msg007"), kMessageNotDefine);
    table.Free();
}

TEST(MessageFile, LoadOfAMissingFileFails) {
    RecordingOperator recorder;
    TempFolder folder;
    MessageTable table;
    EXPECT_EQ(table.Load(folder / "missing.ini", recorder), -1);
    EXPECT_FALSE(table.Loaded());
    EXPECT_EQ(recorder.Messages.size(), 1u);
}

TEST(GetFontText, SplitsFontNumberAndText) {
    TempFolder folder;
    WriteFile(folder / "Kesto.ini", "[Dlg]\nTitle=3,\"Pallet  list\"\nPlain=x\n");
    RecordingOperator recorder;
    MessageTable table;
    ASSERT_EQ(table.Load(folder / "Kesto.ini", recorder), 0);
    const FontText title = table.GetFontText("Dlg", "Title");
    EXPECT_EQ(title.Font, 3);
    EXPECT_EQ(title.Text, "Pallet  list");
    const FontText plain = table.GetFontText("Dlg", "Plain");
    EXPECT_EQ(plain.Font, 0);
    EXPECT_EQ(plain.Text, "");
    const FontText missing = table.GetFontText("Dlg", "None");
    EXPECT_EQ(missing.Font, 0);
    EXPECT_EQ(missing.Text, "");
}

TEST(KakuKey, HasAtLeastThreeDigits) {
    EXPECT_EQ(KakuKey(7), "Msg007");
    EXPECT_EQ(KakuKey(208), "Msg208");
    EXPECT_EQ(KakuKey(1234), "Msg1234");
}

}  // namespace
}  // namespace kesto
