// Paints the pictures of a placed job into files: a PDF with one A4 landscape page per
// picture page, or one PNG image per page. Fonts need a QGuiApplication.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "session/PlacementPicture.h"

class QPainter;

namespace kesto {

class FontTable;

struct PictureWriteResult {
    std::vector<std::string> Files;  // written, in page order
    std::string Error;               // empty on success
};

PictureWriteResult WritePictures(const PictureDocument& document, const std::string& output);

// One page on painter, its pixels scaled to fit width x height of the device and centred.
void PaintPicturePage(const PicturePage& page, const FontTable& fonts, QPainter& painter, int width,
                      int height);

// The fonts of a document, as the window makes them from the settings.
void BuildPictureFonts(const PictureDocument& document, FontTable& fonts);

}  // namespace kesto
