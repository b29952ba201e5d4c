// A picture document through its file and back, for the tests of the document and of the
// pictures written into it.
#pragma once

#include <gtest/gtest.h>

#include <optional>
#include <sstream>
#include <string>

#include "view/PictureDocument.h"

namespace kesto::test {

inline std::string Written(const PictureDocument& doc) {
    std::ostringstream out;
    WritePictureDocument(doc, out);
    return out.str();
}

inline std::optional<PictureDocument> ReadBack(const std::string& text) {
    std::istringstream in(text);
    return ReadPictureDocument(in);
}

inline void ExpectSameDocument(const PictureDocument& a, const PictureDocument& b) {
    for (size_t i = 0; i < a.Fonts.size(); ++i) {
        EXPECT_EQ(a.Fonts[i].Height, b.Fonts[i].Height);
        EXPECT_EQ(a.Fonts[i].CharSet, b.Fonts[i].CharSet);
        EXPECT_EQ(a.Fonts[i].Name, b.Fonts[i].Name);
    }
    ASSERT_EQ(a.Pages.size(), b.Pages.size());
    for (size_t i = 0; i < a.Pages.size(); ++i) {
        EXPECT_EQ(a.Pages[i].Title, b.Pages[i].Title);
        EXPECT_EQ(a.Pages[i].Width, b.Pages[i].Width);
        EXPECT_EQ(a.Pages[i].Height, b.Pages[i].Height);
        EXPECT_EQ(a.Pages[i].Drawing.Items(), b.Pages[i].Drawing.Items());
    }
}

}  // namespace kesto::test
