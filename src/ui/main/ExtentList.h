// A list box whose horizontal scroll range is a fixed width in pixels, whatever its lines
// hold: the operator scrolls the same distance in every list of a kind.
#pragma once

#include <QListWidget>

namespace kesto {

class ExtentList : public QListWidget {
    Q_OBJECT
  public:
    ExtentList(int extent, QWidget* parent);
    int HorizontalExtent() const { return extent_; }

  protected:
    void updateGeometries() override;

  private:
    int extent_;
    // Placing the scroll bars resizes the viewport, which asks for the geometry again; near
    // the width where a bar appears or goes, that would never end.
    bool settingRange_ = false;
};

}  // namespace kesto
