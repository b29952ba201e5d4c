// Texts of the message file and the job shown in the window: the files are either UTF-8 or
// Shift_JIS, so each text is decoded as UTF-8 when it is valid UTF-8 and as Shift_JIS otherwise.
#pragma once

#include <QString>
#include <string>

namespace kesto {

QString DecodeText(const std::string& bytes);

// The bytes of a text read back from a control (list lines start with ASCII digits).
std::string EncodeText(const QString& text);

}  // namespace kesto
