// A file held open by another program, as a spreadsheet or an editor holds a file it shows
// (Windows only).
#pragma once

#ifdef _WIN32

#include <windows.h>

#include <string>

namespace kesto::test {

class HeldOpen {
  public:
    // share: what the holder lets others do meanwhile (0: nothing; FILE_SHARE_READ: read).
    HeldOpen(const std::string& path, DWORD access, DWORD share)
        : handle_(CreateFileA(path.c_str(), access, share, nullptr, OPEN_EXISTING,
                              FILE_ATTRIBUTE_NORMAL, nullptr)) {}
    ~HeldOpen() { Close(); }
    HeldOpen(const HeldOpen&) = delete;
    HeldOpen& operator=(const HeldOpen&) = delete;
    bool IsOpen() const { return handle_ != INVALID_HANDLE_VALUE; }
    void Close() {
        if (IsOpen())
            CloseHandle(handle_);
        handle_ = INVALID_HANDLE_VALUE;
    }

  private:
    HANDLE handle_;
};

}  // namespace kesto::test

#endif
