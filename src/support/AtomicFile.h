// Writes a file through a temporary file in the same folder and renames it over the target,
// so a failed write never leaves a half-written file and the previous file stays as it was.
#pragma once

#include <cstdio>
#include <string>

namespace kesto {

class AtomicFile {
  public:
    explicit AtomicFile(std::string target);
    AtomicFile(const AtomicFile&) = delete;
    AtomicFile& operator=(const AtomicFile&) = delete;
    ~AtomicFile();  // without Commit the temporary file is removed, the target untouched

    // Creates the temporary file; false when the folder cannot be written.
    bool Open();
    std::FILE* get() const { return file_; }
    // Flushes, closes and renames over the target; false (temporary removed) on any failure.
    bool Commit();
    // Drops the temporary file; the target stays as it was.
    void Discard();

    const std::string& Target() const { return target_; }
    const std::string& TempPath() const { return temp_; }

    // True when name is exactly what Open names a temporary of a target called targetName:
    // "<targetName>.kesto-" and mkstemp's six letters or digits.
    static bool IsTemporaryName(const std::string& targetName, const std::string& name);
    // Removes the temporaries of target that a writer stopped midway (killed, power cut) left
    // in the target's folder: only regular files named as IsTemporaryName says. Returns how
    // many were removed.
    static int RemoveStaleTemporaries(const std::string& target);

  private:
    bool OpenStream(int fd);

    std::string target_;
    std::string temp_;
    std::FILE* file_ = nullptr;
    int fd_ = -1;
};

}  // namespace kesto
