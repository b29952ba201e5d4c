#include "render/PictureWriter.h"

#include <QImage>
#include <QPageLayout>
#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>
#include <algorithm>
#include <cctype>
#include <filesystem>

#include "render/FontTable.h"
#include "render/QtCanvas.h"
#include "support/TextFormat.h"

namespace kesto {

namespace {

constexpr int kPdfResolution = 200;  // dots per inch: fine enough for the thinnest lines

QString FileName(const std::string& path) {
    return QString::fromLocal8Bit(path.c_str());
}

PictureWriteResult WritePdf(const PictureDocument& document, const std::string& output) {
    PictureWriteResult result;
    {
        QPdfWriter writer(FileName(output));
        writer.setCreator(QStringLiteral("Kesto"));
        writer.setResolution(kPdfResolution);
        writer.setPageLayout(PicturePageLayout());
        if (!document.Pages.empty())
            writer.setTitle(QString::fromUtf8(document.Pages.front().Title.c_str()));
        const std::string error = PaintPictureDocument(document, writer);
        if (!error.empty()) {
            result.Error = "cannot write " + output + ": " + error;
            return result;
        }
    }
    std::error_code ec;
    if (std::filesystem::file_size(output, ec) == 0 || ec) {
        result.Error = "cannot write " + output;
        return result;
    }
    result.Files.push_back(output);
    return result;
}

PictureWriteResult WritePngs(const PictureDocument& document, const std::string& output,
                             const FontTable& fonts) {
    PictureWriteResult result;
    const std::vector<std::string> files = PictureFiles(output, document.Pages.size());
    for (size_t i = 0; i < document.Pages.size(); ++i) {
        const PicturePage& page = document.Pages[i];
        QImage image(page.Width, page.Height, QImage::Format_RGB32);
        if (image.isNull()) {
            result.Error = FormatText("no memory for an image of %d x %d", page.Width, page.Height);
            return result;
        }
        {
            QPainter painter(&image);
            PaintPicturePage(page, fonts, painter, page.Width, page.Height);
        }
        const std::string& path = files[i];
        if (!image.save(FileName(path), "PNG")) {
            result.Error = "cannot write " + path;
            return result;
        }
        result.Files.push_back(path);
    }
    return result;
}

}  // namespace

void BuildPictureFonts(const PictureDocument& document, FontTable& fonts) {
    for (size_t i = 0; i < document.Fonts.size(); ++i) {
        const PictureFont& f = document.Fonts[i];
        fonts.Set(static_cast<int>(i), f.Height, f.CharSet, f.Name, f.Bold);
    }
}

QPageLayout PicturePageLayout() {
    return QPageLayout(QPageSize(QPageSize::A4), QPageLayout::Landscape, QMarginsF(8, 8, 8, 8),
                       QPageLayout::Millimeter);
}

std::string PaintPictureDocument(const PictureDocument& document, QPagedPaintDevice& device) {
    FontTable fonts;
    BuildPictureFonts(document, fonts);
    QPainter painter;
    if (!painter.begin(&device))
        return "the device takes no painting";
    for (size_t i = 0; i < document.Pages.size(); ++i) {
        if (i > 0 && !device.newPage())
            return FormatText("no page %d", static_cast<int>(i + 1));
        PaintPicturePage(document.Pages[i], fonts, painter, device.width(), device.height());
    }
    return painter.end() ? "" : "the pages were not finished";
}

void PaintPicturePage(const PicturePage& page, const FontTable& fonts, QPainter& painter, int width,
                      int height) {
    painter.save();
    painter.fillRect(QRect(0, 0, width, height), Qt::white);
    if (page.Width > 0 && page.Height > 0) {
        const double scale = std::min(static_cast<double>(width) / page.Width,
                                      static_cast<double>(height) / page.Height);
        painter.translate((width - page.Width * scale) / 2, (height - page.Height * scale) / 2);
        painter.scale(scale, scale);
        painter.setClipRect(QRect(0, 0, page.Width, page.Height));
        QtCanvas canvas(painter, fonts);
        page.Drawing.Replay(canvas);
    }
    painter.restore();
}

PictureWriteResult WritePictures(const PictureDocument& document, const std::string& output) {
    const std::optional<PictureFormat> format = PictureFormatOf(output);
    if (!format)
        return PictureWriteResult{{}, "the picture file must end in .pdf or .png: " + output};
    if (*format == PictureFormat::Pdf)
        return WritePdf(document, output);
    FontTable fonts;
    BuildPictureFonts(document, fonts);
    return WritePngs(document, output, fonts);
}

}  // namespace kesto
