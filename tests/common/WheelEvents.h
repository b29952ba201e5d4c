// The mouse wheel as the platform sends it to a widget: eighths of a degree (120 a notch, up
// positive) at a point of the widget, with the keys held.
#pragma once

#include <QApplication>
#include <QWheelEvent>
#include <QWidget>

namespace kesto::test {

inline void SendWheel(QWidget& widget, QPoint at, int eighths,
                      Qt::KeyboardModifiers keys = Qt::ControlModifier) {
    QWheelEvent wheel(at, widget.mapToGlobal(at), QPoint(), QPoint(0, eighths), Qt::NoButton, keys,
                      Qt::NoScrollPhase, false);
    QApplication::sendEvent(&widget, &wheel);
}

}  // namespace kesto::test
