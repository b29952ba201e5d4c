// The body of the result file: process by process and pallet group by pallet group, the pieces
// of every part, in a serpentine order of group keys.
#pragma once

#include <cstdio>

#include "app/CKestoApp.h"
#include "output/StackIndex.h"

namespace kesto {

// Writes the result lines to file and sets each counted stack's Level to its group number.
// Failed with 9022 when a line cannot be written.
Outcome WriteResultGroups(CKestoApp& app, const StackIndex& stacks, std::FILE* file);

}  // namespace kesto
