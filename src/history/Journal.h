// The journal of the operator's commands: one line a command, appended and synced before the
// command runs, so that a job cut short (a crash, a power cut) can be brought back by doing
// the same commands again. The format is line-oriented text, stable, and read by people too:
//
//   kesto-journal 1
//   job <64 lowercase hexadecimal digits: the job's identity>
//   <time> <command> [arguments]
//   ...
//
// <time> is the local time YYYY-MM-DDTHH:MM:SS.mmm. Words are separated by exactly one blank;
// numbers are decimal, 32 bits, an optional leading '-'. Lines end in "\n" ("\r\n" is read
// too). The commands and their arguments:
//
//   process K         the K-th process of the schedule in view
//   pallet K          pallet K in view
//   view V            flat, danmen, 4pallet or 2pallet
//   direct B, 3d B, grid B, blockdraw B     a toggle switched to B (0 or 1)
//   hit H             block or single: what a click picks
//   box N             the small box of code N in view
//   down SEQ, up SEQ, right SEQ             the part of sequence number SEQ
//   left [I1 I2 ...]  the stacks set aside (none when the stack picked was picked before Direct
//                     was switched, which empties the history)
//   sheets I N        stack I's sheet count set to N
//   drop W H L T R B I1 [I2 ...]
//                     a drop in a drawing of W x H pixels on the rectangle L T R B, of the
//                     stacks picked (in the order picked; none when the stack dragged was
//                     picked before Direct was switched, which empties the history)
//   banddrop W H DX DY I1 L1 T1 R1 B1 [I2 L2 T2 R2 B2 ...] / K1 [K2 ...]
//                     a band moved by DX DY in a drawing of W x H pixels: each stack of the band
//                     with its rectangle when it was pressed (at least one), then after a lone
//                     '/' the stacks picked before (none or more)
//   window XMIN XMAX YMIN YMAX
//                     FLAT or DANMEN zoomed to that part of the pallet, in millimetres written
//                     with three decimals (the window keeps them so rounded, so the replay
//                     lays the drawing out as the operator saw it)
//   window fit        the whole pallet again
//   retry, auto, undo, redo, ok, cancel
//
// A line whose command word is none of these is read as unknown (a later version's command),
// not as damage; a line that breaks the rules above is malformed.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "app/Rect.h"
#include "app/ViewState.h"

