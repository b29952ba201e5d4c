#include "support/TextFile.h"

#include <sys/stat.h>

#include <gtest/gtest.h>

#include <algorithm>
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

// The splitting rule byte by byte, as a fixed field buffer of 128 bytes takes it: the
// reference that the splitter's faster walk must agree with.
FieldList SplitByteByByte(const std::string& source) {
    FieldList list;
    const std::string line = source.substr(0, kLineSize - 1);
    std::string buffer;
    int quotes = 0;
    auto append = [&buffer](char c) {
        if (buffer.size() < kFieldSize - 1)
            buffer.push_back(c);
    };
    auto store = [&] {
        if (list.Count < kFieldCount)
            list.Fields[list.Count++] = buffer.substr(0, buffer.find('\0'));
        buffer.clear();
    };
    for (size_t i = 0;; ++i) {
        const char c = i < line.size() ? line[i] : '\0';
        const auto byte = static_cast<unsigned char>(c);
        if (byte >= 0x80 && byte <= 0x9C) {
            append(c);
            if (i + 1 < line.size())
                append(line[i + 1]);
            ++i;
        } else if (c == '\0' || c == '\n' || c == '\r') {
            store();
            return list;
        } else if (c == ',' && quotes != 1) {
            store();
        } else if (c == '"') {
            if (++quotes == 2)
                quotes = 0;
            else
                list.QuoteMarks[buffer.size()] = true;
        } else {
            append(c);
        }
    }
}

TEST(SplitFields, AgreesWithTheByteByByteRuleOnRandomLines) {
    std::mt19937_64 random(17);
    const std::string alphabet = std::string("ab ,,\"\t\r\n\x81\x9c\x9d\xe0") + '\0';
    FieldList reused;
    for (int n = 0; n < 20000; ++n) {
        std::string line;
        const size_t length = random() % (n % 10 == 0 ? 1500 : 60);
        for (size_t i = 0; i < length; ++i)
            line += (random() % 4 == 0) ? alphabet[random() % alphabet.size()] : 'x';
        const FieldList expected = SplitByteByByte(line);
        reused.Line = line;
        SplitFields(reused);
        ASSERT_EQ(reused.Count, expected.Count) << n;
        EXPECT_EQ(reused.Fields, expected.Fields) << n;
        EXPECT_EQ(reused.QuoteMarks, expected.QuoteMarks) << n;
    }
}

TEST(WordsToLine, LeadingBlanksGiveNoEmptyFirstField) {
    FieldList list;
    WordsToLine("  one two three four five", list);
    SplitFieldsTrim(list);
    ASSERT_EQ(list.Count, 5);
    EXPECT_EQ(list[0], "one");
    EXPECT_EQ(list[1], "two");
    EXPECT_EQ(list[2], "three");
    EXPECT_EQ(list[3], "four");
    EXPECT_EQ(list[4], "five");
}

TEST(WordsToLine, OnlyTheLastBlankOfARunBecomesAComma) {
    FieldList list;
    WordsToLine("a   b\tc", list);
    EXPECT_EQ(list.Line, "a  ,b\tc");
    SplitFieldsTrim(list);
    ASSERT_EQ(list.Count, 2);
    EXPECT_EQ(list[0], "a");
    EXPECT_EQ(list[1], "b c");
}

// SplitWords against WordsToLine and SplitFieldsTrim, both splitting line after line into one
// list each: lines of plain words (taken at once) and lines of every other kind (blanks at
// either end, tabs, quotes, commas, lead bytes, zero bytes, carriage returns, words about the
// room of a field, many words, over-long lines), in random order.
TEST(SplitWords, SplitsEveryLineAsWordsToLineAndTheTrimmingSplit) {
    std::mt19937 random(20261127);
    const std::string odd = std::string("\t\",,\x81\x9C\xE0\r", 8) + std::string(1, '\0');
    FieldList fast;
    FieldList general;
    for (int n = 0; n < 50000; ++n) {
        // Now and then a long run of blanks before the first word, which its field holds too.
        std::string line(n % 7 == 0 ? 100 + random() % 30 : 0, ' ');
        const int words = static_cast<int>(random() % (n % 50 == 0 ? 200 : 12));
        for (int w = 0; w < words; ++w) {
            line.append(random() % 3, ' ');
            const size_t length = random() % 8 == 0 ? 120 + random() % 20 : 1 + random() % 9;
            for (size_t i = 0; i < length; ++i) {
                const bool plain = n % 2 == 0 || random() % 40 != 0;
                line += plain ? static_cast<char>('!' + random() % 94) : odd[random() % odd.size()];
            }
        }
        if (n % 97 == 0)
            line.append(1100, 'x');
        SplitWords(line, fast);
        WordsToLine(line, general);
        SplitFieldsTrim(general);
        ASSERT_EQ(fast.Count, general.Count) << n << " " << line;
        EXPECT_EQ(fast.Fields, general.Fields) << n << " " << line;
        EXPECT_EQ(fast.QuoteMarks, general.QuoteMarks) << n;
        EXPECT_EQ(fast.Line, general.Line) << n;
    }
}

