#include "support/MessageFile.h"

#include <cstdio>
#include <new>
#include <optional>
#include <vector>

#include "support/Platform.h"
#include "support/TextFile.h"

namespace kesto {

namespace {

constexpr size_t kLineMax = kLineSize - 1;
constexpr size_t kSectionNameMax = 63;
constexpr size_t kKeyNameMax = 31;
constexpr size_t kValueMax = 255;

struct MessageKey {
    std::string Name;
    std::string Value;
};

struct Section {
    std::string Name;
    std::vector<MessageKey> Keys;
};

// The section name of a header line, or nothing when the header is invalid.
std::optional<std::string> SectionName(const std::string& line) {
    const auto close = line.find(']');
    if (close == std::string::npos || close <= 1)
        return std::nullopt;
    return line.substr(1, std::min(close - 1, kSectionNameMax));
}

// Unquoted blanks and tabs are dropped; quotes switch the mode and are kept.
std::string ReadValue(const std::string& text) {
    std::string value;
    bool quoted = false;
    for (const char c : text) {
        if (c == '\n' || c == '\r' || c == ';')
            break;
        if (c == '"') {
            quoted = !quoted;
        } else if (!quoted && (c == ' ' || c == '\t')) {
            continue;
        }
        if (value.size() < kValueMax)
            value.push_back(c);
    }
    return value;
}

std::optional<MessageKey> ParseKeyLine(const std::string& line) {
    const auto equals = line.find('=');
    if (equals == std::string::npos || equals == 0 || equals > kKeyNameMax)
        return std::nullopt;
    return MessageKey{line.substr(0, equals), ReadValue(line.substr(equals + 1))};
}

bool IsIgnoredLine(const std::string& line) {
    return line.empty() || line[0] == ';' || line[0] == '\r' || line[0] == '\n' || line[0] == ' ';
}

}  // namespace

struct MessageTable::Impl {
    bool Loaded = false;
    std::vector<Section> Sections;
    bool SectionOpen = false;  // keys go to the last section while it is open

    void ReadLines(std::FILE* file, const std::string& path, Operator& op);
    void TakeLine(const std::string& line, const std::string& path, Operator& op);
};

void MessageTable::Impl::ReadLines(std::FILE* file, const std::string& path, Operator& op) {
    std::string line;
    while (ReadLine(line, file) >= 0) {
        // The line as the 1024-byte reading buffer holds it.
        line = line.substr(0, std::min(line.find('\0'), kLineMax));
        if (line.rfind("[FileDefault]", 0) == 0)
            return;
        TakeLine(line, path, op);
    }
}

void MessageTable::Impl::TakeLine(const std::string& line, const std::string& path, Operator& op) {
    if (IsIgnoredLine(line))
        return;
    if (line[0] == '[') {
        const auto name = SectionName(line);
        SectionOpen = name.has_value();
        if (name)
            Sections.push_back(Section{*name, {}});
        return;
    }
    if (!SectionOpen)
        return;
    auto key = ParseKeyLine(line);
    if (!key) {
        op.ShowMessageBox("Invalid Key in the Specified File:[" + path + "]");
        return;
    }
    Sections.back().Keys.push_back(std::move(*key));
}

MessageTable::MessageTable() : impl_(std::make_unique<Impl>()) {}

MessageTable::~MessageTable() = default;

int MessageTable::Load(const std::string& path, Operator& op) {
    TextFile file;
    if (OpenFile(path, "rt", file) != 1) {
        op.ShowMessageBox("File Open Error!![" + path + "]");
        return -1;
    }
    Free();
    try {
        impl_->ReadLines(file.get(), path, op);
    } catch (const std::bad_alloc&) {
        Free();
        op.ShowMessageBox("Memory Allocation Error!!");
        return -1;
    }
    impl_->SectionOpen = false;
    impl_->Loaded = true;
    return 0;
}

std::string MessageTable::Get(const std::string& section, const std::string& key) const {
    for (const auto& s : impl_->Sections) {
        if (s.Name != section)
            continue;
        for (const auto& k : s.Keys) {
            if (k.Name == key)
                return k.Value;
        }
    }
    return kMessageNotDefine;
}

void MessageTable::Free() {
    impl_->Sections.clear();
    impl_->SectionOpen = false;
    impl_->Loaded = false;
}

bool MessageTable::Loaded() const {
    return impl_->Loaded;
}

FontText MessageTable::GetFontText(const std::string& section, const std::string& key) const {
    FieldList list;
    SplitLine(Get(section, key), list);
    return FontText{AtoL(list[0]), list[1]};
}

std::string TextOr(const MessageTable& messages, const std::string& section, const std::string& key,
                   const std::string& english) {
    std::string text = messages.GetFontText(section, key).Text;
    return text.empty() ? english : text;
}

std::string KakuKey(int no) {
    char key[32];
    std::snprintf(key, sizeof key, "Msg%.3d", no);
    return key;
}

}  // namespace kesto
