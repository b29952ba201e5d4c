// The sectioned message file: every caption, label and message of the user interface.
#pragma once

#include <memory>
#include <string>

namespace kesto {

class Operator;

// A dialog value "font,text": field 1 the font number (atol), field 2 the text.
struct FontText {
    int Font = 0;
    std::string Text;
};

inline constexpr const char* kMessageNotDefine = "Message Not Define";

// One loaded message table. The job session holds the program's table and hands it to whoever
// shows a text; the offset check reads a second one of its own.
class MessageTable {
  public:
    MessageTable();
    ~MessageTable();
    MessageTable(const MessageTable&) = delete;
    MessageTable& operator=(const MessageTable&) = delete;

    // 0 when read (also when empty), -1 on failure; problems are shown through op.
    int Load(const std::string& path, Operator& op);
    // The value of key in the first section of that name holding it, else "Message Not Define".
    std::string Get(const std::string& section, const std::string& key) const;
    FontText GetFontText(const std::string& section, const std::string& key) const;
    // Safe when nothing is loaded.
    void Free();
    bool Loaded() const;

  private:
    struct Impl;
    std::unique_ptr<Impl> impl_;
};

// The text of a "font,text" value, or english when the table lacks it (or holds no text).
std::string TextOr(const MessageTable& messages, const std::string& section, const std::string& key,
                   const std::string& english);

// Key "Msg%.3d" of number no.
std::string KakuKey(int no);

}  // namespace kesto
