// Paints the pictures of a placed job into files (a PDF with one A4 landscape page per
// picture page, or one PNG image per page) or onto any paged device, a printer too. Fonts
// need a QGuiApplication.
#pragma once

#include <QPageLayout>
#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "view/PictureDocument.h"

class QPagedPaintDevice;
class QPainter;

namespace kesto {

class FontTable;

struct PictureWriteResult {
    std::vector<std::string> Files;  // written, in page order
    std::string Error;               // empty on success
};

PictureWriteResult WritePictures(const PictureDocument& document, const std::string& output);

// A4 landscape with narrow margins: the page every paged device is set to before the
// pictures are painted on it (a printer's dialog may change it).
QPageLayout PicturePageLayout();

// Every page of the document on its own page of device (a PDF writer or a printer whose
// layout the caller set), in the document's fonts; the empty text on success, else what
// went wrong.
std::string PaintPictureDocument(const PictureDocument& document, QPagedPaintDevice& device);

// One page on painter, its pixels scaled to fit width x height of the device and centred.
void PaintPicturePage(const PicturePage& page, const FontTable& fonts, QPainter& painter, int width,
                      int height);

// The fonts of a document, as the window makes them from the settings.
void BuildPictureFonts(const PictureDocument& document, FontTable& fonts);

}  // namespace kesto
