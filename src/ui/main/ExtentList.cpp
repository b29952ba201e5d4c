#include "ui/main/ExtentList.h"

#include <QScrollBar>
#include <algorithm>

namespace kesto {

ExtentList::ExtentList(int extent, QWidget* parent) : QListWidget(parent), extent_(extent) {
    setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
}

void ExtentList::updateGeometries() {
    QListWidget::updateGeometries();
    const int page = viewport()->width();
    horizontalScrollBar()->setPageStep(page);
    horizontalScrollBar()->setRange(0, std::max(0, extent_ - page));
}

}  // namespace kesto
