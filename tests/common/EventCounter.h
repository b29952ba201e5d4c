// Counts the events that reach the widgets while the event loop runs untouched: a window at
// rest must see none, whatever its size.
#pragma once

#include <QApplication>
#include <QEvent>
#include <QObject>
#include <QtTest/QTest>
#include <map>
#include <string>

namespace kesto::test {

class EventCounter : public QObject {
  public:
    EventCounter() { QCoreApplication::instance()->installEventFilter(this); }
    ~EventCounter() override { QCoreApplication::instance()->removeEventFilter(this); }
    EventCounter(const EventCounter&) = delete;
    EventCounter& operator=(const EventCounter&) = delete;

    int Count() const { return count_; }
    // The kinds of events seen, for a failure message: "76 x 120, ..." (type numbers).
    std::string Kinds() const {
        std::string text;
        for (const auto& [type, n] : kinds_)
            text += std::to_string(type) + " x " + std::to_string(n) + ", ";
        return text;
    }

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (watched->isWidgetType() && Counts(event->type())) {
            ++count_;
            ++kinds_[static_cast<int>(event->type())];
        }
        return false;
    }

  private:
    // Events the loop makes of itself when something keeps it busy; the platform's own
    // housekeeping (timers of the style, the offscreen platform's expose) is not counted.
    static bool Counts(QEvent::Type type) {
        switch (type) {
            case QEvent::LayoutRequest:
            case QEvent::Resize:
            case QEvent::Move:
            case QEvent::Show:
            case QEvent::Hide:
            case QEvent::Paint:
            case QEvent::UpdateRequest:
            case QEvent::PolishRequest:
            case QEvent::MetaCall:
                return true;
            default:
                return false;
        }
    }

    int count_ = 0;
    std::map<int, int> kinds_;
};

// Lets the loop settle, then counts the events of the next `ms` milliseconds; their kinds go
// into `kinds` when asked for.
inline int EventsAtRest(int ms = 300, std::string* kinds = nullptr) {
    QTest::qWait(100);
    EventCounter counter;
    QTest::qWait(ms);
    if (kinds != nullptr)
        *kinds = counter.Kinds();
    return counter.Count();
}

}  // namespace kesto::test
