// The job check and the placement sequence that the window and the batch tool share.
#pragma once

#include <vector>

#include "app/CKestoApp.h"

namespace kesto {

// Resolves the pallets, builds the block table and checks every part's destination.
// 1 when the job can be shown; 0 after confirmation message 1, 2 or 3 (or a block failure).
int CheckJob(CKestoApp& app);

// The engine's part of LoadAndPlace after CheckJob: with mode 1 the kept counts (indexed by
// Seq) go to Work[0]; with fullRun 1 RestorePlacement, TrimExcess, FillShortage of the save
// file (setup kind 97); then PlaceAll(mode, fullRun). 1 on success.
int PlaceJob(CKestoApp& app, int mode, int fullRun, const std::vector<int>& keep);

}  // namespace kesto
