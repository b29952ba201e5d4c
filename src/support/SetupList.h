// The system folder, the setup file list "Ks_Setup.ini" and the paths of data files.
#pragma once

#include <string>

namespace kesto {

struct Services;

// The kinds of data file this program uses (the setup list knows many more).
enum class DataFile : int {
    Job = 94,            // "IEJ", the job file
    Result = 96,         // "IEK", the result file (its summary: the same path + "_tmp")
    PlacementSave = 97,  // "IEL", the placement save file, read back by the next run
};

// Fills folder with the system folder and returns 1; on failure empties it, shows
// "OrvoFolderGet RegOpen Error" or "OrvoFolderGet Address Value Get Error", returns 0.
int GetSystemFolder(const Services& services, std::string& folder);

// The value of key in the setup list, "" when the list cannot be read or has no such entry.
std::string GetSetupValue(const Services& services, const std::string& key);

// System folder joined with the key's value; an empty folder and 0 when either is missing.
int GetSetupFolder(const Services& services, const std::string& key, std::string& folder);

// Full path of a data file of a numbered kind; empty when the kind is unknown or its key has
// no value. part1/part2 may be null.
std::string GetDataFilePath(const Services& services, int kind, const char* part1 = nullptr,
                            const char* part2 = nullptr);
std::string GetDataFilePath(const Services& services, DataFile file);

// Path of the setup list as looked up: <system>/bin/Ks_Setup.ini, else ./Ks_Setup.ini.
std::string SetupListPath(const Services& services);

}  // namespace kesto
