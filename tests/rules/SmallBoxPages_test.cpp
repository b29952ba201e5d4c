#include "rules/SmallBoxPages.h"

#include <gtest/gtest.h>

namespace kesto {
namespace {

std::array<int32_t, 100> BoxesDefined(std::initializer_list<int> numbers) {
    std::array<int32_t, 100> flags{};
    for (const int n : numbers)
        flags[static_cast<size_t>(n)] = 1;
    return flags;
}

TEST(SmallBoxPages, UpToThreeBoxesMakeOnePage) {
    SmallBoxPages pages;
    pages.Count(BoxesDefined({}));
    EXPECT_EQ(pages.PageCount(), 1);
    pages.Count(BoxesDefined({1, 3}));
    EXPECT_EQ(pages.PageCount(), 1);
}

TEST(SmallBoxPages, TheHighestDefinedBoxSetsThePages) {
    struct Case {
        int Highest;
        int Pages;
    };
    // Three to a page: box 4 opens page 2, box 7 page 3, box 99 page 33.
    for (const Case c : {Case{4, 2}, Case{6, 2}, Case{7, 3}, Case{98, 33}, Case{99, 33}}) {
        SmallBoxPages pages;
        pages.Count(BoxesDefined({1, c.Highest}));
        EXPECT_EQ(pages.PageCount(), c.Pages) << c.Highest;
    }
}

TEST(SmallBoxPages, TheFirstPageDisablesBackAndEnablesOnWhenThereIsMore) {
    SmallBoxPages pages;
    pages.Count(BoxesDefined({5}));
    const std::optional<PageArrows> arrows = pages.Turn(0);
    ASSERT_TRUE(arrows.has_value());
    EXPECT_EQ(arrows->Previous, false);
    EXPECT_EQ(arrows->Next, true);
    EXPECT_EQ(pages.Page(), 1);
}

TEST(SmallBoxPages, TurningOnToTheLastPageDisablesOnAndEnablesBack) {
    SmallBoxPages pages;
    pages.Count(BoxesDefined({5}));
    const std::optional<PageArrows> arrows = pages.Turn(1);
    ASSERT_TRUE(arrows.has_value());
    EXPECT_EQ(pages.Page(), 2);
    EXPECT_EQ(arrows->Previous, true);
    EXPECT_EQ(arrows->Next, false);
    EXPECT_EQ(pages.BoxOnButton(1), 4);
    EXPECT_EQ(pages.BoxOnButton(3), 6);
}

TEST(SmallBoxPages, NoPageThatWayLeavesThePageAndTheArrows) {
    SmallBoxPages pages;
    pages.Count(BoxesDefined({5}));
    EXPECT_FALSE(pages.Turn(-1).has_value());
    EXPECT_EQ(pages.Page(), 1);
    pages.Turn(1);
    EXPECT_FALSE(pages.Turn(1).has_value());
    EXPECT_EQ(pages.Page(), 2);
}

TEST(SmallBoxPages, AMiddlePageEnablesBothArrows) {
    SmallBoxPages pages;
    pages.Count(BoxesDefined({9}));
    pages.Turn(1);
    const std::optional<PageArrows> arrows = pages.Turn(0);
    ASSERT_TRUE(arrows.has_value());
    EXPECT_EQ(pages.Page(), 2);
    EXPECT_EQ(arrows->Previous, true);
    EXPECT_EQ(arrows->Next, true);
}

TEST(SmallBoxPages, AButtonIsEnabledOnlyForADefinedBoxOfItsPage) {
    SmallBoxPages pages;
    const std::array<int32_t, 100> flags = BoxesDefined({1, 3, 4});
    pages.Count(flags);
    EXPECT_TRUE(pages.Defined(flags, 1));
    EXPECT_FALSE(pages.Defined(flags, 2));
    EXPECT_TRUE(pages.Defined(flags, 3));
    pages.Turn(1);
    EXPECT_TRUE(pages.Defined(flags, 1));   // box 4
    EXPECT_FALSE(pages.Defined(flags, 3));  // box 6
}

TEST(SmallBoxPages, ButtonsOfTheLastPageBeyondBox99AreNeverDefined) {
    SmallBoxPages pages;
    std::array<int32_t, 100> flags = BoxesDefined({99});
    pages.Count(flags);
    while (pages.Turn(1).has_value()) {
    }
    EXPECT_EQ(pages.Page(), 33);
    EXPECT_EQ(pages.BoxOnButton(3), 99);
    EXPECT_TRUE(pages.Defined(flags, 3));
}

}  // namespace
}  // namespace kesto
