#include "support/JobIdentity.h"

namespace kesto {

void JobIdentity::Add(std::string_view kind, std::string_view bytes) {
    const std::string header = std::string(kind) + " " + std::to_string(bytes.size()) + "\n";
    hash_.Update(header);
    hash_.Update(bytes);
}

void JobIdentity::AddValue(std::string_view value) {
    Add("value", value);
}

void JobIdentity::AddFile(std::string_view bytes) {
    Add("file", bytes);
}

std::string JobIdentity::Hex() const {
    // Finishing spends a hash: a copy is finished, so the identity can grow further.
    Sha256 finished = hash_;
    return ToHex(finished.Finish());
}

}  // namespace kesto
