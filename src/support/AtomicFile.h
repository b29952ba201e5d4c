// Writes a file through a temporary file in the same folder and renames it over the target,
// so a failed write never leaves a half-written file and the previous file stays as it was.
#pragma once

#include <cstdio>
#include <string>

namespace kesto {

// The steps of one write, in the order they happen.
enum class WriteStep {
    TemporaryCreated,
    FileSynced,    // the temporary's bytes are on the disk and it is closed
    Renamed,       // the temporary has the target's name
    FolderSynced,  // the new name is on the disk too (POSIX; Windows renames write-through)
};

// Watches every write of the process: tests record the steps or stop the process at one. The
// programs set none.
class WriteWatcher {
  public:
    virtual ~WriteWatcher() = default;
    // The stream the temporary is written through; null for the usual buffered one.
    virtual std::FILE* OpenStream(int fd) {
        (void)fd;
        return nullptr;
    }
    virtual void Reached(WriteStep step) = 0;
};

class AtomicFile {
  public:
    explicit AtomicFile(std::string target);
    AtomicFile(const AtomicFile&) = delete;
    AtomicFile& operator=(const AtomicFile&) = delete;
    ~AtomicFile();  // without Commit the temporary file is removed, the target untouched

    // Creates the temporary file; false when the folder cannot be written.
    bool Open();
    std::FILE* get() const { return file_; }
    // Flushes, syncs, closes and renames over the target, then syncs the folder, so the new
    // file survives a power cut once this returns. false (temporary removed) on any failure.
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

    // Sets (or with null clears) the watcher of every write.
    static void Watch(WriteWatcher* watcher);

  private:
    bool OpenStream(int fd);

    std::string target_;
    std::string temp_;
    std::FILE* file_ = nullptr;
    int fd_ = -1;
};

}  // namespace kesto
