// kesto-batch --picture: pictures of the written job for the shop floor. The document is
// worked out here, on the core; the picture program paints it, so a run without --picture
// never loads Qt.
#pragma once

#include <cstdint>
#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

namespace kesto {

class JobSession;

// The default size of a PNG image.
inline constexpr int32_t kPngDefaultWidth = 1600;
inline constexpr int32_t kPngDefaultHeight = 1000;
// What --picture-size accepts per side.
inline constexpr int32_t kPictureSideMin = 100;
inline constexpr int32_t kPictureSideMax = 10000;

struct PictureRequest {
    std::string Output;  // .pdf or .png
    int32_t Width = kPngDefaultWidth;
    int32_t Height = kPngDefaultHeight;
};

// "WxH" within the limits; nullopt otherwise.
std::optional<std::pair<int32_t, int32_t>> ParsePictureSize(const std::string& text);

// Builds the pictures of the session's job (still loaded: before Exit), hands them to the
// picture program and reports the files on out. A failure is reported on err and changes
// nothing else. true when the pictures were written.
bool WriteBatchPictures(JobSession& session, const PictureRequest& request,
                        const std::string& pictureProgram, std::ostream& out, std::ostream& err);

}  // namespace kesto
