// The job check before the first placement: pallets, block table, destinations.
#pragma once

#include "app/CKestoApp.h"

namespace kesto {

// Resolves the pallets, builds the block table and checks every part's destination.
// Done when the job can be shown; failed after confirmation message 1, 2 or 3, or as the block
// table's build fails (with its code).
Outcome CheckJob(CKestoApp& app, const Services& services);

}  // namespace kesto
