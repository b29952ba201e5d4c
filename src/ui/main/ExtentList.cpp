#include "ui/main/ExtentList.h"

#include <QScrollBar>
#include <algorithm>

namespace kesto {

ExtentList::ExtentList(int extent, QWidget* parent) : QListWidget(parent), extent_(extent) {
    setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
}

void ExtentList::updateGeometries() {
    if (settingRange_)
        return;
    settingRange_ = true;
    QListWidget::updateGeometries();
    const int page = viewport()->width();
    horizontalScrollBar()->setPageStep(page);
    horizontalScrollBar()->setRange(0, std::max(0, extent_ - page));
    settingRange_ = false;
}

}  // namespace kesto
