#include "support/TextFile.h"

#include <sys/stat.h>

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <cstring>
#include <random>
#include <string>
#include <vector>

#include "common/TestFiles.h"
#include "common/TestServices.h"
#include "support/TextFormat.h"

namespace kesto {
namespace {

using test::RecordingOperator;
using test::TempFolder;
using test::WriteFile;

FieldList Split(const std::string& line) {
    FieldList list;
    list.Line = line;
    SplitFields(list);
    return list;
}

FieldList SplitTrim(const std::string& line) {
    FieldList list;
    SplitLine(line, list);
    return list;
}

std::vector<std::string> ReadAll(const std::string& path) {
    TextFile file;
    EXPECT_EQ(OpenFile(path, "rt", file), 1);
    std::vector<std::string> lines;
    std::string line;
    while (ReadLine(line, file.get()) >= 0)
        lines.push_back(line);
    return lines;
}

TEST(SplitFields, QuotedCommaStaysInsideTheField) {
    const FieldList list = Split("a,\"b,c\",d");
    ASSERT_EQ(list.Count, 3);
    EXPECT_EQ(list[0], "a");
    EXPECT_EQ(list[1], "b,c");
    EXPECT_EQ(list[2], "d");
}

TEST(SplitFieldsTrim, FieldQuotedFromItsFirstCharacterStaysUntrimmed) {
    const FieldList list = SplitTrim("\" x \",  y  ");
    ASSERT_EQ(list.Count, 2);
    EXPECT_TRUE(list.QuoteMarks[0]);
    EXPECT_EQ(list[0], " x ");
    EXPECT_EQ(list[1], "y");
}

TEST(SplitFieldsTrim, QuoteAfterTwoCharactersSparesFieldTwoFromTrimming) {
    const FieldList list = SplitTrim("ab\"cd\" , e ,  f  , g ");
    ASSERT_EQ(list.Count, 4);
    EXPECT_TRUE(list.QuoteMarks[2]);
    EXPECT_FALSE(list.QuoteMarks[0]);
    EXPECT_EQ(list[0], "abcd");
    EXPECT_EQ(list[1], "e");
    EXPECT_EQ(list[2], "  f  ");
    EXPECT_EQ(list[3], "g");
}

TEST(ReadLine, CarriageReturnBeforeLineFeedGivesTheSameFields) {
    TempFolder folder;
    WriteFile(folder / "crlf.txt", "a, b ,c\r\n");
    WriteFile(folder / "lf.txt", "a, b ,c\n");
    const auto crlf = ReadAll(folder / "crlf.txt");
    const auto lf = ReadAll(folder / "lf.txt");
    ASSERT_EQ(crlf.size(), 1u);
    ASSERT_EQ(lf.size(), 1u);
    EXPECT_EQ(crlf[0], lf[0]);
    const FieldList a = SplitTrim(crlf[0]);
    const FieldList b = SplitTrim(lf[0]);
    ASSERT_EQ(a.Count, 3);
    EXPECT_EQ(a.Count, b.Count);
    EXPECT_EQ(a.Fields, b.Fields);
    EXPECT_EQ(a[1], "b");
}

TEST(ReadLine, LastLineWithoutLineFeedIsNotDelivered) {
    TempFolder folder;
    WriteFile(folder / "f.txt", "one\ntwo\nthree");
    EXPECT_EQ(ReadAll(folder / "f.txt"), (std::vector<std::string>{"one", "two"}));
}

TEST(ReadLine, ReturnsTheLengthAndMinusOneAtTheEnd) {
    TempFolder folder;
    WriteFile(folder / "f.txt", "abc\n\n");
    TextFile file;
    ASSERT_EQ(OpenFile(folder / "f.txt", "rt", file), 1);
    std::string line;
    EXPECT_EQ(ReadLine(line, file.get()), 3);
    EXPECT_EQ(ReadLine(line, file.get()), 0);
    EXPECT_EQ(line, "");
    EXPECT_EQ(ReadLine(line, file.get()), -1);
}

TEST(ReadLine, LoneCarriageReturnStaysAByteOfTheLine) {
    TempFolder folder;
    WriteFile(folder / "f.txt", "a\rb\n");
    const auto lines = ReadAll(folder / "f.txt");
    ASSERT_EQ(lines.size(), 1u);
    EXPECT_EQ(lines[0], "a\rb");
    const FieldList list = Split(lines[0]);
    ASSERT_EQ(list.Count, 1);
    EXPECT_EQ(list[0], "a");
}

TEST(ReadLine, NoFileGivesMinusOne) {
    std::string line = "old";
    EXPECT_EQ(ReadLine(line, nullptr), -1);
}

TEST(SplitFields, TwoByteLeadKeepsAFollowingCommaInTheField) {
    const FieldList list = Split("a\x8c,b,c");
    ASSERT_EQ(list.Count, 2);
    EXPECT_EQ(list[0], "a\x8c,b");
    EXPECT_EQ(list[1], "c");
}

TEST(SplitFields, TwoByteLeadKeepsAFollowingQuoteInTheField) {
    const FieldList list = Split("\x9c\"x,y");
    ASSERT_EQ(list.Count, 2);
    EXPECT_EQ(list[0], "\x9c\"x");
    EXPECT_FALSE(list.QuoteMarks[0]);
}

TEST(SplitFields, TwoByteLeadAtTheEndOfTheLineEndsTheLine) {
    const FieldList list = Split("a,b\x80");
    ASSERT_EQ(list.Count, 2);
    EXPECT_EQ(list[1], "b\x80");
}

TEST(SplitFields, ByteAboveTheLeadRangeIsAnOrdinaryCharacter) {
    const FieldList list = Split("\x9d,x");
    ASSERT_EQ(list.Count, 2);
    EXPECT_EQ(list[0], "\x9d");
}

TEST(SplitWords, LeadingBlanksGiveNoEmptyFirstField) {
    FieldList list;
    SplitWords("  one two three four five", list);
    SplitFieldsTrim(list);
    ASSERT_EQ(list.Count, 5);
    EXPECT_EQ(list[0], "one");
    EXPECT_EQ(list[1], "two");
    EXPECT_EQ(list[2], "three");
    EXPECT_EQ(list[3], "four");
    EXPECT_EQ(list[4], "five");
}

TEST(SplitWords, OnlyTheLastBlankOfARunBecomesAComma) {
    FieldList list;
    SplitWords("a   b\tc", list);
    EXPECT_EQ(list.Line, "a  ,b\tc");
    ASSERT_EQ(list.Count, 2);
    SplitFieldsTrim(list);
    EXPECT_EQ(list[0], "a");
    EXPECT_EQ(list[1], "b c");
}

TEST(SplitFields, CommasGiveOneFieldMoreThanTheyAre) {
    EXPECT_EQ(Split(",,,").Count, 4);
    const FieldList empty = Split("");
    EXPECT_EQ(empty.Count, 1);
    EXPECT_EQ(empty[0], "");
    const FieldList trailing = Split("a,b,");
    EXPECT_EQ(trailing.Count, 3);
    EXPECT_EQ(trailing[2], "");
}

TEST(SplitFields, FieldsBeyondTheCountAreEmpty) {
    const FieldList list = Split("a,b");
    EXPECT_EQ(list[2], "");
    EXPECT_EQ(list[127], "");
    EXPECT_EQ(list[-1], "");
    EXPECT_EQ(list[128], "");
    EXPECT_EQ(AtoL(list[5]), 0);
}

TEST(SplitFields, EverySplitClearsThePreviousFields) {
    FieldList list;
    list.Line = "\"a\",b,c,d";
    SplitFields(list);
    list.Line = "x";
    SplitFields(list);
    EXPECT_EQ(list.Count, 1);
    EXPECT_EQ(list[1], "");
    EXPECT_FALSE(list.QuoteMarks[0]);
}

TEST(SplitFields, LineFeedAndZeroByteEndTheLine) {
    EXPECT_EQ(Split("a,b\nc,d").Count, 2);
    EXPECT_EQ(Split(std::string("a,b\0c,d", 7)).Count, 2);
}

TEST(SplitFields, UnclosedQuoteKeepsTheRestInOneField) {
    const FieldList list = Split("a,\"b,c,d");
    ASSERT_EQ(list.Count, 2);
    EXPECT_EQ(list[1], "b,c,d");
    EXPECT_TRUE(list.QuoteMarks[0]);
}

TEST(SplitFields, LongFieldIsCutAt127Bytes) {
    const FieldList list = Split(std::string(300, 'x') + ",y");
    ASSERT_EQ(list.Count, 2);
    EXPECT_EQ(list[0], std::string(127, 'x'));
    EXPECT_EQ(list[1], "y");
}

TEST(SplitFields, QuoteAfterACutFieldMarksTheLastSlot) {
    const FieldList list = Split(std::string(200, 'x') + "\"q\"");
    EXPECT_TRUE(list.QuoteMarks[127]);
    EXPECT_EQ(list[0], std::string(127, 'x'));
}

TEST(SplitFields, FieldsAfterThe128thAreIgnored) {
    std::string line;
    for (int i = 0; i < 200; ++i)
        line += std::to_string(i) + ",";
    const FieldList list = Split(line);
    EXPECT_EQ(list.Count, 128);
    EXPECT_EQ(list[127], "127");
}

TEST(SplitFields, OnlyTheFirst1023BytesOfALineAreLookedAt) {
    const FieldList list = Split(std::string(1022, ',') + "ab");
    EXPECT_EQ(list.Count, 128);
    const FieldList tail = Split(std::string(1020, 'x') + ",abcdef");
    ASSERT_EQ(tail.Count, 2);
    EXPECT_EQ(tail[1], "ab");
}

TEST(SplitFieldsTrim, RepeatsTheSplitFromTheLine) {
    FieldList list;
    list.Line = " a , b ";
    SplitFields(list);
    EXPECT_EQ(list[0], " a ");
    SplitFieldsTrim(list);
    EXPECT_EQ(list.Count, 2);
    EXPECT_EQ(list[0], "a");
    EXPECT_EQ(list[1], "b");
    EXPECT_EQ(list.Line, " a , b ");
}

TEST(SplitFieldsTrim, TabsBecomeBlanksInTrimmedFields) {
    const FieldList list = SplitTrim("\ta\tb\t");
    EXPECT_EQ(list[0], "a b");
}

TEST(TrimLine, ModesTrimTheirEnds) {
    std::string text = "\t a \t";
    TrimLine(text, 0);
    EXPECT_EQ(text, "  a  ");
    text = "\t a \t";
    TrimLine(text, 1);
    EXPECT_EQ(text, "a  ");
    text = "\t a \t";
    TrimLine(text, 2);
    EXPECT_EQ(text, "  a");
    text = "\t a \t";
    TrimLine(text, 3);
    EXPECT_EQ(text, "a");
    text = "   ";
    TrimLine(text, 3);
    EXPECT_EQ(text, "");
}

TEST(WriteLine, WritesTheTextAndALineFeed) {
    TempFolder folder;
    {
        TextFile file;
        ASSERT_EQ(OpenFile(folder / "out.txt", "wt", file), 1);
        EXPECT_EQ(WriteLine("a,b", file.get()), 1);
        EXPECT_EQ(WriteLine("", file.get()), 1);
    }
    EXPECT_EQ(test::ReadFile(folder / "out.txt"), test::TextModeBytes("a,b\n\n"));
}

TEST(WriteLine, CutsTheTextAt1023Bytes) {
    TempFolder folder;
    {
        TextFile file;
        ASSERT_EQ(OpenFile(folder / "out.txt", "w", file), 1);
        EXPECT_EQ(WriteLine(std::string(2000, 'z'), file.get()), 1);
    }
    EXPECT_EQ(test::ReadFile(folder / "out.txt"),
              test::TextModeBytes(std::string(1023, 'z') + "\n"));
}

#ifdef _WIN32
TEST(WriteLine, LinesEndInCarriageReturnLineFeedOnWindows) {
    TempFolder folder;
    {
        TextFile file;
        ASSERT_EQ(OpenFile(folder / "out.txt", "wt", file), 1);
        EXPECT_EQ(WriteLine("x", file.get()), 1);
    }
    EXPECT_EQ(test::ReadFile(folder / "out.txt"), "x\r\n");
}

TEST(ReadLine, CtrlZIsAByteOfTheLineNotTheEndOfTheFile) {
    TempFolder folder;
    WriteFile(folder / "f.txt",
              "a\x1a"
              "b\r\nc\n");
    TextFile file;
    ASSERT_EQ(OpenFile(folder / "f.txt", "rt", file), 1);
    std::string line;
    EXPECT_EQ(ReadLine(line, file.get()), 3);
    EXPECT_EQ(line,
              "a\x1a"
              "b");
    EXPECT_EQ(ReadLine(line, file.get()), 1);
    EXPECT_EQ(line, "c");
}
#endif

TEST(WriteLine, FailsOnAFileNotOpenForWriting) {
    TempFolder folder;
    WriteFile(folder / "in.txt", "x\n");
    TextFile file;
    ASSERT_EQ(OpenFile(folder / "in.txt", "r", file), 1);
    EXPECT_EQ(WriteLine("abc", file.get()), 0);
    EXPECT_EQ(WriteLine("abc", nullptr), 0);
}

TEST(OpenFile, MissingFileGivesZeroAndNoHandle) {
    TempFolder folder;
    TextFile file;
    EXPECT_EQ(OpenFile(folder / "missing.txt", "rt", file), 0);
    EXPECT_FALSE(file);
}

TEST(OpenFile, FolderCannotBeOpenedForReading) {
    TempFolder folder;
    TextFile file;
    EXPECT_EQ(OpenFile(folder.Path().string(), "rt", file), 0);
    EXPECT_FALSE(file);
}

#ifndef _WIN32
TEST(OpenFile, FifoIsRefusedWithoutWaitingForAWriter) {
    // A plain open would block here until some process opened the FIFO for writing.
    TempFolder folder;
    const std::string fifo = folder / "pipe.txt";
    ASSERT_EQ(::mkfifo(fifo.c_str(), 0600), 0);
    TextFile file;
    EXPECT_EQ(OpenFile(fifo, "rt", file), 0);
    EXPECT_FALSE(file);
    EXPECT_EQ(FileExists(fifo), 1);
}
#endif

TEST(OpenFile, RegularFileIsReadFromItsStart) {
    TempFolder folder;
    WriteFile(folder / "f.txt", "ab\ncd\n");
    TextFile file;
    ASSERT_EQ(OpenFile(folder / "f.txt", "rt", file), 1);
    std::string line;
    EXPECT_EQ(ReadLine(line, file.get()), 2);
    EXPECT_EQ(line, "ab");
    EXPECT_EQ(ReadLine(line, file.get()), 2);
    EXPECT_EQ(line, "cd");
    EXPECT_EQ(ReadLine(line, file.get()), -1);
}

TEST(TextFile, MoveHandsTheFileOver) {
    TempFolder folder;
    WriteFile(folder / "f.txt", "line\n");
    TextFile first;
    ASSERT_EQ(OpenFile(folder / "f.txt", "r", first), 1);
    TextFile second(std::move(first));
    EXPECT_FALSE(first);
    ASSERT_TRUE(second);
    std::string line;
    EXPECT_EQ(ReadLine(line, second.get()), 4);
    second.Close();
    EXPECT_FALSE(second);
}

TEST(FileExists, FileAndFolderExist) {
    TempFolder folder;
    WriteFile(folder / "f.txt", "");
    RecordingOperator recorder;
    EXPECT_EQ(FileExists(folder / "f.txt", recorder), 1);
    EXPECT_EQ(FileExists(folder.Path().string(), recorder), 1);
    EXPECT_EQ(FileExists(folder / "f.txt"), 1);
    EXPECT_TRUE(recorder.Messages.empty());
}

TEST(FileExists, MissingFileIsReportedOnlyWhenAsked) {
    TempFolder folder;
    RecordingOperator recorder;
    const std::string path = folder / "missing.txt";
    EXPECT_EQ(FileExists(path), 0);
    EXPECT_TRUE(recorder.Messages.empty());
    EXPECT_EQ(FileExists(path, recorder), 0);
    ASSERT_EQ(recorder.Messages.size(), 1u);
    EXPECT_EQ(recorder.Messages[0], " File Not Found : " + path);
    EXPECT_EQ(FileExists(""), 0);
}

TEST(FileExists, MessageIsCutAt127Characters) {
    RecordingOperator recorder;
    const std::string path = "/no/such/" + std::string(300, 'p');
    EXPECT_EQ(FileExists(path, recorder), 0);
    ASSERT_EQ(recorder.Messages.size(), 1u);
    EXPECT_EQ(recorder.Messages[0].size(), 127u);
    EXPECT_EQ(recorder.Messages[0].rfind(" File Not Found : /no/such/ppp", 0), 0u);
}

TEST(AtoL, ReadsLikeAtol) {
    EXPECT_EQ(AtoL("  42abc"), 42);
    EXPECT_EQ(AtoL("-17"), -17);
    EXPECT_EQ(AtoL("+5"), 5);
    EXPECT_EQ(AtoL("abc"), 0);
    EXPECT_EQ(AtoL(""), 0);
    EXPECT_EQ(AtoL("- 3"), 0);
}

TEST(AtoL, SaturatesAtThe32BitLimits) {
    EXPECT_EQ(AtoL("2147483647"), 2147483647);
    EXPECT_EQ(AtoL("2147483648"), 2147483647);
    EXPECT_EQ(AtoL("99999999999999999999"), 2147483647);
    EXPECT_EQ(AtoL("-2147483648"), -2147483647 - 1);
    EXPECT_EQ(AtoL("-99999999999"), -2147483647 - 1);
}

TEST(AtoF, ReadsLikeAtof) {
    EXPECT_DOUBLE_EQ(AtoF(" 3.5mm"), 3.5);
    EXPECT_DOUBLE_EQ(AtoF("-1e2"), -100.0);
    EXPECT_DOUBLE_EQ(AtoF("x"), 0.0);
}

TEST(AtoF, ReadsEveryNumberAsStrtodDoes) {
    std::vector<std::string> texts = {"",
                                      " ",
                                      "+",
                                      "-",
                                      ".",
                                      "-.",
                                      ".5",
                                      "-.5e1",
                                      "+7.",
                                      "1.e3",
                                      "0x1p3",
                                      "-0X10",
                                      "00x1",
                                      "inf",
                                      "-nan",
                                      "infinity",
                                      "1e400",
                                      "-1e400",
                                      "1e-400",
                                      "2.2250738585072011e-308",
                                      "4.9e-324",
                                      "\t\n 12",
                                      "1,5",
                                      "1e",
                                      "1e+",
                                      "-0",
                                      "+0.0e-0",
                                      "123456789012345678901234567890",
                                      "0.1000000000000000055511151231257827021181583404541015625"};
    std::mt19937_64 random(5);
    const char alphabet[] = "0123456789.eE+- x";
    for (int n = 0; n < 20000; ++n) {
        std::string text;
        const size_t length = random() % 14;
        for (size_t i = 0; i < length; ++i)
            text += alphabet[random() % (sizeof alphabet - 1)];
        texts.push_back(text);
        texts.push_back(FormatText(
            "%.*g", static_cast<int>(random() % 20),
            std::ldexp(static_cast<double>(random()), -static_cast<int>(random() % 200))));
    }
    for (const std::string& text : texts) {
        const double expected = std::strtod(text.c_str(), nullptr);
        const double read = AtoF(text);
        if (std::isnan(expected)) {
            EXPECT_TRUE(std::isnan(read)) << text;
            continue;
        }
        EXPECT_EQ(std::memcmp(&read, &expected, sizeof read), 0)
            << "'" << text << "': " << read << " instead of " << expected;
    }
}

TEST(CutField, KeepsWidthMinusOneBytes) {
    EXPECT_EQ(CutField("abcdef", 4), "abc");
    EXPECT_EQ(CutField("ab", 4), "ab");
    EXPECT_EQ(CutField("ab", 0), "");
}

}  // namespace
}  // namespace kesto
