// The readers of the pallet definition file, the job file and the part outline files.
#pragma once

#include <vector>

#include <cstdio>

#include "app/CKestoApp.h"

namespace kesto {

// Pallet file named by command-line token 2 (app.Run.PalletFilePath). 1 on success;
// 0 with ErrorCode 9020 (not given or missing), 9021 (cannot open), 9022 (no memory).
int ReadPalletFile(CKestoApp& app);
// Reads one open pallet file's lines into PalletList and BoxFlags (used by ReadPalletFile).
int ReadPalletLines(CKestoApp& app, std::FILE* file);

// Job file of setup key "IEJ" (kind 94). 1 on success; 0 with ErrorCode 9010/9011/9012..9014.
int ReadJobFile(CKestoApp& app, const Services& services);
// Reads one open job file's lines into the lists (used by ReadJobFile).
int ReadJobLines(CKestoApp& app, std::FILE* file);
// The selection sort of PartsList by process, group key and decreasing size.
void SortParts(CKestoApp& app, Operator& op);

// Reads part.OutlinePath into part.Shapes. 1 on success, 0 when missing or unreadable
// (ErrorCode 9026 when the file exists but cannot be opened).
int ReadOutline(CKestoApp& app, PartsInfo& part);
// Reads the outlines of these parts, several at once, with the outcome ReadOutline would give
// for each in turn; a part whose outline is not read gets HasOutline 0.
void ReadOutlines(CKestoApp& app, const std::vector<PartsInfo*>& parts);

}  // namespace kesto
