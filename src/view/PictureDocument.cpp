#include "view/PictureDocument.h"

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <istream>
#include <ostream>
#include <sstream>

#include "support/TextFormat.h"

namespace kesto {

namespace {

constexpr const char* kDocumentHeader = "kesto-picture-document 2";
constexpr int32_t kLargestPage = 20000;  // pixels; more is a damaged document

// --- document file -------------------------------------------------------------------

// "word n1 n2 ... rest": count numbers after the word, then the rest of the line (may be
// empty) after one blank.
bool ParseLine(const std::string& line, const std::string& word, std::vector<int32_t>& numbers,
               size_t count, std::string* rest) {
    std::istringstream in(line);
    std::string first;
    if (!(in >> first) || first != word)
        return false;
    numbers.assign(count, 0);
    for (int32_t& n : numbers) {
        if (!(in >> n))
            return false;
    }
    if (rest == nullptr) {
        std::string extra;
        return !(in >> extra);
    }
    const auto pos = in.tellg();
    if (pos < 0) {
        rest->clear();
        return true;
    }
    const size_t at = static_cast<size_t>(pos);
    *rest = at < line.size() ? line.substr(at + 1) : std::string();
    return at >= line.size() || line[at] == ' ';
}

std::optional<PicturePage> ReadPage(std::istream& in) {
    std::string line;
    std::vector<int32_t> numbers;
    PicturePage page;
    if (!ReadPictureLine(in, line) || !ParseLine(line, "page", numbers, 2, &page.Title))
        return std::nullopt;
    page.Width = numbers[0];
    page.Height = numbers[1];
    if (page.Width <= 0 || page.Height <= 0 || page.Width > kLargestPage ||
        page.Height > kLargestPage)
        return std::nullopt;
    std::optional<DisplayList> drawing = DisplayList::Read(in);
    if (!drawing)
        return std::nullopt;
    page.Drawing = std::move(*drawing);
    return page;
}

}  // namespace

void TakeSettingsFonts(const CKestoApp& app, PictureDocument& document) {
    for (size_t i = 0; i < app.Settings.FontHeight.size(); ++i) {
        document.Fonts[i] = PictureFont{app.Settings.FontHeight[i], app.Settings.FontCharSet[i],
                                        app.Settings.FontNames[i], false};
    }
}

void WritePictureDocument(const PictureDocument& document, std::ostream& out) {
    out << kDocumentHeader << "\n";
    for (size_t i = 0; i < document.Fonts.size(); ++i) {
        const PictureFont& f = document.Fonts[i];
        out << "font " << i << ' ' << f.Height << ' ' << f.CharSet << ' ' << (f.Bold ? 1 : 0) << ' '
            << OnePictureLine(f.Name) << "\n";
    }
    out << "pages " << document.Pages.size() << "\n";
    for (const PicturePage& page : document.Pages) {
        out << "page " << page.Width << ' ' << page.Height << ' ' << OnePictureLine(page.Title)
            << "\n";
        page.Drawing.Write(out);
    }
}

std::optional<PictureDocument> ReadPictureDocument(std::istream& in) {
    std::string line;
    if (!ReadPictureLine(in, line) || line != kDocumentHeader)
        return std::nullopt;
    PictureDocument document;
    std::vector<int32_t> numbers;
    for (size_t i = 0; i < document.Fonts.size(); ++i) {
        PictureFont& f = document.Fonts[i];
        if (!ReadPictureLine(in, line) || !ParseLine(line, "font", numbers, 4, &f.Name) ||
            numbers[0] != static_cast<int32_t>(i) || (numbers[3] != 0 && numbers[3] != 1))
            return std::nullopt;
        f.Height = numbers[1];
        f.CharSet = numbers[2];
        f.Bold = numbers[3] == 1;
    }
    if (!ReadPictureLine(in, line) || !ParseLine(line, "pages", numbers, 1, nullptr) ||
        numbers[0] < 0)
        return std::nullopt;
    for (int32_t i = 0; i < numbers[0]; ++i) {
        std::optional<PicturePage> page = ReadPage(in);
        if (!page)
            return std::nullopt;
        document.Pages.push_back(std::move(*page));
    }
    // Nothing may follow the last page.
    if (in >> line)
        return std::nullopt;
    return document;
}

std::optional<PictureFormat> PictureFormatOf(const std::string& path) {
    std::string ext = std::filesystem::path(path).extension().string();
    std::transform(ext.begin(), ext.end(), ext.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    if (ext == ".pdf")
        return PictureFormat::Pdf;
    if (ext == ".png")
        return PictureFormat::Png;
    return std::nullopt;
}

std::vector<std::string> PictureFiles(const std::string& output, size_t pages) {
    if (PictureFormatOf(output) != PictureFormat::Png)
        return {output};
    const std::string ext = std::filesystem::path(output).extension().string();
    const std::string stem = output.substr(0, output.size() - ext.size());
    std::vector<std::string> files;
    for (size_t i = 0; i < pages; ++i)
        files.push_back(stem + FormatText("-%.2d", static_cast<int>(i + 1)) + ext);
    return files;
}

}  // namespace kesto
