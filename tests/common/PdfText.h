// The text of every page of a PDF as a reader finds it, through pdftotext (Debian's
// poppler-utils): what the tests of printed pages read back.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "common/TestFiles.h"

namespace kesto::test {

// The pages' texts in order; nullopt where pdftotext is not installed (a test then skips).
inline std::optional<std::vector<std::string>> PdfPageTexts(const std::filesystem::path& pdf) {
#ifdef _WIN32
    (void)pdf;
    return std::nullopt;
#else
    if (std::system("command -v pdftotext >/dev/null 2>&1") != 0)
        return std::nullopt;
    const std::filesystem::path text = pdf.string() + ".txt";
    const std::string command =
        "pdftotext -layout -enc UTF-8 '" + pdf.string() + "' '" + text.string() + "' 2>/dev/null";
    std::vector<std::string> pages;
    if (std::system(command.c_str()) != 0)
        return pages;
    // A form feed ends every page.
    const std::string all = ReadFile(text.string());
    size_t start = 0;
    for (size_t end = all.find('\f'); end != std::string::npos; end = all.find('\f', start)) {
        pages.push_back(all.substr(start, end - start));
        start = end + 1;
    }
    return pages;
#endif
}

// The text with every run of blanks made one blank, so that columns laid out with any
// spacing read the same, and the fonts' ligatures (ff, fi, fl, ffi, ffl) spelt out.
inline std::string OneBlank(const std::string& text) {
    std::string out;
    for (const char c : text) {
        const bool blank = c == ' ' || c == '\t';
        if (blank && !out.empty() && out.back() == ' ')
            continue;
        out += blank ? ' ' : c;
    }
    const std::pair<const char*, const char*> ligatures[] = {{"\xEF\xAC\x80", "ff"},
                                                             {"\xEF\xAC\x81", "fi"},
                                                             {"\xEF\xAC\x82", "fl"},
                                                             {"\xEF\xAC\x83", "ffi"},
                                                             {"\xEF\xAC\x84", "ffl"}};
    for (const auto& [glyph, letters] : ligatures) {
        for (size_t at = out.find(glyph); at != std::string::npos; at = out.find(glyph, at))
            out.replace(at, 3, letters);
    }
    return out;
}

}  // namespace kesto::test
