#include "support/TextFormat.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <random>
#include <string>
#include <vector>

namespace kesto {
namespace {

TEST(FormatText, FormatsLikePrintf) {
    EXPECT_EQ(FormatText("%s,%d,%10.4lf,%4.4d", "A", -3, 12.5, 7), "A,-3,   12.5000,0007");
}

TEST(FormatText, TextLongerThanAnyLineIsKeptWhole) {
    const std::string longText(3000, 'x');
    EXPECT_EQ(FormatText("<%s>", longText.c_str()), "<" + longText + ">");
}

TEST(FormatText, EmptyResultIsEmpty) {
    EXPECT_EQ(FormatText("%s", ""), "");
}

TEST(TextBuilder, IntegersAsPrintfGivesThem) {
    std::mt19937_64 random(5);
    const int64_t edges[] = {0,    1,         -1,        7,         -42,      999,
                             1000, INT32_MAX, INT32_MIN, INT64_MAX, INT64_MIN};
    for (int n = 0; n < 20000; ++n) {
        const int64_t v =
            n < 11 * 12 ? edges[n % 11] : static_cast<int64_t>(random()) >> (random() % 64);
        const int width = static_cast<int>(random() % 14);
        const int digits = static_cast<int>(random() % 8);
        const bool left = random() % 2;
        TextBuilder b;
        b.Int(v, width, digits, left);
        EXPECT_EQ(b.Text(), FormatText(left ? "%-*.*lld" : "%*.*lld", width, digits,
                                       static_cast<long long>(v)))
            << v << " width " << width << " digits " << digits;
    }
}

// "%d" without width or precision takes a way of its own.
TEST(TextBuilder, PlainIntegersAsPrintfGivesThem) {
    std::mt19937_64 random(7);
    const int64_t edges[] = {0, 1, -1, 9, 10, -10, INT32_MAX, INT32_MIN, INT64_MAX, INT64_MIN};
    for (int n = 0; n < 5000; ++n) {
        const int64_t v = n < 10 ? edges[n] : static_cast<int64_t>(random()) >> (random() % 64);
        TextBuilder b;
        b.Str("x").Int(v).Char(',');
        EXPECT_EQ(b.Text(), FormatText("x%lld,", static_cast<long long>(v))) << v;
    }
}

TEST(TextBuilder, FixedNumbersAsPrintfGivesThem) {
    std::mt19937_64 random(9);
    const double edges[] = {0.0,        -0.0,     0.5,      1.5,      2.5,      0.00005,
                            0.00015,    -0.00005, 12.34565, 1e308,    -1e308,   5e-324,
                            9999.99995, NAN,      -NAN,     INFINITY, -INFINITY};
    for (int n = 0; n < 50000; ++n) {
        double v;
        if (n < 17 * 6) {
            v = edges[n % 17];
        } else if (n % 3 == 0) {
            // Values on a grid of halves of the last printed digit: the rounding ties.
            v = static_cast<double>(static_cast<int64_t>(random() % 2000000) - 1000000) / 20000;
        } else {
            uint64_t bits = random();
            std::memcpy(&v, &bits, sizeof v);
            if (n % 3 == 1)
                v = std::ldexp(static_cast<double>(random() % 100000000),
                               -static_cast<int>(random() % 40));
        }
        const int width = static_cast<int>(random() % 14);
        const int precision = static_cast<int>(random() % 7);
#ifdef _WIN32
        // Windows' printf spells a NaN its own way; the files keep the POSIX spelling (below).
        if (std::isnan(v))
            continue;
#endif
        TextBuilder b;
        b.Fixed(v, width, precision);
        EXPECT_EQ(b.Text(), FormatText("%*.*lf", width, precision, v))
            << v << " width " << width << " precision " << precision;
    }
}

// Blanks beyond the room kept before the number take the long way.
TEST(TextBuilder, WideFixedNumbersAsPrintfGivesThem) {
    for (const double v : {0.0, -1.5, 12.34565, 1e20, -9999.99995}) {
        for (int width = 20; width <= 60; ++width) {
            TextBuilder b;
            b.Str("x").Fixed(v, width, 4).Fixed(v, width, 1);
            EXPECT_EQ(b.Text(), FormatText("x%*.4f%*.1f", width, v, width, v))
                << v << " width " << width;
        }
    }
}

TEST(TextBuilder, FixedNumbersAtTheEdgesOfTheShortWayAsPrintfGivesThem) {
    // Around 2^53 (the largest magnitude with a fractional bit), with up to nine decimals,
    // the smallest normal and subnormal values, and exact ties of every precision.
    std::vector<double> values = {std::ldexp(1.0, 53),
                                  std::nextafter(std::ldexp(1.0, 53), 0.0),
                                  std::ldexp(1.0, 53) + 2,
                                  -std::ldexp(1.0, 52) - 0.5,
                                  std::numeric_limits<double>::min(),
                                  std::numeric_limits<double>::denorm_min(),
                                  0.125,
                                  0.375,
                                  -0.0625,
                                  1.0 / 1024,
                                  4503599627370495.5,
                                  1e-5,
                                  -4.99999e-5};
    std::mt19937_64 random(21);
    for (int n = 0; n < 20000; ++n) {
        const int exponent = static_cast<int>(random() % 80) - 40;
        values.push_back(std::ldexp(static_cast<double>(random() % (uint64_t{1} << 53)), exponent) *
                         (n % 2 == 0 ? 1 : -1));
    }
    for (const double v : values) {
        for (int precision = 0; precision <= 10; ++precision) {
            TextBuilder b;
            b.Fixed(v, 0, precision);
            EXPECT_EQ(b.Text(), FormatText("%.*f", precision, v))
                << v << " precision " << precision;
        }
    }
}

TEST(TextBuilder, NotANumberAndInfinityAreSpelledTheSameOnEveryPlatform) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const double inf = std::numeric_limits<double>::infinity();
    EXPECT_EQ(TextBuilder().Fixed(nan, 6, 4).Text(), "   nan");
    EXPECT_EQ(TextBuilder().Fixed(-nan, 0, 4).Text(), "-nan");
    EXPECT_EQ(TextBuilder().Fixed(inf, 10, 4).Text(), "       inf");
    EXPECT_EQ(TextBuilder().Fixed(-inf, 0, 2).Text(), "-inf");
}

TEST(TextBuilder, StringsAsPrintfGivesThem) {
    const std::string withNul("ab\0cd", 5);
    TextBuilder b;
    b.Str(withNul).Char('|').Str("part", 7, -1, false).Char('|').Str("part", 7, -1, true);
    b.Char('|').Str("abcdefgh", 6, 3, true).Char('|').Str(withNul, 4, 32, false);
    EXPECT_EQ(b.Text(), FormatText("%s|%7s|%-7s|%-6.3s|%4.32s", withNul.c_str(), "part", "part",
                                   "abcdefgh", withNul.c_str()));
}

TEST(TextBuilder, TakeHandsOverTheTextAndLeavesItEmpty) {
    TextBuilder b;
    b.Str("A").Char(',').Int(5, 4, 4).Char(',').Fixed(2.5, 10, 4);
    EXPECT_EQ(b.Take(), "A,0005,    2.5000");
    b.Clear();
    EXPECT_EQ(b.Text(), "");
}

}  // namespace
TEST(ShortLength, KeepsAtMostTwoDecimalsWithoutTrailingZeros) {
    EXPECT_EQ(ShortLength(1200), "1200");
    EXPECT_EQ(ShortLength(12.5), "12.5");
    EXPECT_EQ(ShortLength(0.333), "0.33");
    EXPECT_EQ(ShortLength(0.996), "1");
    EXPECT_EQ(ShortLength(-0.001), "0");
    EXPECT_EQ(ShortLength(-40.25), "-40.25");
}

