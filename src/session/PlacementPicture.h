// Pictures of a placed job for the shop floor as the screen shows it: a page per process
// with all its pallets, drawn as the window draws them, and a page listing the small boxes,
// the set-aside parts, the parts left short and the stacks across an offset line; and the
// document that carries pictures (these, or the sort sheet's) to whoever paints them.
// Worked out here, without Qt; the picture program and the window paint them.
#pragma once

#include <array>
#include <cstdint>
#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

#include "app/CKestoApp.h"
#include "app/ViewState.h"
#include "support/Services.h"
#include "view/DisplayList.h"

namespace kesto {

class JobSession;

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

// The pages of a placed job at width x height pixels: per process, its pallets four at a
// time (the 4PALLET view, FLAT when the job has one pallet), every stack with its label, the
// captions of the message file and a title with the process and the job file's name; then,
// the listing page(s). The pages take the operator's toggles from shown;
// neither the job nor shown is changed.
PictureDocument BuildPlacementPictures(CKestoApp& app, const ViewState& shown,
                                       const Services& services, const std::string& jobName,
                                       int32_t width, int32_t height);

// The name of the session's job file, as the pictures name the job.
std::string PictureJobName(const JobSession& session);

enum class PictureFormat { Pdf, Png };

// By the file's extension (.pdf or .png, any case); nullopt for anything else.
std::optional<PictureFormat> PictureFormatOf(const std::string& path);

// The files a picture of `pages` pages is written to: the PDF itself, or one PNG image per
// page ("out.png" gives "out-01.png", "out-02.png", ...).
std::vector<std::string> PictureFiles(const std::string& output, size_t pages);

void WritePictureDocument(const PictureDocument& document, std::ostream& out);
std::optional<PictureDocument> ReadPictureDocument(std::istream& in);

}  // namespace kesto
