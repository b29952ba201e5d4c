#include "support/TextColumns.h"

#include <gtest/gtest.h>

namespace kesto {
namespace {

// "テスト" in Shift_JIS and in UTF-8.
const std::string kSjisTesuto = "\x83\x65\x83\x58\x83\x67";
const std::string kUtf8Tesuto = "\xE3\x83\x86\xE3\x82\xB9\xE3\x83\x88";

TEST(IsValidUtf8, AsciiAndJapaneseUtf8AreValid) {
    EXPECT_TRUE(IsValidUtf8("Bracket left"));
    EXPECT_TRUE(IsValidUtf8(kUtf8Tesuto));
    EXPECT_TRUE(IsValidUtf8(""));
}

TEST(IsValidUtf8, ShiftJisCutSequencesOverlongsAndSurrogatesAreNot) {
    EXPECT_FALSE(IsValidUtf8(kSjisTesuto));
    EXPECT_FALSE(IsValidUtf8(kUtf8Tesuto.substr(0, 4)));
    EXPECT_FALSE(IsValidUtf8("\xC0\xAF"));
    EXPECT_FALSE(IsValidUtf8("\xE0\x80\xAF"));
    EXPECT_FALSE(IsValidUtf8("\xED\xA0\x80"));
    EXPECT_FALSE(IsValidUtf8("\xF4\x90\x80\x80"));
}

// Long ASCII runs are passed over eight bytes at a time: a sequence is judged the same at
// every place in a long text, across the eight-byte steps too.
TEST(IsValidUtf8, SequencesAreJudgedAlikeAtEveryOffsetOfALongText) {
    for (size_t at = 0; at < 20; ++at) {
        const std::string before(at, 'a');
        const std::string after(20, 'b');
        EXPECT_TRUE(IsValidUtf8(before + kUtf8Tesuto + after)) << at;
        EXPECT_FALSE(IsValidUtf8(before + kSjisTesuto + after)) << at;
        EXPECT_FALSE(IsValidUtf8(before + kUtf8Tesuto.substr(0, 4) + after)) << at;
        EXPECT_FALSE(IsValidUtf8(before + "\xFF")) << at;
    }
}

TEST(CutToBytes, AsciiIsCutLikePrintfPrecision) {
    EXPECT_EQ(CutToBytes("abcdef", 4), "abcd");
    EXPECT_EQ(CutToBytes("abc", 4), "abc");
    EXPECT_EQ(CutToBytes(std::string("ab\0cd", 5), 4), "ab");
}

TEST(CutToBytes, ShiftJisDoubleByteCharacterIsNeverSplit) {
    // "Aテスト": the cut at 4 bytes would split the second character.
    EXPECT_EQ(CutToBytes("A" + kSjisTesuto, 4), "A\x83\x65");
    EXPECT_EQ(CutToBytes("A" + kSjisTesuto, 5), "A\x83\x65\x83\x58");
}

TEST(CutToBytes, ShiftJisTrailByteThatLooksLikeAsciiStaysWithItsLead) {
    // "表示" is 0x95 0x5C 0x8E 0xA6: the 0x5C is the second half of its character.
    EXPECT_EQ(CutToBytes("\x95\x5C\x8E\xA6", 3), "\x95\x5C");
    EXPECT_EQ(CutToBytes("x\x95\x5C\x8E\xA6", 2), "x");
}

TEST(CutToBytes, HalfWidthKatakanaIsOneByteEach) {
    // "ﾀﾌﾞ" in Shift_JIS: three single bytes.
    EXPECT_EQ(CutToBytes("\xC0\xCC\xDE", 2), "\xC0\xCC");
}

TEST(CutToBytes, Utf8SequenceIsNeverSplit) {
    EXPECT_EQ(CutToBytes(kUtf8Tesuto, 5), kUtf8Tesuto.substr(0, 3));
    EXPECT_EQ(CutToBytes(kUtf8Tesuto, 6), kUtf8Tesuto.substr(0, 6));
}

TEST(FitColumn, AsciiIsPaddedAndCutLikePrintf) {
    EXPECT_EQ(FitColumn("Bracket", 10), "Bracket   ");
    EXPECT_EQ(FitColumn("Bracket left", 7), "Bracket");
}

TEST(FitColumn, HalfOfACharacterBecomesABlankAndTheWidthStays) {
    EXPECT_EQ(FitColumn("A" + kSjisTesuto, 4), "A\x83\x65 ");
    EXPECT_EQ(FitColumn(kUtf8Tesuto, 5), kUtf8Tesuto.substr(0, 3) + "  ");
}

TEST(IsShiftJisLead, TakesTheTwoLeadRangesOfCodePage932) {
    for (const int byte : {0x81, 0x9F, 0xE0, 0xFC})
        EXPECT_TRUE(IsShiftJisLead(static_cast<unsigned char>(byte))) << byte;
    // ASCII, half-width katakana (0xA1..0xDF) and the unused ends are single bytes.
    for (const int byte : {0x41, 0x80, 0xA0, 0xA1, 0xDF, 0xFD, 0xFF})
        EXPECT_FALSE(IsShiftJisLead(static_cast<unsigned char>(byte))) << byte;
}

}  // namespace
}  // namespace kesto