TEST(ShortLength, KeepsEveryDigitOfHugeLengthsAndSpellsTheOddOnes) {
    EXPECT_EQ(ShortLength(1e308), FormatText("%.0f", 1e308));
    EXPECT_EQ(ShortLength(-0.0), "0");
    EXPECT_EQ(ShortLength(0.005), "0.01");
    EXPECT_EQ(ShortLength(0.015), "0.01");  // 0.01499999... in binary
    EXPECT_EQ(ShortLength(std::numeric_limits<double>::infinity()), "inf");
    EXPECT_EQ(ShortLength(-std::numeric_limits<double>::infinity()), "-inf");
    EXPECT_EQ(ShortLength(std::numeric_limits<double>::quiet_NaN()), "nan");
}

TEST(TextBuilder, LengthAppendsWhatShortLengthGives) {
    for (double v : {0.0, -0.0, 1200.0, 12.5, 0.333, 0.996, -0.001, -40.25, 0.005, 1e15 + 0.25,
                     9.2e18, 1e300, -1e-300, std::numeric_limits<double>::infinity(),
                     std::numeric_limits<double>::quiet_NaN()}) {
        TextBuilder b;
        b.Str("at ").Length(v);
        EXPECT_EQ(b.Text(), "at " + ShortLength(v)) << v;
    }
}

TEST(TextBuilder, FiguresAppendWhatFillFiguresGives) {
    TextBuilder b;
    b.Str("> ").Figures("%2 of %1, %2 again", {"ten", "three"});
    EXPECT_EQ(b.Text(), "> three of ten, three again");
    for (const char* text : {"%3 is missing, %0 and %% stay", "ends in %", "%%1%", "", "%9%1"}) {
        TextBuilder t;
        t.Figures(text, {"a"});
        EXPECT_EQ(t.Text(), FillFigures(text, {"a"})) << text;
    }
}

TEST(TextBuilder, FiguresKeepTheirNulBytesAndCutAtNulEndsTheTextAtTheFirstOne) {
    TextBuilder b;
    b.Str("head\0");  // a C string: the NUL is not appended
    const size_t from = b.Text().size();
    b.Figures("%1 and %2", {std::string_view("A\0B", 3), "C"});
    EXPECT_EQ(b.Text(), std::string("headA\0B and C", 13));
    b.CutAtNul(from);
    EXPECT_EQ(b.Text(), "headA");
    b.CutAtNul(0);
    EXPECT_EQ(b.Text(), "headA");
}

TEST(FigureText, GivesWhatFillFiguresGives) {
    const std::vector<std::string> figures = {"ten", std::string("t\0o", 3), "", "four"};
    for (const char* text : {"%2 of %1, %2 again", "%3 is missing, %0 and %% stay", "ends in %",
                             "%%1%", "", "%9%1", "%4%3%2%1", "plain", "%", "%1"}) {
        TextBuilder b;
        b.Str("> ");
        FigureText(text).AppendTo(b, [&](int figure, TextBuilder& out) {
            if (figure < static_cast<int>(figures.size()))
                out.Bytes(figures[static_cast<size_t>(figure)]);
        });
        EXPECT_EQ(b.Text(), "> " + FillFigures(text, figures)) << text;
    }
}

TEST(FillFigures, PutsEachFigureWhereItsNumberStands) {
    EXPECT_EQ(FillFigures("%2 of %1, %2 again", {"ten", "three"}), "three of ten, three again");
    EXPECT_EQ(FillFigures("%3 is missing, %0 and %% stay", {"a"}), " is missing, %0 and %% stay");
    EXPECT_EQ(FillFigures("ends in %", {}), "ends in %");
}

}  // namespace kesto
