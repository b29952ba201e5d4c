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
    void resizeEvent(QResizeEvent* event) override;

  private:
    // The bar is shown exactly when the list is narrower than the extent, as a platform list
    // box with a horizontal extent does. Deciding it from the list's own width, never from
    // the scroll range, keeps the bar from feeding back into the layout that sets the range.
    void ChooseBarPolicy();

    int extent_;
};

}  // namespace kesto
