// Pictures of a placed job for the shop floor as the screen shows it: a page per process
// with all its pallets, drawn as the window draws them, and a page listing the small boxes,
// the set-aside parts, the parts left short and the stacks across an offset line. Worked out
// here, without Qt; the picture program and the window paint them.
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
#include "view/PictureDocument.h"

namespace kesto {

class JobSession;

// The pages of a placed job at width x height pixels: per process, its pallets four at a
// time (the 4PALLET view, FLAT when the job has one pallet), every stack with its label, the
// captions of the message file and a title with the process and the job file's name; then,
// the listing page(s). The pages take the operator's toggles from shown.
PictureDocument BuildPlacementPictures(const CKestoApp& app, const ViewState& shown,
                                       const Services& services, const std::string& jobName,
                                       int32_t width, int32_t height);

// The name of the session's job file, as the pictures name the job.
std::string PictureJobName(const JobSession& session);

}  // namespace kesto
