#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "app/InputReaders.h"
#include "common/AllocFailure.h"
#include "common/Installation.h"

namespace kesto {
namespace {

class OutlineFileTest : public ::testing::Test {
  protected:
    Outcome Read(const std::string& text) {
        part.OutlinePath = installation.Write("shape/part.txt", text);
        return ReadOutline(part);
    }
    test::Installation installation;
    CKestoApp app;
    PartsInfo part;
};

TEST_F(OutlineFileTest, EmptyFileGivesNoElements) {
    EXPECT_TRUE(Read("").Ok());
    EXPECT_EQ(part.ShapeCount, 0);
    EXPECT_TRUE(part.Shapes.empty());
}

TEST_F(OutlineFileTest, CommentLinesAreCountedButFillNothing) {
    ASSERT_TRUE(Read("$ head\nLine 0 1 2 3 1 2 3 4\n$ middle\nCircle 0 0 0 0 5 6 7\n"
                     "Pixel 0 0 0 0 8 9\n")
                    .Ok());
    ASSERT_EQ(part.ShapeCount, 5);
    ASSERT_EQ(part.Shapes.size(), 5u);
    EXPECT_EQ(part.Shapes[0].Kind, kShapeLine);
    EXPECT_EQ(part.Shapes[1].Kind, kShapeCircle);
    EXPECT_EQ(part.Shapes[2].Kind, kShapePixel);
    EXPECT_EQ(part.Shapes[3].Kind, kShapeNone);
    EXPECT_EQ(part.Shapes[4].Kind, kShapeNone);
}

TEST_F(OutlineFileTest, LineReadsFourParametersAndTheColour) {
    ASSERT_TRUE(Read("Line x 1 2 3 10.5 20 30 40 50\n").Ok());
    const ShapeElement& e = part.Shapes[0];
    EXPECT_EQ(e.Color, 1u + 2u * 256 + 3u * 65536);
    EXPECT_DOUBLE_EQ(e.Params[0], 10.5);
    EXPECT_DOUBLE_EQ(e.Params[3], 40);
    EXPECT_DOUBLE_EQ(e.Params[4], 0);
}

TEST_F(OutlineFileTest, CcwArcReadsElevenParameters) {
    std::string line = "CcwArc 0 0 0 0";
    for (int i = 1; i <= 12; ++i)
        line += " " + std::to_string(i);
    ASSERT_TRUE(Read(line + "\n").Ok());
    const ShapeElement& e = part.Shapes[0];
    EXPECT_EQ(e.Kind, kShapeCcwArc);
    EXPECT_DOUBLE_EQ(e.Params[10], 11);
    EXPECT_DOUBLE_EQ(e.Params[11], 0);
}

TEST_F(OutlineFileTest, AngRectReadsEightParameters) {
    ASSERT_TRUE(Read("AngRect 0 0 0 0 1 2 3 4 5 6 7 8 9\n").Ok());
    EXPECT_EQ(part.Shapes[0].Kind, kShapeAngRect);
    EXPECT_DOUBLE_EQ(part.Shapes[0].Params[7], 8);
    EXPECT_DOUBLE_EQ(part.Shapes[0].Params[8], 0);
}

TEST_F(OutlineFileTest, LongerKeywordsWin) {
    ASSERT_TRUE(Read("NoScaleCircle 0 0 0 0 1 2 3 4\nAngRect 0 0 0 0\nNoAngRect 0 0 0 0 1 2 3 4 5\n"
                     "NoScalePixel 0 0 0 0 1 2 3 4\nPixel 0 0 0 0 1 2 3\n")
                    .Ok());
    EXPECT_EQ(part.Shapes[0].Kind, kShapeNoScaleCircle);
    EXPECT_DOUBLE_EQ(part.Shapes[0].Params[3], 0);
    EXPECT_EQ(part.Shapes[1].Kind, kShapeAngRect);
    EXPECT_EQ(part.Shapes[2].Kind, kShapeNoAngRect);
    EXPECT_DOUBLE_EQ(part.Shapes[2].Params[3], 4);
    EXPECT_DOUBLE_EQ(part.Shapes[2].Params[4], 0);
    EXPECT_EQ(part.Shapes[3].Kind, kShapeNoScalePixel);
    EXPECT_DOUBLE_EQ(part.Shapes[3].Params[2], 3);
    EXPECT_DOUBLE_EQ(part.Shapes[3].Params[3], 0);
    EXPECT_EQ(part.Shapes[4].Kind, kShapePixel);
    EXPECT_DOUBLE_EQ(part.Shapes[4].Params[1], 2);
    EXPECT_DOUBLE_EQ(part.Shapes[4].Params[2], 0);
}

TEST_F(OutlineFileTest, KeywordIsFoundAsASubstring) {
    ASSERT_TRUE(Read("MyLine2 0 0 0 0 1\n").Ok());
    EXPECT_EQ(part.Shapes[0].Kind, kShapeLine);
}

TEST_F(OutlineFileTest, ColourUsesTheLowEightBits) {
    ASSERT_TRUE(Read("Pixel 0 300 0 -1 1 2\n").Ok());
    EXPECT_EQ(part.Shapes[0].Color, 44u + 255u * 65536);
}

TEST_F(OutlineFileTest, UnknownKeywordLeavesTheElementZero) {
    ASSERT_TRUE(Read("Spline 0 1 2 3 4 5\n").Ok());
    ASSERT_EQ(part.ShapeCount, 1);
    EXPECT_EQ(part.Shapes[0].Kind, kShapeNone);
    EXPECT_EQ(part.Shapes[0].Color, 0u);
    EXPECT_DOUBLE_EQ(part.Shapes[0].Params[0], 0);
}

TEST_F(OutlineFileTest, RunsOfBlanksSeparateTabsDoNot) {
    ASSERT_TRUE(Read("   Line   0  1 2 3 4 5 6 7\nLine\t9 1 2 3 10 20 30 40\n").Ok());
    EXPECT_EQ(part.Shapes[0].Color, 1u + 2u * 256 + 3u * 65536);
    EXPECT_DOUBLE_EQ(part.Shapes[0].Params[0], 4);
    EXPECT_EQ(part.Shapes[1].Kind, kShapeLine);
    EXPECT_EQ(part.Shapes[1].Color, 2u + 3u * 256 + 10u * 65536);
    EXPECT_DOUBLE_EQ(part.Shapes[1].Params[0], 20);
    EXPECT_DOUBLE_EQ(part.Shapes[1].Params[3], 0);
}

TEST_F(OutlineFileTest, LastLineWithoutLineFeedIsNeitherReadNorCounted) {
    ASSERT_TRUE(Read("Line 0 0 0 0 1 1 1 1\nCircle 0 0 0 0 1 1 1").Ok());
    EXPECT_EQ(part.ShapeCount, 1);
    EXPECT_EQ(part.Shapes.size(), 1u);
}

TEST_F(OutlineFileTest, CrLfFileReadsAsLf) {
    ASSERT_TRUE(Read("$c\r\nCircle 0 1 2 3 5 6 7\r\n").Ok());
    EXPECT_EQ(part.ShapeCount, 2);
    EXPECT_EQ(part.Shapes[0].Kind, kShapeCircle);
    EXPECT_DOUBLE_EQ(part.Shapes[0].Params[2], 7);
}

TEST_F(OutlineFileTest, OverlongLinesAndBinaryBytesStayInBounds) {
    std::string line = "Line 0 1 2 3";
    for (int i = 0; i < 300; ++i)
        line += " " + std::to_string(i);
    constexpr char kBinary[] = "\xFF\x01 \0 Line\n";
    ASSERT_TRUE(
        Read(line + " " + std::string(200, 'x') + "\n" + std::string(kBinary, sizeof kBinary - 1))
            .Ok());
    ASSERT_EQ(part.ShapeCount, 2);
    EXPECT_DOUBLE_EQ(part.Shapes[0].Params[3], 3);
    EXPECT_EQ(part.Shapes[1].Kind, kShapeNone);
}

TEST_F(OutlineFileTest, MissingFileFailsWithoutCode) {
    part.OutlinePath = installation.Path("none.txt");
    part.ShapeCount = 3;
    EXPECT_EQ(ReadOutline(part), Outcome::Failed());
    EXPECT_EQ(part.ShapeCount, 0);
    EXPECT_TRUE(installation.Operator.Messages.empty());
}

TEST_F(OutlineFileTest, EmptyPathFailsWithoutCode) {
    EXPECT_EQ(ReadOutline(part), Outcome::Failed());
}

TEST_F(OutlineFileTest, FileThatCannotBeOpenedStores9026) {
    part.OutlinePath = installation.Path("shape/part.sock");
    test::MakeUnopenable(part.OutlinePath);
    EXPECT_EQ(ReadOutline(part), Outcome::Failed(9026));
    EXPECT_EQ(part.ShapeCount, 0);
}

TEST_F(OutlineFileTest, NoMemoryForTheElementsFails) {
    part.OutlinePath = installation.Write("shape/part.txt", "Line 0 0 0 0 1 1 1 1\n");
    Outcome result;
    {
        test::ScopedAllocFailure failure(sizeof(ShapeElement));
        result = ReadOutline(part);
    }
    EXPECT_EQ(result, Outcome::Failed());
    EXPECT_EQ(part.ShapeCount, 0);
}

// 200 parts, enough to be read by several threads: every third outline has i + 1 lines, every
// third is missing, every third cannot be opened. Each part ends as ReadOutline alone leaves it.
TEST_F(OutlineFileTest, ManyOutlinesReadAtOnceEndAsReadOneByOne) {
    std::vector<PartsInfo> parts(200);
    std::vector<PartsInfo*> pointers;
    for (size_t i = 0; i < parts.size(); ++i) {
        PartsInfo& p = parts[i];
        p.HasOutline = 1;
        p.ShapeCount = 7;
        const std::string name = "shape/" + std::to_string(i);
        if (i % 3 == 0) {
            std::string lines;
            for (size_t n = 0; n <= i; ++n)
                lines += "Line 0 0 0 0 1 1 1 1\n";
            p.OutlinePath = installation.Write(name + ".txt", lines);
        } else if (i % 3 == 1) {
            p.OutlinePath = installation.Path(name + ".none");
        } else {
            p.OutlinePath = installation.Path(name + ".sock");
            test::MakeUnopenable(p.OutlinePath);
        }
        pointers.push_back(&p);
    }
    EXPECT_EQ(ReadOutlines(pointers), Outcome::Done(9026));
    for (size_t i = 0; i < parts.size(); ++i) {
        const int32_t lines = i % 3 == 0 ? static_cast<int32_t>(i + 1) : 0;
        EXPECT_EQ(parts[i].HasOutline, i % 3 == 0 ? 1 : 0) << i;
        EXPECT_EQ(parts[i].ShapeCount, lines) << i;
        EXPECT_EQ(parts[i].Shapes.size(), static_cast<size_t>(lines)) << i;
    }
}

// Read beside the caller: the parts are as ReadOutlines leaves them once Wait has returned.
TEST_F(OutlineFileTest, OutlinesReadBesideEndAsReadOutlinesLeavesThemAtTheWait) {
    std::vector<PartsInfo> parts(3);
    parts[0].OutlinePath = installation.Write("shape/a.txt", "Line 0 0 0 0 1 1 1 1\nPixel\n");
    parts[1].OutlinePath = installation.Path("shape/none.txt");
    parts[2].OutlinePath = installation.Path("shape/c.sock");
    test::MakeUnopenable(parts[2].OutlinePath);
    std::vector<PartsInfo*> pointers;
    for (PartsInfo& p : parts) {
        p.HasOutline = 1;
        pointers.push_back(&p);
    }
    OutlineReads reads(pointers);
    EXPECT_EQ(reads.Wait(), Outcome::Done(9026));
    EXPECT_EQ(parts[0].HasOutline, 1);
    EXPECT_EQ(parts[0].ShapeCount, 2);
    EXPECT_EQ(parts[0].Shapes.at(0).Kind, kShapeLine);
    EXPECT_EQ(parts[1].HasOutline, 0);
    EXPECT_EQ(parts[2].HasOutline, 0);
    // Waited for once: the outcome is not given twice.
    EXPECT_EQ(reads.Wait(), Outcome::Done());
}

// Gone without a wait (the job given up): the threads end first, the flags stay.
TEST_F(OutlineFileTest, OutlinesReadBesideAndNotWaitedForLeaveTheFlagsAsTheyWere) {
    std::vector<PartsInfo> parts(100);
    std::vector<PartsInfo*> pointers;
    for (PartsInfo& p : parts) {
        p.HasOutline = 1;
        p.OutlinePath = installation.Path("shape/none.txt");
        pointers.push_back(&p);
    }
    { OutlineReads reads(pointers); }
    for (const PartsInfo& p : parts) {
        EXPECT_EQ(p.HasOutline, 1);
        EXPECT_EQ(p.ShapeCount, 0);
    }
}

TEST_F(OutlineFileTest, ReadingNoOutlinesChangesNothing) {
    EXPECT_EQ(ReadOutlines({}), Outcome::Done());
    EXPECT_EQ(OutlineReads({}).Wait(), Outcome::Done());
}

}  // namespace
}  // namespace kesto
