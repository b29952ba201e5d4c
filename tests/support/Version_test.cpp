#include "support/Version.h"

#include <gtest/gtest.h>

#include <regex>
#include <string>

namespace kesto {
namespace {

TEST(KestoVersion, IsTheProjectsVersionOfThreeNumbers) {
    EXPECT_TRUE(std::regex_match(std::string(KestoVersion()), std::regex(R"(\d+\.\d+\.\d+)")))
        << KestoVersion();
}

TEST(VersionLine, NamesTheProgramAndKestosVersion) {
    EXPECT_EQ(VersionLine("kesto-batch"), std::string("kesto-batch (Kesto) ") + KestoVersion());
}

}  // namespace
}  // namespace kesto
