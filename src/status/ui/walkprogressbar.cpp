#include "status/ui/walkprogressbar.h"

#include "status/timeremaining.h"

#include <QLabel>
#include <QProgressBar>
#include <QPushButton>

namespace pv {

WalkProgressBar::WalkProgressBar(QWidget* parent, const Clock& clock)
    : QStatusBar(parent), m_clock(clock), m_bar(new QProgressBar(this)),
      m_cancel(new QPushButton("Cancel", this)), m_statusView(*this), m_barView(*m_bar),
      m_handler(clock) {
    setObjectName("ProgressStatusBar");
    setSizeGripEnabled(false);
    for (int i = 1; i <= 3; ++i) {
        auto* panel = new QLabel(this);
        panel->setObjectName(objectName() + "_Panel" + QString::number(i));
        panel->setMinimumWidth(i == 2 ? 200 : 120);
        addWidget(panel, i == 2 ? 2 : 1);
    }
    m_bar->setObjectName("ProgressBar");
    m_bar->setRange(0, 100);
    m_bar->hide();
    m_cancel->setObjectName("cmdcancel");
    addPermanentWidget(m_cancel);
    m_handler.setStatusBar(&m_statusView);
    m_handler.setPriTextPanelNum(1);
    m_handler.setProgressBarPanelNum(2);
    newProgressHandler();
    connect(m_cancel, &QPushButton::clicked, this, [this] { progress().cmdcancel_Click(); });
    hide();
}

void WalkProgressBar::newProgressHandler() {
    m_handler.setProgressBarHandler(std::make_unique<ProgressBarHandler>(m_clock));
    progress().setProgressBar(&m_barView);
}

bool WalkProgressBar::update(long done, long found) {
    if (!m_running) {
        m_running = true;
        progress().Start();
        show();
        m_cancel->show();
    }
    m_handler.SetText(walkProgressText(done, found));
    progress().UpdateProgress(done, found);
    m_handler.SetText(progress().TimeRemaining(), 3);
    return !progress().cancelled();
}

void WalkProgressBar::finish() {
    if (!m_running)
        return;
    m_running = false;
    progress().SetProgress(0);
    m_handler.SetText("", 1);
    m_handler.SetText("", 3);
    hide();
    // A cancel clicked during this walk does not carry over to the next.
    newProgressHandler();
}

QString WalkProgressBar::panelText(int panel) const {
    QLabel* p = m_statusView.panel(panel);
    return p ? p->text() : QString();
}

void WalkProgressBar::resizeEvent(QResizeEvent* event) {
    QStatusBar::resizeEvent(event);
    if (m_bar->isVisible())
        progress().PositionProgressBar();
}

} // namespace pv
