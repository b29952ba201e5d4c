// The readers of the pallet definition file, the job file and the part outline files.
#pragma once

#include <string>
#include <thread>
#include <vector>

#include <cstdio>

#include "app/CKestoApp.h"
#include "support/TextFile.h"

namespace kesto {

// "Kesto.ini" in the folder of setup key "MSG"; empty when the key has no folder.
std::string SettingsFilePath(const Services& services);

// Pallet file named by command-line token 2 (app.Run.PalletFilePath). Failed with 9020 (not
// given or missing), 9021 (cannot open) or 9022 (no memory).
Outcome ReadPalletFile(CKestoApp& app);
// Reads one open pallet file's lines into PalletList and BoxFlags (used by ReadPalletFile).
Outcome ReadPalletLines(CKestoApp& app, std::FILE* file);

// Job file of setup key "IEJ" (kind 94). Failed with 9010/9011/9012..9014; done, possibly
// with the outlines' 9026.
Outcome ReadJobFile(CKestoApp& app, const Services& services,
                    OutlineFiles outlines = OutlineFiles::Read);
// Reads one open job file's lines into the lists, and the outlines (used by ReadJobFile).
Outcome ReadJobLines(CKestoApp& app, std::FILE* file, OutlineFiles outlines = OutlineFiles::Read);
// The selection sort of PartsList by process, group key and decreasing size.
void SortParts(CKestoApp& app, Operator& op);

// Reads part.OutlinePath into part.Shapes. Failed when missing or unreadable, with 9026 when
// the file exists but cannot be opened.
Outcome ReadOutline(PartsInfo& part);
// Reads the outlines of these parts, several at once; a part whose outline is not read gets
// HasOutline 0. Done, with 9026 when one of the files exists but cannot be opened: the job is
// drawn without those outlines.
Outcome ReadOutlines(const std::vector<PartsInfo*>& parts);

// ReadOutlines on threads of their own from the moment it is made, while the caller goes on
// with what never looks at an outline (placing the job). Until Wait has returned, nothing but
// the reading threads may touch these parts' shapes or outline flag, nor remove the parts.
class OutlineReads {
  public:
    explicit OutlineReads(std::vector<PartsInfo*> parts);
    OutlineReads(const OutlineReads&) = delete;
    OutlineReads& operator=(const OutlineReads&) = delete;
    // Waits for the threads; a part whose outline was not read keeps its flag.
    ~OutlineReads();

    // Waits for the threads and gives what ReadOutlines gives; Done without a code after.
    Outcome Wait();

  private:
    void JoinReaders();

    std::vector<PartsInfo*> parts_;
    std::vector<WholeFile> reads_;
    std::vector<std::thread> readers_;  // last: they use the rest
};

}  // namespace kesto
