// Sets or clears an environment variable and the working folder for one test, restoring
// the previous state at the end of the scope.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <optional>
#include <string>

namespace kesto::test {

class ScopedEnv {
  public:
    // A null value clears the variable.
    ScopedEnv(std::string name, const char* value) : name_(std::move(name)) {
        if (const char* old = std::getenv(name_.c_str()))
            old_ = old;
        Set(value);
    }
    ~ScopedEnv() { Set(old_ ? old_->c_str() : nullptr); }
    ScopedEnv(const ScopedEnv&) = delete;
    ScopedEnv& operator=(const ScopedEnv&) = delete;

  private:
    void Set(const char* value) const {
#ifdef _WIN32
        // The C runtime of Windows removes a variable set to the empty text.
        ::_putenv_s(name_.c_str(), value != nullptr ? value : "");
#else
        if (value != nullptr) {
            ::setenv(name_.c_str(), value, 1);
        } else {
            ::unsetenv(name_.c_str());
        }
#endif
    }

    std::string name_;
    std::optional<std::string> old_;
};

class ScopedWorkingFolder {
  public:
    explicit ScopedWorkingFolder(const std::filesystem::path& folder)
        : old_(std::filesystem::current_path()) {
        std::filesystem::current_path(folder);
    }
    ~ScopedWorkingFolder() { std::filesystem::current_path(old_); }
    ScopedWorkingFolder(const ScopedWorkingFolder&) = delete;
    ScopedWorkingFolder& operator=(const ScopedWorkingFolder&) = delete;

  private:
    std::filesystem::path old_;
};

}  // namespace kesto::test
