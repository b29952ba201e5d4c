#include "view/ControlTexts.h"

#include <algorithm>
#include <cctype>
#include <iterator>

#include "view/Controls.h"

namespace kesto {

namespace {

constexpr const char* kSection = "MainDlg";
// A value that keeps the caption the program was built with.
constexpr std::string_view kKeepCaption = "?????";

struct Spoken {
    const char* Key;
    const char* Word;  // the name when the caption is a sign ("<") or missing; null: none
    const char* Description;
};

constexpr Spoken kSpoken[] = {
    {"L-SMALLBOX", nullptr, "Heading of the small-box list"},
    {"L-SCH", nullptr, "Heading of the schedule"},
    {"L-TORIOKI", nullptr, "Heading of the set-aside list"},
    {"L-ALLPARTS", nullptr, "Heading of the list of all parts"},
    {"B-SBOX1", nullptr, "Shows the first small box of the page"},
    {"B-SBOX2", nullptr, "Shows the second small box of the page"},
    {"B-SBOX3", nullptr, "Shows the third small box of the page"},
    {"B-STOT", nullptr, "Moves the selected part of the small box to the set-aside list"},
    {"B-TTOS", nullptr, "Moves the selected set-aside part into the small box in view"},
    {"B-PTOT", "Set aside", "Sets the picked stacks aside (Delete)"},
    {"B-TTOP", "Back to the pallets", "Stacks the selected set-aside part on the pallets again"},
    {"B-RETRY", nullptr, "Places the job again from the input files"},
    {"B-AUTO", nullptr, "Places the job again automatically"},
    {"B-MAICHG", nullptr, "Changes the sheet count of the picked stack"},
    {"L-HIT", nullptr, "Heading of what a click picks"},
    {"B-HITB", nullptr, "A click picks every stack of the block"},
    {"B-HITS", nullptr, "A click picks one stack"},
    {"B-3D", "3D", "Draws the stacks in three dimensions"},
    {"B-GRID", nullptr, "Shows the grid marks"},
    {"B-INFO", nullptr, "Shows or hides the list of all parts"},
    {"B-FLAT", nullptr, "Shows the pallet from above"},
    {"B-DANMEN", nullptr, "Shows the pallet from above with its section"},
    {"B-PALLET2", nullptr, "Shows two pallets"},
    {"B-OK", nullptr, "Writes the result and ends the job"},
    {"LIST-PTALL", "All parts", "Every part of the job: a line picks the part's stacks"},
    {"LIST-SCH", "Schedule", "The processes: a line shows the process's pallets"},
    {"LIST-SBOX", "Small box", "The parts in the small box in view"},
    {"LIST-TORIOKI", "Set aside", "The parts set aside"},
    {"LIST-PALLET-SEL", "Pallet", "The first pallet in view"},
    {"B-PALLET4", nullptr, "Shows four pallets"},
    {"B-SBOXP", "Previous small boxes", "Shows the previous page of small boxes"},
    {"B-SBOXN", "Next small boxes", "Shows the next page of small boxes"},
    {"B-NEST-A", nullptr, "Switches between snapping to corners and moving freely"},
    {"B-BLOCKDRAW", nullptr, "Draws the block cells"},
    {"B-CAN", nullptr, "Ends the job as cancelled"},
    {"DRAWING", "Pallet drawing",
     "A click picks a stack and a drag moves it. Tab and Shift+Tab walk the stacks, the arrows "
     "move the pick, Delete sets it aside, Escape lets a drag go; +, - and Ctrl+wheel zoom, 0 "
     "shows the whole pallet"},
    {"INFO-STRING", nullptr, "The picked stack's part: its pieces and stacks"},
    {"VIEW-STRING", nullptr, "The outline and size of the picked stack's part"},
};

struct DialogSpoken {
    const char* Section;
    const char* Key;   // the control's object name
    const char* Word;  // null for a button, whose caption is its name
    const char* Description;
};

constexpr DialogSpoken kDialogSpoken[] = {
    {"MaihenDlg", "PartsName", "Part", "The part whose sheet count is changed"},
    {"MaihenDlg", "MaiSet", "Sheet count", "Sheets a stack takes: type a count or take a button's"},
    {"MaihenDlg", "BTKAI", nullptr, "As many sheets as the stacking height allows"},
    {"MaihenDlg", "BT1", nullptr, "The fewest stacks, filled evenly"},
    {"MaihenDlg", "BT2", nullptr, "The quantity over twice the part's stacks"},
    {"MaihenDlg", "BT3", nullptr, "The quantity over three times the part's stacks"},
    {"MaihenDlg", "BT4", nullptr, "The quantity over four times the part's stacks"},
    {"MaihenDlg", "ButtonOk", nullptr, "Stacks the part again with this count"},
    {"MaihenDlg", "ButtonCan", nullptr, "Closes the dialog and changes nothing"},
    {"PartsAlInfDlg", "LIST", "All parts",
     "Every part of the process; a line picks its first stack, * marks one in view"},
    {"PartsAlInfDlg", "BT4", nullptr, "Sorts the lines by part number"},
    {"PartsAlInfDlg", "BT1", nullptr, "Sorts the lines by material"},
    {"PartsAlInfDlg", "BT2", nullptr, "Sorts the lines by size"},
    {"PartsAlInfDlg", "BT3", nullptr, "Sorts the lines by quantity"},
    {"PartsAlInfDlg", "BT5", nullptr, "Sorts the lines by name"},
    {"KakuDlg", "1043", "Question", "What is asked"},
    {"KakuDlg", "1044", "Details", "More of what is asked"},
    {"KakuDlg", "ButtonOk", nullptr, "Answers yes and goes on"},
    {"KakuDlg", "ButtonCan", nullptr, "Answers no; nothing is changed"},
    {"About", "VersionText", "Version", "The program's name, version and copyright"},
    {"About", "OK", nullptr, "Closes the box"},
};

// The value's text in section, none when the file has no text for it or keeps the built-in
// caption.
std::string Own(const MessageTable& messages, const std::string& key,
                const char* section = kSection) {
    const std::string text = TextOr(messages, section, key, "");
    return text == kKeepCaption ? std::string() : text;
}

// A caption with a letter or a digit in it (any byte of a multi-byte character counts), not
// only signs such as "<" or ">>".
bool Worded(const std::string& caption) {
    return std::any_of(caption.begin(), caption.end(), [](char c) {
        const auto u = static_cast<unsigned char>(c);
        return u >= 0x80 || std::isalnum(u) != 0;
    });
}

const char* TemplateCaption(std::string_view key) {
    const auto entry =
        std::find_if(std::begin(kControls), std::end(kControls),
                     [&](const ControlEntry& e) { return e.Key != nullptr && key == e.Key; });
    return entry != std::end(kControls) && entry->Caption != nullptr ? entry->Caption : "";
}

}  // namespace

ControlText AccessibleText(std::string_view key, const MessageTable& messages) {
    const auto spoken = std::find_if(std::begin(kSpoken), std::end(kSpoken),
                                     [&](const Spoken& s) { return key == s.Key; });
    if (spoken == std::end(kSpoken))
        return {};
    const std::string k(key);
    ControlText text{Own(messages, "AN-" + k), Own(messages, "AD-" + k)};
    if (text.Name.empty() && Worded(Own(messages, k)))
        text.Name = Own(messages, k);
    if (text.Name.empty())
        text.Name = spoken->Word != nullptr ? spoken->Word : TemplateCaption(key);
    if (text.Description.empty())
        text.Description = spoken->Description;
    return text;
}

ControlText DialogControlText(std::string_view section, std::string_view key,
                              const MessageTable& messages) {
    const auto spoken =
        std::find_if(std::begin(kDialogSpoken), std::end(kDialogSpoken),
                     [&](const DialogSpoken& s) { return section == s.Section && key == s.Key; });
    if (spoken == std::end(kDialogSpoken))
        return {};
    const std::string k(key);
    ControlText text{Own(messages, "AN-" + k, spoken->Section),
                     Own(messages, "AD-" + k, spoken->Section)};
    if (text.Name.empty() && spoken->Word != nullptr)
        text.Name = spoken->Word;
    if (text.Description.empty())
        text.Description = spoken->Description;
    return text;
}

std::vector<std::string_view> DialogControlKeys(std::string_view section) {
    std::vector<std::string_view> keys;
    for (const DialogSpoken& s : kDialogSpoken) {
        if (section == s.Section)
            keys.emplace_back(s.Key);
    }
    return keys;
}

std::vector<std::string_view> AccessibleKeys() {
    std::vector<std::string_view> keys;
    for (const Spoken& s : kSpoken)
        keys.emplace_back(s.Key);
    return keys;
}

}  // namespace kesto