TEST(SplitWords, BlanksAloneAreOneEmptyField) {
    FieldList list;
    SplitWords("a b c", list);
    SplitWords("   ", list);
    ASSERT_EQ(list.Count, 1);
    EXPECT_EQ(list[0], "");
    EXPECT_EQ(list[1], "");
    EXPECT_EQ(list[2], "");
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

TEST(TrimLine, EveryModeAgreesWithTrimmingEachEndOnRandomTexts) {
    std::mt19937_64 random(3);
    for (int n = 0; n < 20000; ++n) {
        std::string text;
        for (size_t i = random() % 12; i > 0; --i)
            text += " \tab"[random() % 4];
        const int mode = static_cast<int>(random() % 4);
        std::string expected = text;
        std::replace(expected.begin(), expected.end(), '\t', ' ');
        if (mode >= 2)
            expected.erase(expected.find_last_not_of(' ') + 1);
        if (mode % 2 == 1)
            expected.erase(0, std::min(expected.find_first_not_of(' '), expected.size()));
        std::string trimmed = text;
        TrimLine(trimmed, mode);
        EXPECT_EQ(trimmed, expected) << "'" << text << "' mode " << mode;
    }
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

TEST(OpenFile, FifoIsRefusedWithoutWaitingForAWriter) {
#ifdef _WIN32
    GTEST_SKIP() << "no FIFOs on Windows";
#else
    // A plain open would block here until some process opened the FIFO for writing.
    TempFolder folder;
    const std::string fifo = folder / "pipe.txt";
    ASSERT_EQ(::mkfifo(fifo.c_str(), 0600), 0);
    TextFile file;
    EXPECT_EQ(OpenFile(fifo, "rt", file), 0);
    EXPECT_FALSE(file);
    EXPECT_EQ(FileExists(fifo), 1);
#endif
}

TEST(ReadWholeFile, TellsAMissingPathFromOneThatCannotBeRead) {
    TempFolder folder;
    std::string bytes = "old";
    EXPECT_EQ(ReadWholeFile(folder / "none.txt", bytes), WholeFile::Missing);
    EXPECT_EQ(bytes, "");
    EXPECT_EQ(ReadWholeFile("", bytes), WholeFile::Missing);
    EXPECT_EQ(ReadWholeFile(folder.Path().string(), bytes), WholeFile::Unreadable);
#ifndef _WIN32
    const std::string fifo = folder / "pipe.txt";
    ASSERT_EQ(::mkfifo(fifo.c_str(), 0600), 0);
    EXPECT_EQ(ReadWholeFile(fifo, bytes), WholeFile::Unreadable);
#endif
}

TEST(ReadWholeFile, ReadsEveryByteOfSmallEmptyAndLargeFiles) {
    TempFolder folder;
    std::string bytes;
    WriteFile(folder / "empty.txt", "");
    EXPECT_EQ(ReadWholeFile(folder / "empty.txt", bytes), WholeFile::Read);
    EXPECT_EQ(bytes, "");
    const std::string odd = std::string("a\0b\r\n\x1a", 6) + "\nlast";
    WriteFile(folder / "odd.txt", odd);
    EXPECT_EQ(ReadWholeFile(folder / "odd.txt", bytes), WholeFile::Read);
    EXPECT_EQ(bytes, odd);
    std::string large(3 * 1000 * 1000, 'x');
    for (size_t i = 0; i < large.size(); i += 97)
        large[i] = '\n';
    WriteFile(folder / "large.txt", large);
    EXPECT_EQ(ReadWholeFile(folder / "large.txt", bytes), WholeFile::Read);
    EXPECT_EQ(bytes, large);
}

TEST(NextLine, DeliversTheLinesReadLineDeliversFromTheFile) {
    TempFolder folder;
    const std::string text = std::string("one\r\ntwo\r\r\n\nz\0ero\n\r\nlast", 24);
    WriteFile(folder / "lines.txt", text);
    const std::vector<std::string> fromFile = ReadAll(folder / "lines.txt");
    std::vector<std::string> fromMemory;
    size_t at = 0;
    std::string line;
    while (NextLine(text, at, line) >= 0)
        fromMemory.push_back(line);
    EXPECT_EQ(fromMemory, fromFile);
    EXPECT_EQ(fromMemory,
              (std::vector<std::string>{"one", "two\r", "", std::string("z\0ero", 5), ""}));
    EXPECT_EQ(line, "last");
    EXPECT_EQ(NextLine(text, at, line), -1);
}

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