namespace kesto {

inline constexpr int kJournalVersion = 1;
// The longest line read as a line, its end included; a longer one is malformed.
inline constexpr size_t kJournalLineMax = size_t{64} << 10;
// The largest journal read, in bytes and in lines after the header; a larger one is refused as
// a whole. Far beyond any job's commands, they bound what reading a damaged file may take.
inline constexpr size_t kJournalFileMax = size_t{16} << 20;
inline constexpr size_t kJournalLinesMax = 250000;

enum class JournalVerb {
    Process,
    Pallet,
    View,
    Direct,
    ThreeD,
    Grid,
    BlockDraw,
    Hit,
    Box,
    Down,
    Up,
    Left,
    Right,
    Sheets,
    Drop,
    BandDrop,
    Retry,
    Auto,
    Undo,
    Redo,
    Ok,
    Cancel,
    // The drawing area's client size, written when it changes: the drawing is laid out anew at
    // each command, and a drop reads the cells of blocks laid out at earlier commands.
    Area,
    Window,
};

// The largest millimetre a window line names; beyond it the line is malformed.
inline constexpr double kJournalWindowMax = 1e7;
// A window as the journal writes it: each edge rounded to a thousandth of a millimetre, the
// value reading the line back gives.
WorldWindow JournalRounded(const WorldWindow& window);

// A stack of the band and where it was drawn when the band was pressed.
struct BandEntryAtPress {
    int32_t Stack = 0;
    IntRect Rect{};
    bool operator==(const BandEntryAtPress&) const = default;
};

// One command. Only the fields its verb uses are written; reading leaves the others as they
// are here.
struct JournalCommand {
    JournalVerb Verb = JournalVerb::Retry;
    // process K, pallet K, box N, a part's SEQ (down, up, right), a toggle (0 or 1), sheets' N
    int32_t Value = 0;
    int32_t Stack = -1;                  // sheets' I
    PalletView View = PalletView::Flat;  // view
    HitBy Hit = HitBy::Block;            // hit
    int32_t ClientWidth = 0;             // area, drop, banddrop: W
    int32_t ClientHeight = 0;            // area, drop, banddrop: H
    IntRect Drop{};                      // drop: L T R B
    int32_t ShiftX = 0;                  // banddrop: DX
    int32_t ShiftY = 0;                  // banddrop: DY
    // left's stacks, drop's picks in the order picked, banddrop's picks after '/'
    std::vector<int32_t> Stacks{};
    std::vector<BandEntryAtPress> Band{};  // banddrop's entries
    std::optional<WorldWindow> Window{};   // window; none: fit
    bool operator==(const JournalCommand&) const = default;
};

// The command word of a verb ("process", "3d", "banddrop").
std::string JournalWord(JournalVerb verb);
// Whether the verb's command corrects the job (moves, sets aside, restacks, places anew, takes
// a step back or again), as against what is only viewed or the job's end.
bool IsCorrection(JournalVerb verb);

// "<command> [arguments]", without time and line end. A toggle is written 0 when its Value is
// 0 and 1 otherwise. banddrop without a band entry gives a line the reader calls malformed.
std::string FormatJournalCommand(const JournalCommand& command);
// The local time of when as YYYY-MM-DDTHH:MM:SS.mmm; the start of 1970 when the platform cannot
// tell it, so that the line stays readable.
std::string JournalTimeText(std::chrono::system_clock::time_point when);
// "<time> <command> [arguments]\n".
std::string JournalLine(const std::string& time, const JournalCommand& command);
// "kesto-journal 1\njob <jobHex>\n".
std::string JournalHeader(const std::string& jobHex);
// True for 64 lowercase hexadecimal digits, a job's identity as the journal writes it.
bool IsJobHex(std::string_view text);

struct ParsedJournalLine {
    enum class Kind {
        Command,    // Command holds it
        Unknown,    // a good time and a command word this version does not know; Word holds it
        Malformed,  // Why says what is wrong
        // The last line without its line end: a write cut short, whose command the operator
        // never saw carried out. No command, and no damage either; Why says so.
        CutShort,
    } Kind = Kind::Malformed;
    JournalCommand Command;
    std::string Time;  // as written, when the line starts with a good time
    std::string Word;  // the command word, when there is one
    std::string Why;   // Malformed: what is wrong, e.g. "drop needs at least 6 numbers"
};

// One line, with or without its line end ("\n" or "\r\n"). Never throws.
ParsedJournalLine ParseJournalLine(std::string_view line);

struct JournalFile {
    int Version = 0;  // of the first line, when it names one
    std::string Job;  // the job's identity, when the header is good
    // Every line after the header with its line number in the file (the first is line 3). A
    // last line without its line end (a write cut short) is CutShort.
    std::vector<std::pair<int, ParsedJournalLine>> Lines;
    // Ok or Cancel when the last line that is a command is ok or cancel: the job ended.
    std::optional<JournalVerb> End;
    // Why the journal cannot be read: no file, no header, another version, a bad job line.
    // Then Lines is empty.
    std::string Error;
};

// A journal's text. Never throws; text beyond kJournalFileMax or kJournalLinesMax is refused
// with an Error.
JournalFile ReadJournal(std::string_view text);
// The journal at path; a missing, unreadable or over-large file gives an Error.
JournalFile ReadJournalFile(const std::string& path);

// Told of every line a writer of the process has appended and synced, before Append returns
// and so before the command is shown: a test stops the process there. The programs set none.
class JournalWatcher {
  public:
    virtual ~JournalWatcher() = default;
    virtual void Appended() = 0;
};

// Appends the lines of one job's journal to its file, each on the disk before Append returns.
// After a failure every later Append fails at once: a journal with a hole in it would bring
// back another job than the operator's.
class JournalWriter {
  public:
    JournalWriter() = default;
    JournalWriter(const JournalWriter&) = delete;
    JournalWriter& operator=(const JournalWriter&) = delete;
    JournalWriter(JournalWriter&& other) noexcept;
    JournalWriter& operator=(JournalWriter&& other) noexcept;
    ~JournalWriter();

    // Opens path for appending, making its folders. A new or empty file gets the header of
    // jobHex; a file that holds another job's header, or none, is left alone and the open
    // fails. What a write cut short left at the end (a part of the header or of a line, whose
    // command never ran) is cut off first, so that it is never read as a command.
    bool Open(const std::string& path, const std::string& jobHex);
    // Writes line (one whole line ending in "\n", at most kJournalLineMax bytes) in one write
    // and syncs it to the disk. false on any failure, a refused line included.
    bool Append(const std::string& line);
    // An open or an append failed since the last Open.
    bool Failed() const { return failed_; }
    void Close();

    // Sets (or with null clears) the watcher of every append of the process.
    static void Watch(JournalWatcher* watcher);

  private:
    bool Fail();

    int fd_ = -1;
    bool failed_ = false;
};

// <folder>/journal/<jobHex>.journal, folder being the state folder.
std::string JournalPath(const std::string& folder, const std::string& jobHex);
// Sets a journal aside under <path>.discarded, else the first free <path>.discarded.1, .2, ...;
// never over another file. false when nothing was renamed.
bool DiscardJournal(const std::string& path);
// A journal whose job ended, renamed <hex>.1.journal (else .2, ...) so that the same job started
// again gets a journal of its own while the ended one stays for the record; false when path is
// no ended journal or nothing was renamed.
bool KeepEndedJournalAside(const std::string& path);
// Of the journals (*.journal) in journalFolder whose job ended (ok or cancel), keeps the keep
// newest by modification time and removes the others. Journals of jobs not ended, discarded
// journals and every other file stay.
void PruneEndedJournals(const std::string& journalFolder, size_t keep = 50);

}  // namespace kesto
