// The journal's text: the exact text of every command, reading it back, and every kind of
// damage a line or a header can have.
#include "history/Journal.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <initializer_list>
#include <limits>
#include <string>
#include <vector>

#include "common/ScopedEnv.h"
#include "common/TestFiles.h"

namespace kesto {
namespace {

namespace fs = std::filesystem;
using test::ReadFile;
using test::ScopedEnv;
using test::TempFolder;
using test::WriteFile;

const std::string kJob = "0123456789abcdef0123456789abcdef0123456789abcdef0123456789abcdef";
const std::string kTime = "2024-05-06T07:08:09.010";
const std::string kHeader = "kesto-journal 1\njob " + kJob + "\n";

JournalCommand DropCommand() {
    return {.Verb = JournalVerb::Drop,
            .ClientWidth = 800,
            .ClientHeight = 600,
            .Drop = {10, 20, 110, 70},
            .Stacks = {3, 1}};
}

JournalCommand BandDropCommand(std::vector<int32_t> picks) {
    return {.Verb = JournalVerb::BandDrop,
            .ClientWidth = 800,
            .ClientHeight = 600,
            .ShiftX = -15,
            .ShiftY = 40,
            .Stacks = std::move(picks),
            .Band = {{4, {1, 2, 3, 4}}, {9, {-5, 6, 70, 80}}}};
}

// Every command as it is written, by hand.
struct Written {
    JournalCommand Command;
    const char* Text;
};

std::vector<Written> EveryCommand() {
    return {
        {JournalCommand{.Verb = JournalVerb::Process, .Value = 2}, "process 2"},
        {JournalCommand{.Verb = JournalVerb::Pallet, .Value = 3}, "pallet 3"},
        {JournalCommand{.Verb = JournalVerb::View, .View = PalletView::Flat}, "view flat"},
        {JournalCommand{.Verb = JournalVerb::View, .View = PalletView::Danmen}, "view danmen"},
        {JournalCommand{.Verb = JournalVerb::View, .View = PalletView::FourPallet}, "view 4pallet"},
        {JournalCommand{.Verb = JournalVerb::View, .View = PalletView::TwoPallet}, "view 2pallet"},
        {JournalCommand{.Verb = JournalVerb::Direct, .Value = 1}, "direct 1"},
        {JournalCommand{.Verb = JournalVerb::Direct, .Value = 0}, "direct 0"},
        {JournalCommand{.Verb = JournalVerb::ThreeD, .Value = 1}, "3d 1"},
        {JournalCommand{.Verb = JournalVerb::Grid, .Value = 0}, "grid 0"},
        {JournalCommand{.Verb = JournalVerb::BlockDraw, .Value = 1}, "blockdraw 1"},
        {JournalCommand{.Verb = JournalVerb::Hit, .Hit = HitBy::Block}, "hit block"},
        {JournalCommand{.Verb = JournalVerb::Hit, .Hit = HitBy::Single}, "hit single"},
        {JournalCommand{.Verb = JournalVerb::Box, .Value = 101}, "box 101"},
        {JournalCommand{.Verb = JournalVerb::Down, .Value = 7}, "down 7"},
        {JournalCommand{.Verb = JournalVerb::Up, .Value = 0}, "up 0"},
        {JournalCommand{.Verb = JournalVerb::Left}, "left"},
        {JournalCommand{.Verb = JournalVerb::Left, .Stacks = {5}}, "left 5"},
        {JournalCommand{.Verb = JournalVerb::Left, .Stacks = {5, 2, 11}}, "left 5 2 11"},
        {JournalCommand{.Verb = JournalVerb::Right, .Value = 12}, "right 12"},
        {JournalCommand{.Verb = JournalVerb::Sheets, .Value = 25, .Stack = 4}, "sheets 4 25"},
        {DropCommand(), "drop 800 600 10 20 110 70 3 1"},
        {JournalCommand{.Verb = JournalVerb::Drop,
                        .ClientWidth = 800,
                        .ClientHeight = 600,
                        .Drop = {10, 20, 110, 70}},
         "drop 800 600 10 20 110 70"},
        {BandDropCommand({}), "banddrop 800 600 -15 40 4 1 2 3 4 9 -5 6 70 80 /"},
        {BandDropCommand({6, 2}), "banddrop 800 600 -15 40 4 1 2 3 4 9 -5 6 70 80 / 6 2"},
        {JournalCommand{.Verb = JournalVerb::Retry}, "retry"},
        {JournalCommand{.Verb = JournalVerb::Auto}, "auto"},
        {JournalCommand{.Verb = JournalVerb::Undo}, "undo"},
        {JournalCommand{.Verb = JournalVerb::Redo}, "redo"},
        {JournalCommand{.Verb = JournalVerb::Ok}, "ok"},
        {JournalCommand{.Verb = JournalVerb::Cancel}, "cancel"},
        {JournalCommand{.Verb = JournalVerb::Area, .ClientWidth = 1274, .ClientHeight = 675},
         "area 1274 675"},
        {JournalCommand{.Verb = JournalVerb::Window,
                        .Window = WorldWindow{230, 770, 68.56, 431.44}},
         "window 230.000 770.000 68.560 431.440"},
        {JournalCommand{.Verb = JournalVerb::Window, .Window = WorldWindow{-34.6, 505.4, -0.5, 2}},
         "window -34.600 505.400 -0.500 2.000"},
        {JournalCommand{.Verb = JournalVerb::Window}, "window fit"},
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
    EXPECT_EQ(JournalLine(kTime, (JournalCommand{.Verb = JournalVerb::Process, .Value = 2})),
              "2024-05-06T07:08:09.010 process 2\n");
    EXPECT_EQ(JournalLine(kTime, (JournalCommand{.Verb = JournalVerb::Ok})),
              "2024-05-06T07:08:09.010 ok\n");
}

TEST(JournalFormat, HeaderNamesTheVersionAndTheJob) {
    EXPECT_EQ(JournalHeader(kJob), "kesto-journal 1\njob " + kJob + "\n");
}

TEST(JournalFormat, ToggleOtherThanZeroIsWrittenAsOne) {
    EXPECT_EQ(FormatJournalCommand(JournalCommand{.Verb = JournalVerb::BlockDraw, .Value = 7}),
              "blockdraw 1");
    EXPECT_EQ(FormatJournalCommand(JournalCommand{.Verb = JournalVerb::Grid, .Value = -1}),
              "grid 1");
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
        JournalCommand command = JournalCommand{.Verb = static_cast<JournalVerb>(v)};
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
                command =
                    JournalCommand{.Verb = JournalVerb::Sheets, .Value = kLow, .Stack = kHigh};
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

// Lines with arguments missing or over, and what the reader says of each.
struct MalformedLine {
    const char* Line;
    const char* Why;
};
const MalformedLine kWrongArgumentCounts[] = {
    {"process", "process needs exactly 1 argument"},
    {"grid", "grid needs exactly 1 argument"},
    {"view", "view needs exactly 1 argument"},
    {"sheets 4", "sheets needs exactly 2 arguments"},
    {"drop 800 600 10 20 110", "drop needs at least 6 numbers"},
    {"drop", "drop needs at least 6 numbers"},
    {"banddrop 800 600 1 2 / 5", "banddrop needs at least 9 numbers"},
    {"banddrop 800 600 1 2 7 1 2 3 /", "banddrop needs at least 9 numbers"},
    {"process 1 2", "process needs exactly 1 argument"},
    {"sheets 1 2 3", "sheets needs exactly 2 arguments"},
    {"area 1274", "area needs exactly 2 arguments"},
    {"area 1274 675 1", "area needs exactly 2 arguments"},
    {"view flat flat", "view needs exactly 1 argument"},
    {"retry 1", "retry takes no arguments"},
    {"ok now", "ok takes no arguments"},
};

TEST(JournalParse, AMissingOrExtraArgumentIsMalformed) {
    for (const MalformedLine& m : kWrongArgumentCounts)
        EXPECT_EQ(WhyMalformed(m.Line), m.Why) << m.Line;
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

// A window is rounded to thousandths once, where it is made; what the line says is then that
// very double, so the replay lays the drawing out on the same pixels.
TEST(JournalWindow, RoundedWindowReadsBackAsTheSameDoubles) {
    const WorldWindow made = JournalRounded(WorldWindow{1.0 / 3, 2.0 / 3, -123.45678, 9876.54321});
    EXPECT_EQ(made, (WorldWindow{0.333, 0.667, -123.457, 9876.543}));
    const ParsedJournalLine parsed =
        Parse(FormatJournalCommand(JournalCommand{.Verb = JournalVerb::Window, .Window = made}));
    ASSERT_EQ(parsed.Kind, ParsedJournalLine::Kind::Command);
    ASSERT_TRUE(parsed.Command.Window.has_value());
    EXPECT_EQ(*parsed.Command.Window, made);
}

TEST(JournalWindow, FitReadsAsNoWindow) {
    const ParsedJournalLine parsed = Parse("window fit");
    ASSERT_EQ(parsed.Kind, ParsedJournalLine::Kind::Command);
    EXPECT_EQ(parsed.Command.Verb, JournalVerb::Window);
    EXPECT_FALSE(parsed.Command.Window.has_value());
}

TEST(JournalWindow, WholeNumbersAndFewerDecimalsAreMillimetresToo) {
    const ParsedJournalLine parsed = Parse("window 0 100.5 -20 3.25");
    ASSERT_EQ(parsed.Kind, ParsedJournalLine::Kind::Command);
    EXPECT_EQ(*parsed.Command.Window, (WorldWindow{0, 100.5, -20, 3.25}));
}

TEST(JournalWindow, BadWindowsAreMalformed) {
    EXPECT_EQ(WhyMalformed("window"), "window needs fit or 4 millimetres");
    EXPECT_EQ(WhyMalformed("window 1 2 3"), "window needs fit or 4 millimetres");
    EXPECT_EQ(WhyMalformed("window fit 1"), "window needs fit or 4 millimetres");
    EXPECT_EQ(WhyMalformed("window whole"), "window needs fit or 4 millimetres");
    for (const char* bad : {"x", "1e3", "+5", "inf", "nan", "1,5", "0x10", "99999999"})
        EXPECT_EQ(WhyMalformed(std::string("window ") + bad + " 200 0 100"),
                  "argument 1 of window is not a millimetre")
            << bad;
    EXPECT_EQ(WhyMalformed("window 200 100 0 100"), "window's minimum is not below its maximum");
    EXPECT_EQ(WhyMalformed("window 0 100 5 5"), "window's minimum is not below its maximum");
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
    const ParsedJournalLine parsed = Parse("drop 800 600 10 20 110");
    EXPECT_EQ(parsed.Time, kTime);
    EXPECT_EQ(parsed.Word, "drop");
    EXPECT_EQ(parsed.Command, (JournalCommand{}));
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
    EXPECT_EQ(file.Lines[0].second.Command,
              (JournalCommand{.Verb = JournalVerb::Process, .Value = 2}));
    EXPECT_EQ(file.Lines[1].first, 4);
    EXPECT_EQ(file.Lines[1].second.Command,
              (JournalCommand{.Verb = JournalVerb::Left, .Stacks = {5}}));
    EXPECT_EQ(file.Lines[2].first, 5);
    EXPECT_EQ(file.Lines[2].second.Command,
              (JournalCommand{.Verb = JournalVerb::Right, .Value = 9}));
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
    EXPECT_EQ(file.Lines[0].second.Command,
              (JournalCommand{.Verb = JournalVerb::Left, .Stacks = {1, 2}}));
    EXPECT_EQ(file.End, JournalVerb::Ok);
}

TEST(ReadJournal, LastLineWithoutItsLineEndIsCutShortAndTheLinesBeforeItStand) {
    const std::string text = kHeader + Lines({"process 2", "retry"}) + kTime + " ok";
    const JournalFile file = ReadJournal(text);
    EXPECT_EQ(file.Error, "");
    ASSERT_EQ(file.Lines.size(), 3u);
    EXPECT_EQ(file.Lines[0].second.Kind, ParsedJournalLine::Kind::Command);
    EXPECT_EQ(file.Lines[1].second.Kind, ParsedJournalLine::Kind::Command);
    const ParsedJournalLine& torn = file.Lines[2].second;
    EXPECT_EQ(file.Lines[2].first, 5);
    EXPECT_EQ(torn.Kind, ParsedJournalLine::Kind::CutShort);
    EXPECT_EQ(torn.Why, "the last line has no line end: its write was cut short");
    EXPECT_EQ(torn.Command, (JournalCommand{}));
    // The ok was never written whole: the job did not end.
    EXPECT_EQ(file.End, std::nullopt);
    // Cut anywhere inside the line, the same.
    const std::string line = kTime + " left 5 6\n";
    for (size_t cut = 1; cut < line.size(); ++cut) {
        const JournalFile cutShort = ReadJournal(kHeader + line.substr(0, cut));
        ASSERT_EQ(cutShort.Lines.size(), 1u) << cut;
        EXPECT_EQ(cutShort.Lines[0].second.Kind, ParsedJournalLine::Kind::CutShort) << cut;
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
    EXPECT_EQ(file.Lines[0].second.Command,
              (JournalCommand{.Verb = JournalVerb::Box, .Value = 105}));
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

TEST(IsCorrection, TheCommandsThatChangeTheJobAreCorrectionsAndViewsAndEndsAreNot) {
    for (const JournalVerb verb :
         {JournalVerb::Down, JournalVerb::Up, JournalVerb::Left, JournalVerb::Right,
          JournalVerb::Sheets, JournalVerb::Drop, JournalVerb::BandDrop, JournalVerb::Retry,
          JournalVerb::Auto, JournalVerb::Undo, JournalVerb::Redo})
        EXPECT_TRUE(IsCorrection(verb)) << JournalWord(verb);
    for (const JournalVerb verb :
         {JournalVerb::Process, JournalVerb::Pallet, JournalVerb::View, JournalVerb::Direct,
          JournalVerb::ThreeD, JournalVerb::Grid, JournalVerb::BlockDraw, JournalVerb::Hit,
          JournalVerb::Box, JournalVerb::Ok, JournalVerb::Cancel})
        EXPECT_FALSE(IsCorrection(verb)) << JournalWord(verb);
}

}  // namespace
}  // namespace kesto
