// The job check before the first placement: pallets, block table, destinations.
#pragma once

#include "app/CKestoApp.h"

namespace kesto {

// Resolves the pallets, builds the block table and checks every part's destination.
// 1 when the job can be shown; 0 after confirmation message 1, 2 or 3 (or a block failure).
int CheckJob(CKestoApp& app, const Services& services);

}  // namespace kesto
