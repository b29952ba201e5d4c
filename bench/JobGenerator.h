// Seeded jobs of every size, built in memory or written as a whole installation.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "app/CKestoApp.h"

namespace kesto {

// The shape of a generated job. Every process has a pallet type of its own with a grid of
// CellsX x CellsY cells of 200 x 150; parts are sized so that one to four stand in a cell.
struct JobShape {
    uint32_t Seed = 1;
    int Processes = 3;
    int Parts = 40;  // the lists take at most 999; more are written to test the cut
    int Pallets = 4;
    int CellsX = 6;
    int CellsY = 4;
    int SmallBoxes = 3;      // boxes 1..SmallBoxes, destinations 100..
    int BoxPercent = 5;      // share of parts bound for a small box
    int QuantityFactor = 1;  // every drawn quantity times this: above 1 the pallets run out
};

JobShape SmallJobShape();       // one process, a few parts
JobShape MediumJobShape();      // five processes, 200 parts
JobShape LargestJobShape();     // 999 parts, twelve processes, dense grids
JobShape SampleLikeJobShape();  // a shop job: 3 processes, ~40 parts, 4 pallets
// The largest job with five times the quantities: parts are left short and the run asks
// whether to delete the result file (208).
JobShape CrowdedJobShape();

struct GeneratedJob {
    std::vector<PalletInfo> Pallets;
    std::vector<BoxInfo> Boxes;
    std::vector<KouteiInfo> Koutei;
    std::vector<PartsInfo> Parts;
    int32_t PalletCount = 0;
    int SmallBoxes = 0;
};

GeneratedJob GenerateJob(const JobShape& shape);

// Fills the job's lists, counts, BoxFlags and PalletCount into app, as the readers would.
void FillApp(CKestoApp& app, const GeneratedJob& job);

// A written installation: the system folder and the command line that starts the job.
struct Installation {
    std::string Root;
    std::string PalletFile;
    std::string CommandLine;
};

// How a written installation departs from the plain one.
struct InstallOptions {
    int Corner = 4;                   // command-line token 7
    bool Inch = false;                // token 4: pallet lengths in inches
    double OffsetA = 0;               // token 5
    double OffsetB = 0;               // token 6
    bool BackslashPaths = false;      // the setup list's values written with '\'
    bool UnknownDestination = false;  // the last part names a box that does not exist
    bool UndefinedSmallBox = false;   // the last part goes to a small box of no "B" line
    bool SensitiveSides = false;      // every other part asks for the offset check ("1111")
    bool OutlineFiles = true;         // one outline file per part, named in its line
    int MissingOutlineEvery = 0;      // every n-th part's outline is named but not written
};

// The options of a crowded installation: outlines named for every part, every seventh missing.
InstallOptions CrowdedInstallOptions();

// Writes bin/Ks_Setup.ini, msg/Kesto.ini, pallet/pallet.txt, job/job.txt and one outline
// file per part under root (created when missing).
Installation WriteInstallation(const std::string& root, const GeneratedJob& job,
                               const InstallOptions& options = {});

}  // namespace kesto
