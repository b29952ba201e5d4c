// The sectioned message file: every caption, label and message of the user interface.
#pragma once

#include <memory>
#include <string>

namespace kesto {

// One loaded message table. The program uses one process-wide instance through the free
// functions below; the offset check reads a second one of its own.
class MessageTable {
public:
    MessageTable();
    ~MessageTable();
    MessageTable(const MessageTable&) = delete;
    MessageTable& operator=(const MessageTable&) = delete;

    int Load(const std::string& path);  // 0 when read, -1 on failure (message box shown)
    std::string Get(const std::string& section, const std::string& key) const;
    void Free();
    bool Loaded() const;

private:
    struct Impl;
    std::unique_ptr<Impl> impl_;
};

inline constexpr const char* kMessageNotDefine = "Message Not Define";

// Loads the process-wide message table. 0 when read, -1 on failure (a message box is shown).
int LoadMessageFile(const std::string& path);
// The value of key in the first section of that name holding it, else "Message Not Define".
std::string GetMessage(const std::string& section, const std::string& key);
// Frees the table; safe when nothing is loaded.
void FreeMessageFile();
bool MessageFileLoaded();

// A dialog value "font,text": field 1 the font number (atol), field 2 the text.
struct FontText {
    int Font = 0;
    std::string Text;
};
FontText GetFontText(const std::string& section, const std::string& key);

// Key "Msg%.3d" of number no.
std::string KakuKey(int no);

}  // namespace kesto
