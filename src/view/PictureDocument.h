// The document that carries pictures (the screen's, or the sort sheet's) to whoever paints
// them: fonts and pages of display lists, and the text file the picture program reads.
#pragma once

#include <array>
#include <cstdint>
#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

#include "app/CKestoApp.h"
#include "view/DisplayList.h"

namespace kesto {

struct PictureFont {
    int32_t Height = 0;  // as in the settings: a font with height 0 is not defined
    int32_t CharSet = 0;
    std::string Name;
    bool Bold = false;
};

struct PicturePage {
    std::string Title;
    int32_t Width = 0;  // page size in pixels
    int32_t Height = 0;
    DisplayList Drawing;
};

// Slots 0..4 are the settings' fonts; a picture may define the others for itself.
struct PictureDocument {
    std::array<PictureFont, kCanvasFontSlots> Fonts;
    std::vector<PicturePage> Pages;
};

// The settings' fonts in slots 0..4 of a document.
void TakeSettingsFonts(const CKestoApp& app, PictureDocument& document);

enum class PictureFormat { Pdf, Png };

// By the file's extension (.pdf or .png, any case); nullopt for anything else.
std::optional<PictureFormat> PictureFormatOf(const std::string& path);

// The files a picture of `pages` pages is written to: the PDF itself, or one PNG image per
// page ("out.png" gives "out-01.png", "out-02.png", ...).
std::vector<std::string> PictureFiles(const std::string& output, size_t pages);

void WritePictureDocument(const PictureDocument& document, std::ostream& out);
std::optional<PictureDocument> ReadPictureDocument(std::istream& in);

}  // namespace kesto
