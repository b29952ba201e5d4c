// Texts of the job and of the message file on their way to the terminal: a message file written
// by the machine's Windows tools is Shift_JIS, the terminal of kesto-batch reads UTF-8.
#pragma once

#include <string>

namespace kesto {

// UTF-8 text as it is; any other text decoded as Shift_JIS (code page 932) into UTF-8, a byte
// that starts no character becoming U+FFFD. Only for what is printed: files keep their bytes.
std::string TerminalText(const std::string& bytes);

}  // namespace kesto
