// SHA-256 against the published example messages, fed whole, in pieces and byte by byte, and at
// the lengths where the padding spills into a second block.
#include "support/Sha256.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

namespace kesto {
namespace {

constexpr const char* kEmptyDigest =
    "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855";

// A message of every byte value, longer than two blocks, so that a split can fall anywhere.
std::string MixedMessage() {
    std::string message;
    for (int i = 0; i < 150; ++i)
        message += static_cast<char>((i * 37 + 11) & 0xff);
    return message;
}

TEST(Sha256, ThreeLettersGiveThePublishedDigest) {
    EXPECT_EQ(Sha256Hex("abc"), "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad");
}

TEST(Sha256, EmptyMessageGivesThePublishedDigest) {
    EXPECT_EQ(Sha256Hex(""), kEmptyDigest);
    Sha256 nothingFed;
    EXPECT_EQ(ToHex(nothingFed.Finish()), kEmptyDigest);
}

TEST(Sha256, FourHundredFortyEightBitMessageGivesThePublishedDigest) {
    EXPECT_EQ(Sha256Hex("abcdbcdecdefdefgefghfghighijhijkijkljklmklmnlmnomnopnopq"),
              "248d6a61d20638b8e5c026930c3e6039a33ce45964ff2167f6ecedd419db06c1");
}

TEST(Sha256, EightHundredNinetySixBitMessageGivesThePublishedDigest) {
    EXPECT_EQ(Sha256Hex("abcdefghbcdefghicdefghijdefghijkefghijklfghijklmghijklmnhijklmnoijklmnopj"
                        "klmnopqklmnopqrlmnopqrsmnopqrstnopqrstu"),
              "cf5b16a778af8380036ce59e7b0492370b249b11e8f07a51afac45037afee9d1");
}

TEST(Sha256, OneMillionLettersGiveThePublishedDigest) {
    const std::string million(1000000, 'a');
    EXPECT_EQ(Sha256Hex(million),
              "cdc76e5c9914fb9281a1c7e284d73e67f1809a48a497200e046d39ccc7112cd0");
    // The same letters in pieces of an odd size.
    Sha256 pieces;
    for (size_t at = 0; at < million.size(); at += 999)
        pieces.Update(std::string_view(million).substr(at, 999));
    EXPECT_EQ(ToHex(pieces.Finish()),
              "cdc76e5c9914fb9281a1c7e284d73e67f1809a48a497200e046d39ccc7112cd0");
}

TEST(Sha256, TwoPiecesSplitAnywhereHashAsTheWholeMessage) {
    const std::string message = MixedMessage();
    const std::string whole = Sha256Hex(message);
    for (size_t split = 0; split <= message.size(); ++split) {
        Sha256 hash;
        hash.Update(std::string_view(message).substr(0, split));
        hash.Update(std::string_view(message).substr(split));
        EXPECT_EQ(ToHex(hash.Finish()), whole) << "split at " << split;
    }
}

TEST(Sha256, ThreePiecesSplitAnywhereHashAsTheWholeMessage) {
    const std::string message = MixedMessage();
    const std::string whole = Sha256Hex(message);
    for (size_t first = 0; first <= message.size(); ++first) {
        for (size_t second = first; second <= message.size(); second += 7) {
            Sha256 hash;
            hash.Update(std::string_view(message).substr(0, first));
            hash.Update(std::string_view(message).substr(first, second - first));
            hash.Update(std::string_view(message).substr(second));
            ASSERT_EQ(ToHex(hash.Finish()), whole) << first << " " << second;
        }
    }
}

TEST(Sha256, ByteByByteHashesAsTheWholeMessage) {
    const std::string message = MixedMessage();
    Sha256 hash;
    for (const char byte : message)
        hash.Update(std::string_view(&byte, 1));
    EXPECT_EQ(ToHex(hash.Finish()), Sha256Hex(message));
}

// Digests of n letters 'a' (from the system's sha256sum), at the lengths where the padding
// fits the last block (55), just does not (56), and around a whole block.
TEST(Sha256, LengthsAtThePaddingEdgesGiveTheKnownDigests) {
    const std::pair<size_t, const char*> cases[] = {
        {55, "9f4390f8d30c2dd92ec9f095b65e2b9ae9b0a925a5258e241c9f1e910f734318"},
        {56, "b35439a4ac6f0948b6d6f9e3c6af0f5f590ce20f1bde7090ef7970686ec6738a"},
        {63, "7d3e74a05d7db15bce4ad9ec0658ea98e3f06eeecf16b4c6fff2da457ddc2f34"},
        {64, "ffe054fe7ae0cb6dc65c3af9b61d5209f439851db43d0ba5997337df154668eb"},
        {65, "635361c48bb9eab14198e76ea8ab7f1a41685d6ad62aa9146d301d4f17eb0ae0"},
        {119, "31eba51c313a5c08226adf18d4a359cfdfd8d2e816b13f4af952f7ea6584dcfb"},
        {120, "2f3d335432c70b580af0e8e1b3674a7c020d683aa5f73aaaedfdc55af904c21c"},
    };
    for (const auto& [length, digest] : cases) {
        const std::string message(length, 'a');
        EXPECT_EQ(Sha256Hex(message), digest) << length;
        Sha256 split;
        split.Update(std::string_view(message).substr(0, length / 2));
        split.Update(std::string_view(message).substr(length / 2));
        EXPECT_EQ(ToHex(split.Finish()), digest) << length;
    }
}

TEST(Sha256, HexIsSixtyFourLowercaseDigits) {
    std::array<uint8_t, 32> digest{};
    digest[0] = 0xAB;
    digest[31] = 0x0F;
    EXPECT_EQ(ToHex(digest), "ab" + std::string(60, '0') + "0f");
}

}  // namespace
}  // namespace kesto
