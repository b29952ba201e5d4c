// The system folder, the setup file list "Ks_Setup.ini" and the paths of data files.
#pragma once

#include <string>

namespace kesto {

// Fills folder with the system folder and returns 1; on failure empties it, shows
// "OrvoFolderGet RegOpen Error" or "OrvoFolderGet Address Value Get Error", returns 0.
int GetSystemFolder(std::string& folder);

// The value of key in the setup list, or nullptr. The text lives in one of 13 result
// buffers used in turn, so it stays valid for the next 12 lookups.
const char* GetSetupValue(const std::string& key);

// System folder joined with the key's value; an empty folder and 0 when either is missing.
int GetSetupFolder(const std::string& key, std::string& folder);

// Full path of a data file of a numbered kind (94 job, 96 result, 97 save file, ...);
// empty when the kind is unknown or its key has no value. part1/part2 may be null.
std::string GetDataFilePath(int kind, const char* part1 = nullptr, const char* part2 = nullptr);

// Path of the setup list as looked up: <system>/bin/Ks_Setup.ini, else ./Ks_Setup.ini.
std::string SetupListPath();

}  // namespace kesto
