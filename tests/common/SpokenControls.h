// The check that every control of a dialog tells a screen reader what it is and does.
#pragma once

#include <gtest/gtest.h>

#include <QPushButton>
#include <QWidget>
#include <string>
#include <string_view>

#include "view/ControlTexts.h"

namespace kesto::test {

// Each control section's texts name is in dialog with a description, and a name of its own or,
// for a button, its caption.
inline void ExpectEveryControlSpoken(QWidget& dialog, std::string_view section) {
    const auto keys = DialogControlKeys(section);
    EXPECT_FALSE(keys.empty()) << section;
    for (const std::string_view key : keys) {
        const QString name = QString::fromLatin1(key.data(), static_cast<qsizetype>(key.size()));
        auto* control = dialog.findChild<QWidget*>(name);
        ASSERT_NE(control, nullptr) << key;
        EXPECT_FALSE(control->accessibleDescription().isEmpty()) << key;
        if (auto* button = qobject_cast<QPushButton*>(control))
            EXPECT_FALSE(button->text().isEmpty()) << key;
        else
            EXPECT_FALSE(control->accessibleName().isEmpty()) << key;
    }
}

}  // namespace kesto::test
