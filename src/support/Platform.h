// The seams to the operator and to the host machine. Each program makes its own and hands
// them to its job session; nothing here is process-wide.
#pragma once

#include <ctime>
#include <optional>
#include <string>
#include <utility>

namespace kesto {

// The operator's answer to a question, and the button a job is ended with.
enum class OkCancel : int { Ok = 1, Cancel = 2 };

class Operator {
  public:
    virtual ~Operator() = default;
    // A fixed English message box with an OK button.
    virtual void ShowMessageBox(const std::string& text) = 0;
    // The confirmation dialog for message numbers no1 (and no2 when above 0).
    virtual OkCancel AskKaku(int no1, int no2) = 0;
    // The offset warning with OK and Cancel: true for OK (go on), false for Cancel.
    virtual bool AskOffsetWarning(const std::string& text) = 0;
};

enum class SystemFolderStatus { Ok, NoKey, NoValue };

struct SystemFolderResult {
    SystemFolderStatus Status = SystemFolderStatus::NoKey;
    std::string Folder;
};

class HostStore {
  public:
    virtual ~HostStore() = default;
    // The machine-wide system folder ("ORVOSystemRoot").
    virtual SystemFolderResult SystemFolder() = 0;
    // A per-user value ("IsDirect", "IsBlockDraw"); nullopt when the key or value is missing.
    virtual std::optional<std::string> ReadUserValue(const std::string& name) = 0;
    // Writes a per-user value; true on success.
    virtual bool WriteUserValue(const std::string& name, const std::string& text) = 0;
    // The per-user folder where Kesto keeps what must outlive the process (the journal of
    // the operator's commands); it may not exist yet. Empty when there is none.
    virtual std::string StateFolder() = 0;
};

// The default host store. Windows: the registry. Elsewhere: env ORVOSystemRoot, else the
// value ORVOSystemRoot in /etc/ORVONetwork/SystemInformation.ini; per-user values in
// $XDG_CONFIG_HOME/ORVONetwork/Vardo/Kesto.ini (default ~/.config/...). The state folder:
// %LOCALAPPDATA%\Kesto on Windows; elsewhere $XDG_STATE_HOME/kesto when that is an absolute
// path, else $HOME/.local/state/kesto.
class DefaultHostStore : public HostStore {
  public:
    DefaultHostStore() = default;
    // Reads the machine-wide value from another file than MachineIniPath() (POSIX only).
    explicit DefaultHostStore(std::string machineIni) : machineIni_(std::move(machineIni)) {}
    SystemFolderResult SystemFolder() override;
    std::optional<std::string> ReadUserValue(const std::string& name) override;
    bool WriteUserValue(const std::string& name, const std::string& text) override;
    std::string StateFolder() override;
    // Where the values live: a file here, the registry key's full name on Windows.
    static std::string UserValuesPath();
    static std::string MachineIniPath();  // /etc/ORVONetwork/SystemInformation.ini

  private:
    std::string machineIni_ = MachineIniPath();
};

// The local date and time of when as "YYYY-MM-DD HH:MM" (the time zone's, as the machine is
// set); empty when the platform cannot tell it.
std::string LocalDateTimeText(std::time_t when);

}  // namespace kesto
