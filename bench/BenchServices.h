// The services of a benchmark: the operator that answers every question with OK and says
// nothing (QuietOperator), and a host whose system folder the benchmark sets and that keeps no user
// values and no state: a measured run writes nothing beyond its job's files.
#pragma once

#include <optional>
#include <string>

#include "support/OperatorRelay.h"
#include "support/Platform.h"

namespace kesto {

class BenchHost : public HostStore {
  public:
    SystemFolderResult SystemFolder() override { return {SystemFolderStatus::Ok, Folder}; }
    std::optional<std::string> ReadUserValue(const std::string&) override { return std::nullopt; }
    bool WriteUserValue(const std::string&, const std::string&) override { return true; }
    std::string StateFolder() override { return ""; }
    std::string Folder = ".";
};

}  // namespace kesto
