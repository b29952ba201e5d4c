// One harness per reader: each writes its input where the program reads that file and calls
// the reader as the program does. The fuzzers (FuzzMain.cpp) and the replay of the corpora in
// the test suite call these same functions. Each returns what the reader made of the input, so
// a test can check a known input; the fuzzers only look for crashes, hangs and leaks.
#pragma once

#include <cstddef>
#include <cstdint>

#include "FuzzSite.h"

namespace kesto::fuzz {

// The pallet file named on the command line: pallet records read, -1 when the reader failed.
int FuzzPalletFile(FuzzSite& site, const uint8_t* data, size_t size);
// The job file of setup key "IEJ": part records read, -1 when the reader failed or the input
// names a machine file (see NamesMachineFile).
int FuzzJobFile(FuzzSite& site, const uint8_t* data, size_t size);
// One part's outline file: elements read, -1 when the reader failed.
int FuzzOutlineFile(FuzzSite& site, const uint8_t* data, size_t size);
// "Kesto.ini" in the folder of setup key "MSG": the pallet count of "PalletSelect", -1 when
// the settings could not be read.
int FuzzMessageFile(FuzzSite& site, const uint8_t* data, size_t size);
// The setup list "bin/Ks_Setup.ini": how many of "IEJ", "IEK", "IEL", "MSG" give a path.
int FuzzSetupList(FuzzSite& site, const uint8_t* data, size_t size);
// kesto-batch's arguments, separated by NUL bytes, then the window program's command line
// they make: the start corner read, -1 when the options are refused.
int FuzzCommandLine(FuzzSite& site, const uint8_t* data, size_t size);
// The placement save file of setup key "IEL" beside a valid job: start-up, restore, trim,
// fill, PlaceAll, then OK with the offset check and the writers. The stacks in the list after
// the run, -1 when the job did not start.
int FuzzPlacementFile(FuzzSite& site, const uint8_t* data, size_t size);
// A journal of the operator's commands in the state folder: the lines after its header, -1
// when the header is refused. Every command read must be written back as a line that reads
// as the same command; the harness stops the process when one is not.
int FuzzJournal(FuzzSite& site, const uint8_t* data, size_t size);

}  // namespace kesto::fuzz
