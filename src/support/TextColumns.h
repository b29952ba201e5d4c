// Fixed columns of list lines, counted in bytes as the files count them but cut only between
// characters. A text is UTF-8 when it is valid UTF-8 and Shift_JIS otherwise (as the window
// decodes it); a Shift_JIS double-byte character is two bytes and two columns on screen.
#pragma once

#include <cstddef>
#include <string>

namespace kesto {

bool IsValidUtf8(const std::string& text);

// A lead byte of a double-byte character of Shift_JIS as Windows writes it (code page 932).
bool IsShiftJisLead(unsigned char byte);

// At most width bytes of text from its start, never ending inside a character ("%.Ns").
std::string CutToBytes(const std::string& text, size_t width);

// CutToBytes padded with blanks to exactly width bytes ("%-N.Ns"): the half of a character
// that does not fit becomes a blank, so the column keeps its width.
std::string FitColumn(const std::string& text, size_t width);

}  // namespace kesto
