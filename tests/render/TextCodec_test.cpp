#include "render/TextCodec.h"

#include <gtest/gtest.h>

namespace kesto {
namespace {

TEST(DecodeText, AsciiStaysAsItIs) {
    EXPECT_EQ(DecodeText("Retry"), QString("Retry"));
}

TEST(DecodeText, ValidUtf8IsReadAsUtf8) {
    EXPECT_EQ(DecodeText("\xE3\x83\x86\xE3\x82\xB9\xE3\x83\x88"), QString::fromUtf8("テスト"));
}

TEST(DecodeText, InvalidUtf8IsReadAsShiftJis) {
    EXPECT_EQ(DecodeText("\x83\x65\x83\x58\x83\x67"), QString::fromUtf8("テスト"));
}

TEST(DecodeText, EmptyTextGivesEmptyString) {
    EXPECT_TRUE(DecodeText("").isEmpty());
}

TEST(EncodeText, LeadingDigitsSurvive) {
    EXPECT_EQ(EncodeText("007 part"), "007 part");
}

}  // namespace
}  // namespace kesto
