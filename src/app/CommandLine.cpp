#include <algorithm>
#include <array>
#include <string>

#include "app/CKestoApp.h"
#include "app/ScanFormat.h"

namespace kesto {

std::string JoinCommandLine(const std::vector<std::string>& words) {
    std::string line;
    for (size_t i = 0; i < words.size(); ++i) {
        if (i > 0)
            line += ' ';
        line += words[i];
    }
    return line;
}

namespace {

constexpr int kTokenCount = 7;
constexpr size_t kTokenMax = 255;
// The white space that separates "%s" conversions.
constexpr const char* kWhiteSpace = " \t\n\v\f\r";

// Splits as sscanf "%s%s%s%s%s%s%s" does: runs of white space separate, no quoting. A token
// longer than its buffer is cut, and its remainder is not taken as the next token.
std::array<std::string, kTokenCount> SplitTokens(const std::string& commandLine) {
    const std::string line(commandLine.c_str());
    std::array<std::string, kTokenCount> tokens;
    size_t pos = 0;
    for (std::string& token : tokens) {
        pos = line.find_first_not_of(kWhiteSpace, pos);
        if (pos == std::string::npos)
            break;
        size_t end = line.find_first_of(kWhiteSpace, pos);
        if (end == std::string::npos)
            end = line.size();
        token = line.substr(pos, std::min(end - pos, kTokenMax));
        pos = end;
    }
    return tokens;
}

// Token 7 gives the corner from which block cells are numbered.
int32_t StartCornerOf(const std::string& token) {
    int32_t corner = 0;
    if (!ScanInt(token, corner))
        return 3;
    switch (corner) {
        case 1:
            return 0;
        case 2:
            return 2;
        case 3:
            return 1;
        default:
            return 3;
    }
}

bool BeginsWithOne(const std::string& token) {
    return !token.empty() && token[0] == '1';
}

}  // namespace

void CKestoApp::ParseCommandLine() {
    const auto tokens = SplitTokens(Run.CommandLine);
    Run.PalletFilePath = tokens[1];
    Settings.DirectCodesAllowed = BeginsWithOne(tokens[2]);
    if (BeginsWithOne(tokens[3]))
        Settings.InchMode = 1;
    ScanDouble(tokens[4], Settings.OffsetA);
    ScanDouble(tokens[5], Settings.OffsetB);
    Settings.StartCorner = StartCornerOf(tokens[6]);
}

}  // namespace kesto
