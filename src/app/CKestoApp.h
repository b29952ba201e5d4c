// The application object: all data of one job, its settings and what its command line gave.
// The job session owns one and hands it by reference to the workers and dialogs; tests make as
// many as they like. What the operator looks at is not here (ViewState). It holds data only:
// what it reads or asks goes through the services it is given.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "app/BlockTable.h"
#include "app/Codes.h"
#include "app/DirectMode.h"
#include "app/JobModel.h"
#include "app/Outcome.h"
#include "app/Rect.h"
#include "app/StackList.h"
#include "support/Services.h"

namespace kesto {

// The program's path and the tokens after it joined by single blanks: the command line as the
// job reads it (CKestoApp::CommandLine).
std::string JoinCommandLine(const std::vector<std::string>& words);

// How this job is set up: the settings' fonts, what the command line gave and the operator's
// Direct mode. Undo and redo leave them as they are.
struct JobSettings {
    std::array<int32_t, 5> FontHeight{};
    std::array<int32_t, 5> FontCharSet{};
    std::array<std::string, 5> FontNames;
    // DirectFlag: the command line allows the special destinations (kDirectA, kDirectB).
    bool DirectCodesAllowed = false;
    DirectMode IsDirect;
    int32_t InchMode = 0;
    int32_t StartCorner = 3;
    int32_t OffsetSet = 0;
    double OffsetA = 0;
    double OffsetB = 0;
    // PalletInfo "PalletSelect": how many pallets a process has and the prefix of their names.
    int32_t PalletCount = 0;
    std::string PalletPrefix;
};

// The program's run around the job: its command line and how it ends.
struct JobRun {
    std::string CommandLine;     // the whole command line, the program's own path included
    std::string PalletFilePath;  // token 2 of the command line
    int32_t ExitParam = 0;       // the code the process ends with (wParam of the last message)
    OkCancel DialogEnd = OkCancel::Cancel;  // DialogOk: OK once the job ended with OK
};

// Whether the parts' outline files are read with the job. A run that neither draws the job
// nor reports it has no use for them: its parts keep the file's outline flag and no shapes.
// Beside: read while the job is placed (the session starts the reads once the job file is
// read, and waits for them when the placement is done); the job file's readers leave them.
enum class OutlineFiles { Read, Unread, Beside };

class CKestoApp {
  public:
    CKestoApp() = default;  // defaults only; nothing is read

    // --- the job's records: what a correction changes and undo puts back -------------
    RecordList<BoxInfo> BoxList;
    RecordList<KouteiInfo> KouteiList;
    RecordList<PartsInfo> PartsList;
    StackList HaichiList;
    RecordList<PalletInfo> PalletList;
    std::array<int32_t, 100> BoxFlags{};  // index 1..99
    BlockTable Blocks;

    JobSettings Settings;
    JobRun Run;

    // --- model operations ------------------------------------------------------------
    // Null when out of memory: its callers fail with error::kNoMemoryForStack.
    HaichiInfo* AddHaichiInfo();
    void RemoveHaichiInfo(HaichiInfo* rec);
    int HasKoutei(int32_t no) const;
    // The first process numbered no, or null.
    KouteiInfo* KouteiByNo(int32_t no);
    const KouteiInfo* KouteiByNo(int32_t no) const;
    void FreeJob();
    KouteiInfo* KouteiAt(int32_t position);  // 1-based position in KouteiList, or null
    const KouteiInfo* KouteiAt(int32_t position) const;
    // The block a stack stands in, or null (see BlockTable::At).
    const BlockInfo* BlockOf(const HaichiInfo& stack) const { return Blocks.At(stack.BlockIndex); }
    PalletInfo* PalletByName(const std::string& name);  // first pallet with that Name
    const PalletInfo* PalletByName(const std::string& name) const;

    // --- start-up and exit (settings, command line, input) ------------------------------
    // Failed with 9001 when the settings file is missing, and without a code when its messages
    // cannot be loaded.
    Outcome InitSettings(const Services& services);
    // Empties the job lists and flags, reads the job's per-user value ("IsDirect", once a run).
    void ReadRegistrySettings(HostStore& host);
    void WriteRegistrySettings(HostStore& host);
    void ParseCommandLine();  // from CommandLine
    // Command line, pallet file, job file: the outcome of the first reader that fails (its code
    // also becomes ExitParam), else that of the job file.
    Outcome ReadInput(const Services& services, OutlineFiles outlines = OutlineFiles::Read);
    // PalletCount/PalletPrefix from "PalletSelect"/"PalletInfo"; LoadAndPlace reads them each
    // time the job is placed.
    void ReadPalletSelect(const MessageTable& messages);
};

}  // namespace kesto
