// A job's identity: its framing keeps apart every two different sequences of values and files,
// and its digest is that of the framed bytes.
#include "support/JobIdentity.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <string>
#include <string_view>

namespace kesto {
namespace {

std::string ValuesHex(std::initializer_list<std::string_view> values) {
    JobIdentity identity;
    for (const std::string_view value : values)
        identity.AddValue(value);
    return identity.Hex();
}

TEST(JobIdentity, NothingAddedIsTheDigestOfNothing) {
    EXPECT_EQ(JobIdentity().Hex(),
              "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855");
}

// The digests were worked out by the system's sha256sum on the framed bytes:
//   printf 'value 5\nkesto' | sha256sum
//   printf 'value 5\nkestofile 0\nvalue 3\n1 2file 6\nP1,A\r\n' | sha256sum
TEST(JobIdentity, IsTheDigestOfTheFramedItems) {
    JobIdentity one;
    one.AddValue("kesto");
    EXPECT_EQ(one.Hex(), "b90dc78f8e3b1d9589750a9f82750d15b931b33929018c08b46f1c4c16f26183");

    JobIdentity mixed;
    mixed.AddValue("kesto");
    mixed.AddFile("");
    mixed.AddValue("1 2");
    mixed.AddFile("P1,A\r\n");
    EXPECT_EQ(mixed.Hex(), "09ddcdc744b87b4fb594acad54cf5d3919cc1dab4931c72cf3343ed9bb1eebda");
}

TEST(JobIdentity, SameItemsInTheSameOrderGiveTheSameName) {
    EXPECT_EQ(ValuesHex({"p.txt", "0", "1"}), ValuesHex({"p.txt", "0", "1"}));
    EXPECT_EQ(ValuesHex({"p.txt"}).size(), 64u);
}

TEST(JobIdentity, OrderOfTheItemsMatters) {
    EXPECT_NE(ValuesHex({"a", "b"}), ValuesHex({"b", "a"}));
    JobIdentity valueFirst;
    valueFirst.AddValue("x");
    valueFirst.AddFile("y");
    JobIdentity fileFirst;
    fileFirst.AddFile("y");
    fileFirst.AddValue("x");
    EXPECT_NE(valueFirst.Hex(), fileFirst.Hex());
}

TEST(JobIdentity, MovingAByteFromOneValueToTheNextChangesTheName) {
    EXPECT_NE(ValuesHex({"ab", "c"}), ValuesHex({"a", "bc"}));
    EXPECT_NE(ValuesHex({"abc", ""}), ValuesHex({"ab", "c"}));
    EXPECT_NE(ValuesHex({"abc"}), ValuesHex({"abc", ""}));
    // A value that spells the framing of two values is still one value.
    EXPECT_NE(ValuesHex({"a", "b"}), ValuesHex({"a" + std::string("value 1\nb")}));
}

TEST(JobIdentity, ValueAndFileOfTheSameBytesDiffer) {
    JobIdentity value;
    value.AddValue("P1,A\n");
    JobIdentity file;
    file.AddFile("P1,A\n");
    EXPECT_NE(value.Hex(), file.Hex());
}

TEST(JobIdentity, NamingTheItemsSoFarLeavesTheIdentityOpen) {
    JobIdentity growing;
    growing.AddValue("a");
    const std::string first = growing.Hex();
    EXPECT_EQ(growing.Hex(), first);
    growing.AddValue("b");
    EXPECT_EQ(growing.Hex(), ValuesHex({"a", "b"}));
}

}  // namespace
}  // namespace kesto
