// Questions tests ask of a recorded picture: the primitives of one kind, in drawing order.
#pragma once

#include <algorithm>
#include <string>
#include <vector>

#include "view/DisplayList.h"

namespace kesto::test {

inline std::vector<Primitive> OfKind(const DisplayList& list, PrimitiveKind kind) {
    std::vector<Primitive> found;
    for (const Primitive& item : list.Items()) {
        if (item.Kind == kind)
            found.push_back(item);
    }
    return found;
}

inline std::vector<Primitive> Rectangles(const DisplayList& list) {
    return OfKind(list, PrimitiveKind::Rectangle);
}
inline std::vector<Primitive> Lines(const DisplayList& list) {
    return OfKind(list, PrimitiveKind::Line);
}
inline std::vector<Primitive> Labels(const DisplayList& list) {
    return OfKind(list, PrimitiveKind::Label);
}
inline std::vector<Primitive> Arcs(const DisplayList& list) {
    return OfKind(list, PrimitiveKind::Arc);
}

// The rectangles filled in exactly this fill colour.
inline std::vector<IntRect> RectsFilled(const DisplayList& list, Rgb fill) {
    std::vector<IntRect> found;
    for (const Primitive& item : list.Items()) {
        if (item.Kind == PrimitiveKind::Rectangle && item.Fill == fill)
            found.push_back(item.Rect);
    }
    return found;
}

inline std::vector<std::string> LabelTexts(const DisplayList& list) {
    std::vector<std::string> texts;
    for (const Primitive& item : list.Items()) {
        if (item.Kind == PrimitiveKind::Label)
            texts.push_back(item.Text);
    }
    return texts;
}

}  // namespace kesto::test
