#include "compare/ui/panelistbox.h"

#include <QKeyEvent>
#include <QMouseEvent>

namespace pv {

PaneListBox::PaneListBox(QWidget* parent) : QListWidget(parent) {
    setSelectionMode(QAbstractItemView::SingleSelection);
    connect(this, &QListWidget::itemClicked, this, [this] { emit clicked(); });
}

void PaneListBox::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        emit enterPressed();
        return;
    }
    // Moving the selection with the keyboard is a click, as it is in list boxes.
    const int before = currentRow();
    QListWidget::keyPressEvent(event);
    if (currentRow() != before && currentRow() >= 0)
        emit clicked();
}

void PaneListBox::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::RightButton) {
        emit rightButtonPressed(event->globalPosition().toPoint());
        return;
    }
    QListWidget::mousePressEvent(event);
}

} // namespace pv
