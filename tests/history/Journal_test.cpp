// The journal: the exact text of every command, reading it back, every kind of damage a line
// or a header can have, the writer's file on the disk and the housekeeping of the folder.
#include "history/Journal.h"

#include <gtest/gtest.h>

#ifndef _WIN32
#include <sys/stat.h>
#include <unistd.h>
#endif

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <limits>
#include <string>
#include <vector>

#include "common/OutputTestKit.h"
#include "common/ScopedEnv.h"
#include "common/TestFiles.h"
#include "support/Paths.h"

namespace kesto {
namespace {

namespace fs = std::filesystem;
using test::ReadFile;
using test::ScopedEnv;
using test::TempFolder;
using test::WriteFile;

const std::string kJob = "0123456789abcdef0123456789abcdef0123456789abcdef0123456789abcdef";
const std::string kOtherJob = std::string(64, 'e');
const std::string kTime = "2024-05-06T07:08:09.010";
const std::string kHeader = "kesto-journal 1\njob " + kJob + "\n";

JournalCommand Make(JournalVerb verb) {
    JournalCommand command;
    command.Verb = verb;
    return command;
}

JournalCommand WithValue(JournalVerb verb, int32_t value) {
    JournalCommand command = Make(verb);
    command.Value = value;
    return command;
}

JournalCommand ViewCommand(PalletView view) {
    JournalCommand command = Make(JournalVerb::View);
    command.View = view;
    return command;
}

JournalCommand HitCommand(HitBy hit) {
    JournalCommand command = Make(JournalVerb::Hit);
    command.Hit = hit;
    return command;
}

JournalCommand LeftCommand(std::vector<int32_t> stacks) {
    JournalCommand command = Make(JournalVerb::Left);
    command.Stacks = std::move(stacks);
    return command;
}

JournalCommand SheetsCommand(int32_t stack, int32_t sheets) {
    JournalCommand command = Make(JournalVerb::Sheets);
    command.Stack = stack;
    command.Value = sheets;
    return command;
}

JournalCommand DropCommand() {
    JournalCommand command = Make(JournalVerb::Drop);
    command.ClientWidth = 800;
    command.ClientHeight = 600;
    command.Drop = IntRect{10, 20, 110, 70};
    command.Stacks = {3, 1};
    return command;
}

JournalCommand BandDropCommand(std::vector<int32_t> picks) {
    JournalCommand command = Make(JournalVerb::BandDrop);
    command.ClientWidth = 800;
    command.ClientHeight = 600;
    command.ShiftX = -15;
    command.ShiftY = 40;
    command.Band = {BandEntryAtPress{4, IntRect{1, 2, 3, 4}},
                    BandEntryAtPress{9, IntRect{-5, 6, 70, 80}}};
    command.Stacks = std::move(picks);
    return command;
}

// Every command as it is written, by hand.
struct Written {
    JournalCommand Command;
    const char* Text;
};

std::vector<Written> EveryCommand() {
    return {
        {WithValue(JournalVerb::Process, 2), "process 2"},
        {WithValue(JournalVerb::Pallet, 3), "pallet 3"},
        {ViewCommand(PalletView::Flat), "view flat"},
        {ViewCommand(PalletView::Danmen), "view danmen"},
        {ViewCommand(PalletView::FourPallet), "view 4pallet"},
        {ViewCommand(PalletView::TwoPallet), "view 2pallet"},
        {WithValue(JournalVerb::Direct, 1), "direct 1"},
        {WithValue(JournalVerb::Direct, 0), "direct 0"},
        {WithValue(JournalVerb::ThreeD, 1), "3d 1"},
        {WithValue(JournalVerb::Grid, 0), "grid 0"},
        {WithValue(JournalVerb::BlockDraw, 1), "blockdraw 1"},
        {HitCommand(HitBy::Block), "hit block"},
        {HitCommand(HitBy::Single), "hit single"},
        {WithValue(JournalVerb::Box, 101), "box 101"},
        {WithValue(JournalVerb::Down, 7), "down 7"},
        {WithValue(JournalVerb::Up, 0), "up 0"},
        {LeftCommand({5}), "left 5"},
        {LeftCommand({5, 2, 11}), "left 5 2 11"},
        {WithValue(JournalVerb::Right, 12), "right 12"},
        {SheetsCommand(4, 25), "sheets 4 25"},
        {DropCommand(), "drop 800 600 10 20 110 70 3 1"},
        {BandDropCommand({}), "banddrop 800 600 -15 40 4 1 2 3 4 9 -5 6 70 80 /"},
        {BandDropCommand({6, 2}), "banddrop 800 600 -15 40 4 1 2 3 4 9 -5 6 70 80 / 6 2"},
        {Make(JournalVerb::Retry), "retry"},
        {Make(JournalVerb::Auto), "auto"},
        {Make(JournalVerb::Undo), "undo"},
        {Make(JournalVerb::Redo), "redo"},
        {Make(JournalVerb::Ok), "ok"},
        {Make(JournalVerb::Cancel), "cancel"},
    };
}

ParsedJournalLine Parse(const std::string& rest) {
    return ParseJournalLine(kTime + " " + rest);
}

// The reason a line is malformed; "" when it is not.
std::string WhyMalformed(const std::string& rest) {
    const ParsedJournalLine parsed = Parse(rest);
    return parsed.Kind == ParsedJournalLine::Kind::Malformed ? parsed.Why : "";
}

// --- the text of the commands ---

TEST(JournalFormat, EveryCommandIsWrittenAsItsWordAndArguments) {
    for (const Written& written : EveryCommand())
        EXPECT_EQ(FormatJournalCommand(written.Command), written.Text);
}

TEST(JournalFormat, LineIsTheTimeTheCommandAndALineFeed) {
    EXPECT_EQ(JournalLine(kTime, WithValue(JournalVerb::Process, 2)),
              "2024-05-06T07:08:09.010 process 2\n");
    EXPECT_EQ(JournalLine(kTime, Make(JournalVerb::Ok)), "2024-05-06T07:08:09.010 ok\n");
}

TEST(JournalFormat, HeaderNamesTheVersionAndTheJob) {
    EXPECT_EQ(JournalHeader(kJob), "kesto-journal 1\njob " + kJob + "\n");
}

TEST(JournalFormat, ToggleOtherThanZeroIsWrittenAsOne) {
    EXPECT_EQ(FormatJournalCommand(WithValue(JournalVerb::BlockDraw, 7)), "blockdraw 1");
    EXPECT_EQ(FormatJournalCommand(WithValue(JournalVerb::Grid, -1)), "grid 1");
}

TEST(JournalFormat, FieldsTheVerbDoesNotUseAreNotWritten) {
    JournalCommand retry = DropCommand();
    retry.Verb = JournalVerb::Retry;
    EXPECT_EQ(FormatJournalCommand(retry), "retry");
    JournalCommand down = DropCommand();
    down.Verb = JournalVerb::Down;
    down.Value = 4;
    EXPECT_EQ(FormatJournalCommand(down), "down 4");
}

TEST(JournalFormat, WordsOfTheVerbs) {
    EXPECT_EQ(JournalWord(JournalVerb::ThreeD), "3d");
    EXPECT_EQ(JournalWord(JournalVerb::BandDrop), "banddrop");
    EXPECT_EQ(JournalWord(static_cast<JournalVerb>(99)), "");
}

// The time zone is the environment's; the clock of the test is fixed.
void SetTimeZone() {
#ifdef _WIN32
    _tzset();
#else
    tzset();
#endif
}

TEST(JournalFormat, TimeIsTheLocalTimeToTheMillisecond) {
    using namespace std::chrono;
    const system_clock::time_point newYear2000 = system_clock::from_time_t(946684800);
    {
        const ScopedEnv utc("TZ", "UTC0");
        SetTimeZone();
        EXPECT_EQ(JournalTimeText(newYear2000 + seconds(3723) + milliseconds(45)),
                  "2000-01-01T01:02:03.045");
        EXPECT_EQ(JournalTimeText(newYear2000 + microseconds(999999)), "2000-01-01T00:00:00.999");
        EXPECT_EQ(JournalTimeText(newYear2000 - milliseconds(1)), "1999-12-31T23:59:59.999");
    }
    {
        // Three hours west of Greenwich.
        const ScopedEnv west("TZ", "XYZ3");
        SetTimeZone();
        EXPECT_EQ(JournalTimeText(newYear2000 + seconds(3723)), "1999-12-31T22:02:03.000");
    }
    SetTimeZone();
}

TEST(JournalFormat, TimeOfNowIsReadBackAsATime) {
    const std::string now = JournalTimeText(std::chrono::system_clock::now());
    const ParsedJournalLine parsed = ParseJournalLine(now + " retry");
    EXPECT_EQ(parsed.Kind, ParsedJournalLine::Kind::Command) << now;
    EXPECT_EQ(parsed.Time, now);
}

TEST(JournalFormat, JobHexIsSixtyFourLowercaseHexDigits) {
    EXPECT_TRUE(IsJobHex(kJob));
    EXPECT_FALSE(IsJobHex(kJob.substr(1)));
    EXPECT_FALSE(IsJobHex(kJob + "0"));
    EXPECT_FALSE(IsJobHex("0123456789ABCDEF0123456789abcdef0123456789abcdef0123456789abcdef"));
    EXPECT_FALSE(IsJobHex(std::string(63, 'a') + "g"));
}

// --- reading a line ---

TEST(JournalParse, EveryCommandIsReadBack) {
    for (const Written& written : EveryCommand()) {
        const ParsedJournalLine parsed = Parse(written.Text);
        ASSERT_EQ(parsed.Kind, ParsedJournalLine::Kind::Command) << written.Text << parsed.Why;
        EXPECT_EQ(parsed.Command, written.Command) << written.Text;
        EXPECT_EQ(parsed.Time, kTime);
        EXPECT_EQ(parsed.Word, JournalWord(written.Command.Verb));
        EXPECT_EQ(parsed.Why, "");
    }
}

TEST(JournalParse, ArgumentsLandInTheirFields) {
    const ParsedJournalLine drop = Parse("drop 800 600 10 20 110 70 3 1");
    EXPECT_EQ(drop.Command.ClientWidth, 800);
    EXPECT_EQ(drop.Command.ClientHeight, 600);
    EXPECT_EQ(drop.Command.Drop, (IntRect{10, 20, 110, 70}));
    EXPECT_EQ(drop.Command.Stacks, (std::vector<int32_t>{3, 1}));
    const ParsedJournalLine band = Parse("banddrop 640 480 -3 5 7 1 2 3 4 / 8");
    EXPECT_EQ(band.Command.ShiftX, -3);
    EXPECT_EQ(band.Command.ShiftY, 5);
    ASSERT_EQ(band.Command.Band.size(), 1u);
    EXPECT_EQ(band.Command.Band[0].Stack, 7);
    EXPECT_EQ(band.Command.Band[0].Rect, (IntRect{1, 2, 3, 4}));
    EXPECT_EQ(band.Command.Stacks, (std::vector<int32_t>{8}));
    const ParsedJournalLine sheets = Parse("sheets 4 25");
    EXPECT_EQ(sheets.Command.Stack, 4);
    EXPECT_EQ(sheets.Command.Value, 25);
}

// A command of every verb with its fields set, numbers at the ends of their range included.
std::vector<JournalCommand> OneOfEveryVerb() {
    constexpr int32_t kLow = std::numeric_limits<int32_t>::min();
    constexpr int32_t kHigh = std::numeric_limits<int32_t>::max();
    std::vector<JournalCommand> commands;
    for (int v = 0; v <= static_cast<int>(JournalVerb::Cancel); ++v) {
        JournalCommand command = Make(static_cast<JournalVerb>(v));
        switch (command.Verb) {
            case JournalVerb::View:
                command.View = PalletView::TwoPallet;
                break;
            case JournalVerb::Hit:
                command.Hit = HitBy::Single;
                break;
            case JournalVerb::Direct:
            case JournalVerb::ThreeD:
            case JournalVerb::Grid:
            case JournalVerb::BlockDraw:
                command.Value = 1;
                break;
            case JournalVerb::Left:
                command.Stacks = {kLow, 0, kHigh};
                break;
            case JournalVerb::Sheets:
                command = SheetsCommand(kHigh, kLow);
                break;
            case JournalVerb::Drop:
                command = DropCommand();
                command.Drop.Left = kLow;
                command.Stacks.push_back(kHigh);
                break;
            case JournalVerb::BandDrop:
                command = BandDropCommand({kLow, kHigh});
                break;
            case JournalVerb::Process:
            case JournalVerb::Pallet:
            case JournalVerb::Box:
            case JournalVerb::Down:
            case JournalVerb::Up:
            case JournalVerb::Right:
                command.Value = v % 2 == 0 ? kHigh : kLow;
                break;
            default:
                break;
        }
        commands.push_back(command);
    }
    return commands;
}

TEST(JournalParse, EveryVerbComesBackAsItWasWritten) {
    const std::vector<JournalCommand> commands = OneOfEveryVerb();
    ASSERT_EQ(commands.size(), 22u);
    for (const JournalCommand& command : commands) {
        const std::string line = JournalLine(kTime, command);
        const ParsedJournalLine parsed = ParseJournalLine(line);
        ASSERT_EQ(parsed.Kind, ParsedJournalLine::Kind::Command) << line << parsed.Why;
        EXPECT_EQ(parsed.Command, command) << line;
        EXPECT_EQ(FormatJournalCommand(parsed.Command) + "\n", line.substr(kTime.size() + 1));
    }
}

TEST(JournalParse, LineEndsAreOptionalAndCrLfIsALineEnd) {
    EXPECT_EQ(ParseJournalLine(kTime + " undo\n").Kind, ParsedJournalLine::Kind::Command);
    EXPECT_EQ(ParseJournalLine(kTime + " undo\r\n").Kind, ParsedJournalLine::Kind::Command);
    EXPECT_EQ(ParseJournalLine(kTime + " box 5\r\n").Command.Value, 5);
    // A carriage return of its own is a byte of the line.
    EXPECT_EQ(ParseJournalLine(kTime + " undo\r").Kind, ParsedJournalLine::Kind::Malformed);
    EXPECT_EQ(ParseJournalLine(kTime + " box 5\r").Kind, ParsedJournalLine::Kind::Malformed);
}

TEST(JournalParse, UnknownWordAfterAGoodTimeIsUnknown) {
    const ParsedJournalLine parsed = Parse("rotate 90 left");
    EXPECT_EQ(parsed.Kind, ParsedJournalLine::Kind::Unknown);
    EXPECT_EQ(parsed.Word, "rotate");
    EXPECT_EQ(parsed.Time, kTime);
    EXPECT_EQ(Parse("zoom").Kind, ParsedJournalLine::Kind::Unknown);
    // Words are told apart by case too.
    EXPECT_EQ(Parse("Retry").Kind, ParsedJournalLine::Kind::Unknown);
}

TEST(JournalParse, LineWithoutAGoodTimeIsMalformed) {
    for (const std::string& line : std::vector<std::string>{
             "retry",
             "",
             "2024-05-06 07:08:09.010 retry",
             "2024-05-06T07:08:09 retry",
             "2024-05-06T07:08:09.01 retry",
             "2024-05-06T07:08:09.0100 retry",
             "2024-5-06T07:08:09.010 retry",
             "2024-13-06T07:08:09.010 retry",
             "2024-00-06T07:08:09.010 retry",
             "2024-05-00T07:08:09.010 retry",
             "2024-04-31T07:08:09.010 retry",
             "2023-02-29T07:08:09.010 retry",
             "2024-05-06T24:08:09.010 retry",
             "2024-05-06T07:60:09.010 retry",
             "2024-05-06T07:08:60.010 retry",
             "2024-05-06T07:08:09,010 retry",
             "x024-05-06T07:08:09.010 retry",
             " 2024-05-06T07:08:09.010 retry",
         }) {
        const ParsedJournalLine parsed = ParseJournalLine(line);
        EXPECT_EQ(parsed.Kind, ParsedJournalLine::Kind::Malformed) << line;
        EXPECT_EQ(parsed.Why, "the line does not start with a time YYYY-MM-DDTHH:MM:SS.mmm")
            << line;
        EXPECT_EQ(parsed.Time, "") << line;
    }
    // A leap day is a day.
    EXPECT_EQ(ParseJournalLine("2024-02-29T23:59:59.999 retry").Kind,
              ParsedJournalLine::Kind::Command);
    EXPECT_EQ(ParseJournalLine("2000-02-29T00:00:00.000 retry").Kind,
              ParsedJournalLine::Kind::Command);
    EXPECT_EQ(ParseJournalLine("1900-02-29T00:00:00.000 retry").Kind,
              ParsedJournalLine::Kind::Malformed);
}

TEST(JournalParse, TimeWithoutACommandIsMalformed) {
    const ParsedJournalLine parsed = ParseJournalLine(kTime);
    EXPECT_EQ(parsed.Kind, ParsedJournalLine::Kind::Malformed);
    EXPECT_EQ(parsed.Why, "no command after the time");
    EXPECT_EQ(parsed.Time, kTime);
}

TEST(JournalParse, MissingArgumentIsMalformed) {
    EXPECT_EQ(WhyMalformed("process"), "process needs exactly 1 argument");
    EXPECT_EQ(WhyMalformed("grid"), "grid needs exactly 1 argument");
    EXPECT_EQ(WhyMalformed("view"), "view needs exactly 1 argument");
    EXPECT_EQ(WhyMalformed("sheets 4"), "sheets needs exactly 2 arguments");
    EXPECT_EQ(WhyMalformed("left"), "left needs at least 1 number");
    EXPECT_EQ(WhyMalformed("drop 800 600 10 20 110 70"), "drop needs at least 7 numbers");
    EXPECT_EQ(WhyMalformed("drop"), "drop needs at least 7 numbers");
    EXPECT_EQ(WhyMalformed("banddrop 800 600 1 2 / 5"), "banddrop needs at least 9 numbers");
    EXPECT_EQ(WhyMalformed("banddrop 800 600 1 2 7 1 2 3 /"), "banddrop needs at least 9 numbers");
}

TEST(JournalParse, ExtraArgumentIsMalformed) {
    EXPECT_EQ(WhyMalformed("process 1 2"), "process needs exactly 1 argument");
    EXPECT_EQ(WhyMalformed("sheets 1 2 3"), "sheets needs exactly 2 arguments");
    EXPECT_EQ(WhyMalformed("view flat flat"), "view needs exactly 1 argument");
    EXPECT_EQ(WhyMalformed("retry 1"), "retry takes no arguments");
    EXPECT_EQ(WhyMalformed("ok now"), "ok takes no arguments");
}

TEST(JournalParse, NonNumericArgumentIsMalformed) {
    EXPECT_EQ(WhyMalformed("process x"), "argument 1 of process is not a decimal number");
    for (const std::string& number :
         std::vector<std::string>{"1.5", "+1", "-", "--1", "0x10", "1e3", "12a", "\xd9\xa1"})
        EXPECT_NE(WhyMalformed("box " + number), "") << number;
    EXPECT_EQ(WhyMalformed("drop 800 600 10 20 110 70 3 z"),
              "argument 8 of drop is not a decimal number");
    EXPECT_EQ(WhyMalformed("banddrop 800 600 1 2 7 1 2 3 4 / 5 /"),
              "argument 12 of banddrop is not a decimal number");
    EXPECT_EQ(WhyMalformed("sheets 4 many"), "argument 2 of sheets is not a decimal number");
}

TEST(JournalParse, NumbersAreThirtyTwoBitDecimals) {
    EXPECT_EQ(Parse("box -2147483648").Command.Value, std::numeric_limits<int32_t>::min());
    EXPECT_EQ(Parse("box 2147483647").Command.Value, std::numeric_limits<int32_t>::max());
    EXPECT_EQ(Parse("box 007").Command.Value, 7);
    EXPECT_EQ(Parse("box -0").Command.Value, 0);
    EXPECT_EQ(WhyMalformed("box 2147483648"), "argument 1 of box is beyond 32 bits");
    EXPECT_EQ(WhyMalformed("left 1 -2147483649"), "argument 2 of left is beyond 32 bits");
}

TEST(JournalParse, ToggleOtherThanZeroOrOneIsMalformed) {
    EXPECT_EQ(WhyMalformed("grid 2"), "grid takes 0 or 1");
    EXPECT_EQ(WhyMalformed("3d -1"), "3d takes 0 or 1");
    EXPECT_EQ(WhyMalformed("direct 10"), "direct takes 0 or 1");
    EXPECT_EQ(WhyMalformed("blockdraw on"), "argument 1 of blockdraw is not a decimal number");
}

TEST(JournalParse, UnknownViewOrHitIsMalformed) {
    EXPECT_EQ(WhyMalformed("view side"), "unknown view \"side\"");
    EXPECT_EQ(WhyMalformed("view Flat"), "unknown view \"Flat\"");
    EXPECT_EQ(WhyMalformed("view 0"), "unknown view \"0\"");
    EXPECT_EQ(WhyMalformed("hit all"), "unknown hit \"all\"");
    // What is quoted back is cut short.
    EXPECT_EQ(WhyMalformed("hit " + std::string(1000, 'x')),
              "unknown hit \"" + std::string(16, 'x') + "\"");
}

TEST(JournalParse, BandDropWithoutItsSlashOrWithAPartEntryIsMalformed) {
    EXPECT_EQ(WhyMalformed("banddrop 800 600 1 2 7 1 2 3 4"),
              "banddrop needs a '/' after its band");
    EXPECT_EQ(WhyMalformed("banddrop 800 600 1 2 7 1 2 3 4 8 1 2 3 / 5"),
              "banddrop's band needs 5 numbers a stack");
    EXPECT_EQ(WhyMalformed("banddrop 800 600 1 2 7 1 2 3 4/5"),
              "banddrop needs a '/' after its band");
}

TEST(JournalParse, WordsAreSeparatedByExactlyOneBlank) {
    const std::string why = "more than one blank between words, or a blank at the end";
    EXPECT_EQ(WhyMalformed(" retry"), why);
    EXPECT_EQ(WhyMalformed("retry "), why);
    EXPECT_EQ(WhyMalformed("process  1"), why);
    EXPECT_EQ(WhyMalformed("process 1 "), why);
    EXPECT_EQ(WhyMalformed("left 1  2"), why);
    EXPECT_EQ(WhyMalformed("process\t1"), "the command word is not printable text");
    EXPECT_EQ(WhyMalformed("process 1\t"), "argument 1 of process is not a decimal number");
    EXPECT_EQ(WhyMalformed(std::string("re\0try", 6)), "the command word is not printable text");
}

TEST(JournalParse, MalformedLineKeepsItsTimeAndWordButNoCommand) {
    const ParsedJournalLine parsed = Parse("drop 800 600 10 20 110 70");
    EXPECT_EQ(parsed.Time, kTime);
    EXPECT_EQ(parsed.Word, "drop");
    EXPECT_EQ(parsed.Command, JournalCommand{});
}

TEST(JournalParse, OverlongLineIsMalformed) {
    std::string line = kTime + " left";
    while (line.size() < kJournalLineMax + 10)
        line += " 1";
    const ParsedJournalLine parsed = ParseJournalLine(line);
    EXPECT_EQ(parsed.Kind, ParsedJournalLine::Kind::Malformed);
    EXPECT_EQ(parsed.Why, "line longer than 65536 bytes");
    // The longest line that is read, its line feed included.
    std::string longest = kTime + " left";
    while (longest.size() + 2 < kJournalLineMax)
        longest += " 1";
    if (longest.size() + 1 < kJournalLineMax)
        longest += "0";
    ASSERT_EQ(longest.size() + 1, kJournalLineMax);
    EXPECT_EQ(ParseJournalLine(longest + "\n").Kind, ParsedJournalLine::Kind::Command);
}

// --- reading a journal ---

std::string Lines(std::initializer_list<std::string> commands) {
    std::string text;
    for (const std::string& command : commands)
        text += kTime + " " + command + "\n";
    return text;
}

TEST(ReadJournal, ReadsTheHeaderAndNumbersTheLinesFromThree) {
    const JournalFile file = ReadJournal(kHeader + Lines({"process 2", "left 5", "right 9"}));
    EXPECT_EQ(file.Error, "");
    EXPECT_EQ(file.Version, 1);
    EXPECT_EQ(file.Job, kJob);
    ASSERT_EQ(file.Lines.size(), 3u);
    EXPECT_EQ(file.Lines[0].first, 3);
    EXPECT_EQ(file.Lines[0].second.Command, WithValue(JournalVerb::Process, 2));
    EXPECT_EQ(file.Lines[1].first, 4);
    EXPECT_EQ(file.Lines[1].second.Command, LeftCommand({5}));
    EXPECT_EQ(file.Lines[2].first, 5);
    EXPECT_EQ(file.Lines[2].second.Command, WithValue(JournalVerb::Right, 9));
    EXPECT_EQ(file.End, std::nullopt);
}

TEST(ReadJournal, HeaderAloneIsAJournalWithoutCommands) {
    const JournalFile file = ReadJournal(kHeader);
    EXPECT_EQ(file.Error, "");
    EXPECT_EQ(file.Job, kJob);
    EXPECT_TRUE(file.Lines.empty());
    EXPECT_EQ(file.End, std::nullopt);
}

TEST(ReadJournal, MissingHeaderIsAnError) {
    for (const std::string& text : std::vector<std::string>{
             std::string(), std::string("\n"), "hello\n" + kHeader, Lines({"retry"}),
             "job " + kJob + "\n", "kesto-journal\njob " + kJob + "\n"}) {
        const JournalFile file = ReadJournal(text);
        EXPECT_EQ(file.Error, "not a journal: the first line is not \"kesto-journal 1\"") << text;
        EXPECT_TRUE(file.Lines.empty());
        EXPECT_EQ(file.Version, 0);
    }
}

TEST(ReadJournal, OtherVersionIsAnError) {
    const JournalFile file = ReadJournal("kesto-journal 2\njob " + kJob + "\n" + Lines({"ok"}));
    EXPECT_EQ(file.Error, "journal version 2, this program reads 1");
    EXPECT_EQ(file.Version, 2);
    EXPECT_TRUE(file.Lines.empty());
    EXPECT_EQ(file.End, std::nullopt);
    for (const std::string& first :
         std::vector<std::string>{"kesto-journal x", "kesto-journal 01", "kesto-journal -1",
                                  "kesto-journal 1 ", "kesto-journal ", "kesto-journal  1"}) {
        const JournalFile bad = ReadJournal(first + "\njob " + kJob + "\n");
        EXPECT_EQ(bad.Error, "not a journal: the first line names no version") << first;
        EXPECT_EQ(bad.Version, 0) << first;
    }
}

TEST(ReadJournal, BadJobLineIsAnError) {
    const std::string why = "the second line is not \"job\" and 64 lowercase hexadecimal digits";
    for (const std::string& second : std::vector<std::string>{
             "job " + kJob.substr(1), "job " + kJob + "0", "job " + std::string(64, 'A'),
             "job  " + kJob, "job " + kJob + " ", "jobs " + kJob, kJob, "", kTime + " retry"}) {
        const JournalFile file = ReadJournal("kesto-journal 1\n" + second + "\n" + Lines({"ok"}));
        EXPECT_EQ(file.Error, why) << second;
        EXPECT_EQ(file.Job, "");
        EXPECT_TRUE(file.Lines.empty());
    }
}

TEST(ReadJournal, HeaderCutShortIsAnError) {
    for (const std::string& text : std::vector<std::string>{
             std::string("kesto-journal 1"), std::string("kesto-journal 1\n"),
             "kesto-journal 1\njob " + kJob, "kesto-journal 1\njob " + kJob.substr(0, 10)}) {
        const JournalFile file = ReadJournal(text);
        EXPECT_EQ(file.Error, "the journal's header is cut short") << text;
        EXPECT_TRUE(file.Lines.empty());
    }
}

TEST(ReadJournal, CrLfLinesReadAsLfLines) {
    const std::string crlf =
        "kesto-journal 1\r\njob " + kJob + "\r\n" + kTime + " left 1 2\r\n" + kTime + " ok\r\n";
    const JournalFile file = ReadJournal(crlf);
    EXPECT_EQ(file.Error, "");
    EXPECT_EQ(file.Job, kJob);
    ASSERT_EQ(file.Lines.size(), 2u);
    EXPECT_EQ(file.Lines[0].second.Command, LeftCommand({1, 2}));
    EXPECT_EQ(file.End, JournalVerb::Ok);
}

TEST(ReadJournal, LastLineWithoutItsLineEndIsMalformedAndTheLinesBeforeItStand) {
    const std::string text = kHeader + Lines({"process 2", "retry"}) + kTime + " ok";
    const JournalFile file = ReadJournal(text);
    EXPECT_EQ(file.Error, "");
    ASSERT_EQ(file.Lines.size(), 3u);
    EXPECT_EQ(file.Lines[0].second.Kind, ParsedJournalLine::Kind::Command);
    EXPECT_EQ(file.Lines[1].second.Kind, ParsedJournalLine::Kind::Command);
    const ParsedJournalLine& torn = file.Lines[2].second;
    EXPECT_EQ(file.Lines[2].first, 5);
    EXPECT_EQ(torn.Kind, ParsedJournalLine::Kind::Malformed);
    EXPECT_EQ(torn.Why, "the last line has no line end: its write was cut short");
    EXPECT_EQ(torn.Command, JournalCommand{});
    // The ok was never written whole: the job did not end.
    EXPECT_EQ(file.End, std::nullopt);
    // Cut anywhere inside the line, the same.
    const std::string line = kTime + " left 5 6\n";
    for (size_t cut = 1; cut < line.size(); ++cut) {
        const JournalFile cutShort = ReadJournal(kHeader + line.substr(0, cut));
        ASSERT_EQ(cutShort.Lines.size(), 1u) << cut;
        EXPECT_EQ(cutShort.Lines[0].second.Kind, ParsedJournalLine::Kind::Malformed) << cut;
    }
}

TEST(ReadJournal, DamagedLinesInTheMiddleAreReadAsSuch) {
    const JournalFile file =
        ReadJournal(kHeader + Lines({"process 2"}) + "\n" + "garbage\n" + Lines({"zoom 2", "ok"}));
    ASSERT_EQ(file.Lines.size(), 5u);
    EXPECT_EQ(file.Lines[1].first, 4);
    EXPECT_EQ(file.Lines[1].second.Kind, ParsedJournalLine::Kind::Malformed);
    EXPECT_EQ(file.Lines[2].second.Kind, ParsedJournalLine::Kind::Malformed);
    EXPECT_EQ(file.Lines[3].second.Kind, ParsedJournalLine::Kind::Unknown);
    EXPECT_EQ(file.Lines[4].second.Kind, ParsedJournalLine::Kind::Command);
    EXPECT_EQ(file.End, JournalVerb::Ok);
}

TEST(ReadJournal, EndIsTheLastCommandWhenItIsOkOrCancel) {
    EXPECT_EQ(ReadJournal(kHeader + Lines({"retry", "ok"})).End, JournalVerb::Ok);
    EXPECT_EQ(ReadJournal(kHeader + Lines({"retry", "cancel"})).End, JournalVerb::Cancel);
    EXPECT_EQ(ReadJournal(kHeader + Lines({"ok", "retry"})).End, std::nullopt);
    EXPECT_EQ(ReadJournal(kHeader + Lines({"cancel", "undo"})).End, std::nullopt);
    EXPECT_EQ(ReadJournal(kHeader + Lines({"retry"})).End, std::nullopt);
    // Lines that are no commands do not count.
    EXPECT_EQ(ReadJournal(kHeader + Lines({"cancel", "zoom", "ok 1"})).End, JournalVerb::Cancel);
    EXPECT_EQ(ReadJournal(kHeader + Lines({"ok"}) + "torn").End, JournalVerb::Ok);
}

TEST(ReadJournal, JournalLargerThanTheLimitIsAnError) {
    std::string text = kHeader;
    text.resize(kJournalFileMax + 1, '\n');
    const JournalFile file = ReadJournal(text);
    EXPECT_EQ(file.Error, "the journal is larger than 16777216 bytes");
    EXPECT_TRUE(file.Lines.empty());
}

TEST(ReadJournal, JournalOfMoreLinesThanTheLimitIsAnError) {
    const std::string line = kTime + " undo\n";
    std::string text = kHeader;
    for (size_t n = 0; n < kJournalLinesMax; ++n)
        text += line;
    const JournalFile full = ReadJournal(text);
    EXPECT_EQ(full.Error, "");
    EXPECT_EQ(full.Lines.size(), kJournalLinesMax);
    EXPECT_EQ(full.Lines.back().first, static_cast<int>(kJournalLinesMax) + 2);
    const JournalFile over = ReadJournal(text + "\n");
    EXPECT_EQ(over.Error, "the journal has more than 250000 lines");
    EXPECT_TRUE(over.Lines.empty());
}

TEST(ReadJournalFile, ReadsTheFileAtThePath) {
    TempFolder folder;
    WriteFile(folder / "a.journal", kHeader + Lines({"box 105", "ok"}));
    const JournalFile file = ReadJournalFile(folder / "a.journal");
    EXPECT_EQ(file.Error, "");
    ASSERT_EQ(file.Lines.size(), 2u);
    EXPECT_EQ(file.Lines[0].second.Command, WithValue(JournalVerb::Box, 105));
    EXPECT_EQ(file.End, JournalVerb::Ok);
}

TEST(ReadJournalFile, MissingOrUnreadableFileIsAnError) {
    TempFolder folder;
    EXPECT_EQ(ReadJournalFile(folder / "none.journal").Error,
              "no journal at " + (folder / "none.journal"));
    fs::create_directories(folder.Path() / "dir.journal");
    EXPECT_EQ(ReadJournalFile(folder / "dir.journal").Error,
              "the journal " + (folder / "dir.journal") + " is not a file");
    EXPECT_NE(ReadJournalFile("").Error, "");
}

// --- writing ---

TEST(JournalWriter, MakesTheFoldersAndWritesTheHeaderOfANewJournal) {
    TempFolder folder;
    const std::string path = JournalPath(folder / "state/kesto", kJob);
    JournalWriter writer;
    ASSERT_TRUE(writer.Open(path, kJob));
    EXPECT_EQ(ReadFile(path), kHeader);
    EXPECT_TRUE(writer.Append(JournalLine(kTime, WithValue(JournalVerb::Process, 2))));
    EXPECT_TRUE(writer.Append(JournalLine(kTime, Make(JournalVerb::Ok))));
    EXPECT_FALSE(writer.Failed());
    // Each line is in the file when Append returns.
    EXPECT_EQ(ReadFile(path), kHeader + Lines({"process 2", "ok"}));
    writer.Close();
    EXPECT_FALSE(writer.Append(JournalLine(kTime, Make(JournalVerb::Ok))));
    EXPECT_EQ(ReadJournalFile(path).End, JournalVerb::Ok);
}

TEST(JournalWriter, AppendsToTheJournalOfTheSameJob) {
    TempFolder folder;
    const std::string path = folder / "j.journal";
    {
        JournalWriter first;
        ASSERT_TRUE(first.Open(path, kJob));
        ASSERT_TRUE(first.Append(JournalLine(kTime, Make(JournalVerb::Retry))));
    }
    JournalWriter again;
    ASSERT_TRUE(again.Open(path, kJob));
    ASSERT_TRUE(again.Append(JournalLine(kTime, Make(JournalVerb::Auto))));
    EXPECT_EQ(ReadFile(path), kHeader + Lines({"retry", "auto"}));
}

TEST(JournalWriter, EmptyFileGetsTheHeader) {
    TempFolder folder;
    WriteFile(folder / "j.journal", "");
    JournalWriter writer;
    ASSERT_TRUE(writer.Open(folder / "j.journal", kJob));
    EXPECT_EQ(ReadFile(folder / "j.journal"), kHeader);
}

TEST(JournalWriter, JournalOfAnotherJobOrNoJournalIsLeftAlone) {
    TempFolder folder;
    const std::string other = JournalHeader(kOtherJob) + Lines({"retry"});
    WriteFile(folder / "other.journal", other);
    WriteFile(folder / "text.journal", "notes\n");
    WriteFile(folder / "crlf.journal", "kesto-journal 1\r\njob " + kOtherJob + "\r\n");
    WriteFile(folder / "cut.journal", JournalHeader(kOtherJob).substr(0, 30));
    for (const char* name : {"other.journal", "text.journal", "crlf.journal", "cut.journal"}) {
        const std::string before = ReadFile(folder / name);
        JournalWriter writer;
        EXPECT_FALSE(writer.Open(folder / name, kJob)) << name;
        EXPECT_TRUE(writer.Failed());
        EXPECT_FALSE(writer.Append(JournalLine(kTime, Make(JournalVerb::Ok))));
        EXPECT_EQ(ReadFile(folder / name), before) << name;
    }
}

TEST(JournalWriter, JournalWithCrLfHeaderIsAppendedTo) {
    TempFolder folder;
    WriteFile(folder / "j.journal", "kesto-journal 1\r\njob " + kJob + "\r\n");
    JournalWriter writer;
    ASSERT_TRUE(writer.Open(folder / "j.journal", kJob));
    ASSERT_TRUE(writer.Append(JournalLine(kTime, Make(JournalVerb::Undo))));
    EXPECT_EQ(ReadJournalFile(folder / "j.journal").Lines.size(), 1u);
}

TEST(JournalWriter, LineCutShortIsCutOffBeforeTheNextLine) {
    TempFolder folder;
    // "left 5" of "left 5 6": never read as a command, before or after the next line.
    WriteFile(folder / "j.journal", kHeader + Lines({"retry"}) + kTime + " left 5");
    JournalWriter writer;
    ASSERT_TRUE(writer.Open(folder / "j.journal", kJob));
    EXPECT_EQ(ReadFile(folder / "j.journal"), kHeader + Lines({"retry"}));
    ASSERT_TRUE(writer.Append(JournalLine(kTime, LeftCommand({4}))));
    EXPECT_EQ(ReadFile(folder / "j.journal"), kHeader + Lines({"retry", "left 4"}));
}

TEST(JournalWriter, HeaderCutShortIsWrittenAgain) {
    TempFolder folder;
    for (const size_t cut : {size_t{1}, size_t{16}, size_t{30}, kHeader.size() - 1}) {
        WriteFile(folder / "j.journal", kHeader.substr(0, cut));
        JournalWriter writer;
        ASSERT_TRUE(writer.Open(folder / "j.journal", kJob)) << cut;
        EXPECT_EQ(ReadFile(folder / "j.journal"), kHeader) << cut;
    }
}

TEST(JournalWriter, FileWithoutALineEndNearItsEndIsLeftAlone) {
    TempFolder folder;
    const std::string text = kHeader + kTime + " left" + std::string(kJournalLineMax + 5, '1');
    WriteFile(folder / "j.journal", text);
    JournalWriter writer;
    EXPECT_FALSE(writer.Open(folder / "j.journal", kJob));
    EXPECT_EQ(ReadFile(folder / "j.journal"), text);
}

TEST(JournalWriter, RefusesABadJobName) {
    TempFolder folder;
    JournalWriter writer;
    EXPECT_FALSE(writer.Open(folder / "j.journal", "ABC"));
    EXPECT_TRUE(writer.Failed());
    EXPECT_FALSE(fs::exists(folder / "j.journal"));
}

TEST(JournalWriter, RefusesWhatIsNotOneLineAndFailsFromThenOn) {
    TempFolder folder;
    const std::string path = folder / "j.journal";
    for (const std::string& bad : std::vector<std::string>{
             std::string(), std::string("retry"), kTime + " retry\n" + kTime + " ok\n",
             kTime + " left" + std::string(kJournalLineMax, '1') + "\n"}) {
        JournalWriter writer;
        ASSERT_TRUE(writer.Open(path, kJob));
        EXPECT_FALSE(writer.Append(bad));
        EXPECT_TRUE(writer.Failed());
        EXPECT_FALSE(writer.Append(JournalLine(kTime, Make(JournalVerb::Retry))));
        EXPECT_EQ(ReadFile(path), kHeader);
    }
}

TEST(JournalWriter, FailedWriteFailsEveryLaterAppendWithoutWriting) {
    KESTO_NEEDS_FILE_SIZE_LIMIT();
    TempFolder folder;
    const std::string path = folder / "j.journal";
    JournalWriter writer;
    ASSERT_TRUE(writer.Open(path, kJob));
    const std::string line = JournalLine(kTime, Make(JournalVerb::Retry));
    {
        // Room for the header and half a line, as a disk that fills up.
        test::FileSizeLimit limit(kHeader.size() + line.size() / 2);
        EXPECT_FALSE(writer.Append(line));
    }
    EXPECT_TRUE(writer.Failed());
    EXPECT_FALSE(writer.Append(line));
    // What the disk took stays a line cut short, never a command; the next open cuts it off.
    const JournalFile file = ReadJournalFile(path);
    ASSERT_EQ(file.Lines.size(), 1u);
    EXPECT_EQ(file.Lines[0].second.Kind, ParsedJournalLine::Kind::Malformed);
    ASSERT_TRUE(writer.Open(path, kJob));
    EXPECT_FALSE(writer.Failed());
    EXPECT_EQ(ReadFile(path), kHeader);
}

TEST(JournalWriter, OpenFailsWhereNoFileCanBeMade) {
    TempFolder folder;
    // Under a regular file no folder can be made, not even by the super-user.
    WriteFile(folder / "file", "x");
    JournalWriter writer;
    EXPECT_FALSE(writer.Open(JournalPath(folder / "file", kJob), kJob));
    EXPECT_TRUE(writer.Failed());
    EXPECT_FALSE(writer.Append(JournalLine(kTime, Make(JournalVerb::Retry))));
    EXPECT_EQ(ReadFile(folder / "file"), "x");
    // A folder in the place of the file.
    fs::create_directories(folder.Path() / "dir.journal");
    EXPECT_FALSE(writer.Open(folder / "dir.journal", kJob));
}

#ifndef _WIN32
TEST(JournalWriter, OpenFailsInAFolderThatCannotBeWritten) {
    if (::geteuid() == 0)
        GTEST_SKIP() << "the super-user writes into read-only folders";
    TempFolder folder;
    fs::create_directories(folder.Path() / "locked");
    ASSERT_EQ(::chmod((folder / "locked").c_str(), 0500), 0);
    JournalWriter writer;
    EXPECT_FALSE(writer.Open(folder / "locked/j.journal", kJob));
    EXPECT_FALSE(writer.Open(folder / "locked/deeper/j.journal", kJob));
    ::chmod((folder / "locked").c_str(), 0700);
    EXPECT_FALSE(fs::exists(folder / "locked/j.journal"));
}

TEST(JournalWriter, JournalIsReadableByItsOwnerOnly) {
    TempFolder folder;
    JournalWriter writer;
    ASSERT_TRUE(writer.Open(folder / "j.journal", kJob));
    struct stat status {};
    ASSERT_EQ(::stat((folder / "j.journal").c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0077, 0u);
}
#endif

TEST(JournalWriter, MovedWriterKeepsTheFile) {
    TempFolder folder;
    JournalWriter first;
    ASSERT_TRUE(first.Open(folder / "j.journal", kJob));
    JournalWriter second = std::move(first);
    EXPECT_TRUE(second.Append(JournalLine(kTime, Make(JournalVerb::Redo))));
    EXPECT_EQ(ReadFile(folder / "j.journal"), kHeader + Lines({"redo"}));
}

// --- the folder ---

TEST(JournalPath, IsTheJobsFileInTheJournalFolder) {
    const std::string sep(1, kPathSeparator);
    EXPECT_EQ(JournalPath("state", kJob), "state" + sep + "journal" + sep + kJob + ".journal");
    EXPECT_EQ(JournalPath("state" + sep, kJob),
              "state" + sep + "journal" + sep + kJob + ".journal");
}

TEST(DiscardJournal, RenamesToTheFirstFreeDiscardedName) {
    TempFolder folder;
    const std::string path = folder / "j.journal";
    for (const std::string& text : std::vector<std::string>{"first", "second", "third"}) {
        WriteFile(path, text);
        EXPECT_TRUE(DiscardJournal(path)) << text;
        EXPECT_FALSE(fs::exists(path));
    }
    EXPECT_EQ(ReadFile(path + ".discarded"), "first");
    EXPECT_EQ(ReadFile(path + ".discarded.1"), "second");
    EXPECT_EQ(ReadFile(path + ".discarded.2"), "third");
}

TEST(DiscardJournal, NeverReplacesAnotherFile) {
    TempFolder folder;
    const std::string path = folder / "j.journal";
    WriteFile(path + ".discarded", "old");
    WriteFile(path + ".discarded.1", "older");
    WriteFile(path, "new");
    EXPECT_TRUE(DiscardJournal(path));
    EXPECT_EQ(ReadFile(path + ".discarded"), "old");
    EXPECT_EQ(ReadFile(path + ".discarded.1"), "older");
    EXPECT_EQ(ReadFile(path + ".discarded.2"), "new");
}

TEST(DiscardJournal, NothingToDiscardIsFalse) {
    TempFolder folder;
    EXPECT_FALSE(DiscardJournal(folder / "none.journal"));
    EXPECT_FALSE(fs::exists(folder / "none.journal.discarded"));
    fs::create_directories(folder.Path() / "dir.journal");
    EXPECT_FALSE(DiscardJournal(folder / "dir.journal"));
    EXPECT_TRUE(fs::is_directory(folder / "dir.journal"));
}

// A journal file whose modification time is hoursAgo hours before now.
void WriteJournalAged(const fs::path& path, const std::string& text, int hoursAgo) {
    WriteFile(path, text);
    fs::last_write_time(path, fs::file_time_type::clock::now() - std::chrono::hours(hoursAgo));
}

std::string JobNumber(int n) {
    std::string hex = std::to_string(n);
    return std::string(64 - hex.size(), '0') + hex;
}

TEST(PruneEndedJournals, KeepsTheFiftyNewestEndedJournalsAndEverythingElse) {
    TempFolder folder;
    const fs::path dir = folder.Path() / "journal";
    // 53 ended journals, number 0 the newest; the unfinished and discarded ones older still.
    for (int n = 0; n < 53; ++n) {
        const std::string end = n % 2 == 0 ? "ok" : "cancel";
        WriteJournalAged(dir / (JobNumber(n) + ".journal"),
                         JournalHeader(JobNumber(n)) + Lines({"retry", end}), n + 1);
    }
    WriteJournalAged(dir / "a.journal", JournalHeader(kJob) + Lines({"retry"}), 100);
    WriteJournalAged(dir / "b.journal", JournalHeader(kJob) + Lines({"ok", "undo"}), 101);
    WriteJournalAged(dir / "c.journal", JournalHeader(kJob) + Lines({"retry"}) + kTime + " ok",
                     102);
    WriteJournalAged(dir / "d.journal", "kesto-journal 2\njob " + kJob + "\n" + Lines({"ok"}), 103);
    WriteJournalAged(dir / "e.journal.discarded", JournalHeader(kJob) + Lines({"ok"}), 104);
    WriteJournalAged(dir / "f.journal.discarded.1", JournalHeader(kJob) + Lines({"ok"}), 105);
    WriteJournalAged(dir / "notes.txt", JournalHeader(kJob) + Lines({"ok"}), 106);
    fs::create_directories(dir / "g.journal");

    PruneEndedJournals(dir.string());

    for (int n = 0; n < 53; ++n)
        EXPECT_EQ(fs::exists(dir / (JobNumber(n) + ".journal")), n < 50) << n;
    for (const char* name :
         {"a.journal", "b.journal", "c.journal", "d.journal", "e.journal.discarded",
          "f.journal.discarded.1", "notes.txt", "g.journal"})
        EXPECT_TRUE(fs::exists(dir / name)) << name;
}

TEST(PruneEndedJournals, KeepsAsManyAsAsked) {
    TempFolder folder;
    for (int n = 0; n < 5; ++n) {
        WriteJournalAged(folder.Path() / (JobNumber(n) + ".journal"),
                         JournalHeader(JobNumber(n)) + Lines({"ok"}), 10 - n);
    }
    PruneEndedJournals(folder.Path().string(), 2);
    // The newest are those written last: 4 and 3.
    for (int n = 0; n < 5; ++n)
        EXPECT_EQ(fs::exists(folder.Path() / (JobNumber(n) + ".journal")), n >= 3) << n;
    PruneEndedJournals(folder.Path().string(), 0);
    EXPECT_TRUE(fs::is_empty(folder.Path()));
}

TEST(PruneEndedJournals, MissingFolderIsNothingToDo) {
    TempFolder folder;
    PruneEndedJournals(folder / "none");
    PruneEndedJournals("");
    EXPECT_FALSE(fs::exists(folder / "none"));
}

}  // namespace
}  // namespace kesto
