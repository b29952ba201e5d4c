// A list line whose tooltip says why its part is short, asked for when the tooltip is.
#include "ui/dialogs/ShortTipItem.h"

#include <gtest/gtest.h>

#include <QListWidget>

#include "common/WindowJob.h"

namespace kesto {
namespace {

TEST(ShortTipItem, TheTooltipIsWorkedOutForTheLinesPartEachTimeItIsAskedFor) {
    test::EnsureQApplication();
    std::vector<int32_t> asked;
    std::string why = "Process 3 has no pallet";
    QListWidget list;
    auto* item = new ShortTipItem(QStringLiteral("004 line"), 4, [&](int32_t seq) {
        asked.push_back(seq);
        return why;
    });
    list.addItem(item);
    EXPECT_EQ(item->text(), QStringLiteral("004 line"));
    EXPECT_EQ(item->toolTip(), QStringLiteral("Process 3 has no pallet"));
    why.clear();
    EXPECT_TRUE(item->toolTip().isEmpty());
    EXPECT_EQ(asked, (std::vector<int32_t>{4, 4}));
}

TEST(ShortTipItem, ShiftJisReasonsAreDecoded) {
    test::EnsureQApplication();
    // "取置" in Shift_JIS.
    ShortTipItem item(QStringLiteral("x"), 1,
                      [](int32_t) { return std::string("\x8E\xE6\x92\x75"); });
    EXPECT_EQ(item.toolTip(), QString::fromUtf8("\xE5\x8F\x96\xE7\xBD\xAE"));
}

TEST(ShortTipItem, WithoutAFunctionItIsAPlainLine) {
    test::EnsureQApplication();
    ShortTipItem item(QStringLiteral("x"), 1, nullptr);
    EXPECT_TRUE(item.toolTip().isEmpty());
    EXPECT_EQ(item.text(), QStringLiteral("x"));
}

}  // namespace
}  // namespace kesto
