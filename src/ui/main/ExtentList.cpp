#include "ui/main/ExtentList.h"

#include <QScrollBar>
#include <algorithm>

namespace kesto {

ExtentList::ExtentList(int extent, QWidget* parent) : QListWidget(parent), extent_(extent) {
    setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    // Every line is one line of text in the list's font, as in a platform list box: the rows
    // are as high as the first, and a list of a thousand parts is not measured line by line.
    setUniformItemSizes(true);
    ChooseBarPolicy();
}

void ExtentList::ChooseBarPolicy() {
    // The contents rectangle holds the viewport and both bars, so it does not depend on them.
    const Qt::ScrollBarPolicy policy =
        contentsRect().width() < extent_ ? Qt::ScrollBarAlwaysOn : Qt::ScrollBarAlwaysOff;
    if (horizontalScrollBarPolicy() != policy)
        setHorizontalScrollBarPolicy(policy);
}

void ExtentList::resizeEvent(QResizeEvent* event) {
    ChooseBarPolicy();
    QListWidget::resizeEvent(event);
}

void ExtentList::updateGeometries() {
    QListWidget::updateGeometries();
    // With the bar's visibility fixed, a new range moves no bar and resizes no viewport.
    const int page = viewport()->width();
    horizontalScrollBar()->setPageStep(page);
    horizontalScrollBar()->setRange(0, std::max(0, extent_ - page));
}

}  // namespace kesto
