#include "status/ui/qtstatusbarview.h"

#include "app/ui/formregistry.h"

#include <QLabel>
#include <QMainWindow>
#include <QMdiArea>
#include <QProgressBar>
#include <QStatusBar>

namespace pv {

int twipsToPixels(const QWidget& widget, int twips) {
    return twips * widget.logicalDpiX() / 1440;
}

int pixelsToTwips(const QWidget& widget, int pixels) {
    return pixels * 1440 / std::max(1, widget.logicalDpiX());
}

QLabel* QtStatusBarView::panel(int panel) const {
    return m_bar.findChild<QLabel*>(m_bar.objectName() + "_Panel" + QString::number(panel));
}

void QtStatusBarView::setPanelVisible(int n, bool visible) {
    if (QLabel* p = panel(n))
        p->setVisible(visible);
}

void QtStatusBarView::setPanelText(int n, const std::string& text) {
    if (QLabel* p = panel(n))
        p->setText(QString::fromStdString(text));
}

std::optional<StatusBarView::Span> QtStatusBarView::panelSpan(int n) const {
    QLabel* p = panel(n);
    if (!p)
        return std::nullopt;
    return Span{pixelsToTwips(m_bar, p->geometry().left()),
                pixelsToTwips(m_bar, p->geometry().width())};
}

void QtStatusBarView::repaint() {
    m_bar.update();
}

bool QtProgressBarView::isVisible() const {
    return m_bar.isVisible();
}

void QtProgressBarView::place(int left, int top, int width) {
    QWidget* status = m_bar.parentWidget();
    const int y = twipsToPixels(m_bar, top);
    const int height = status ? std::max(4, status->height() - 2 * y) : m_bar.height();
    m_bar.setGeometry(twipsToPixels(m_bar, left), y, twipsToPixels(m_bar, width), height);
    m_bar.show();
    m_bar.raise();
}

void QtProgressBarView::hide() {
    m_bar.hide();
}
int QtProgressBarView::minimum() const {
    return m_bar.minimum();
}
int QtProgressBarView::maximum() const {
    return m_bar.maximum();
}
void QtProgressBarView::setValue(int value) {
    m_bar.setValue(value);
}

void addFrameStatusBar(QMainWindow& frame) {
    QStatusBar* bar = frame.statusBar();
    bar->setObjectName("StatusBar1");
    auto* panel = new QLabel(bar);
    panel->setObjectName("StatusBar1_Panel1");
    bar->addWidget(panel, 1);
    bar->hide();
}

void SetMdiStatusText(const std::string& text, int panel) {
    try {
        for (QWidget* form : FormRegistry::openForms()) {
            auto* frame = qobject_cast<QMainWindow*>(form);
            if (!frame || !qobject_cast<QMdiArea*>(frame->centralWidget()))
                continue;
            for (QStatusBar* bar : frame->findChildren<QStatusBar*>()) {
                // Only the frame's own status bars, not those of its child windows.
                if (bar->parentWidget() != frame)
                    continue;
                bar->setEnabled(true);
                bar->setVisible(true);
                QtStatusBarView(*bar).setPanelText(panel, text);
            }
        }
    } catch (const std::exception&) {
    }
}

} // namespace pv
