#pragma once
// What the directory and file lists of a pane share: Enter, the right button and
// keyboard moves are reported as the list-box events the panes handle.

#include <QListWidget>

namespace pv {

class PaneListBox : public QListWidget {
    Q_OBJECT
public:
    explicit PaneListBox(QWidget* parent = nullptr);

signals:
    void clicked();
    void enterPressed();
    void rightButtonPressed(const QPoint& globalPos);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
};

} // namespace pv
