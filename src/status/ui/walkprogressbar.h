#pragma once
// The progress of a sub-directory walk in a status bar: directories done of
// directories found so far (panel 1), a progress bar over panel 2, the time
// remaining (panel 3) and a Cancel button that asks before the walk is stopped.

#include "status/statusbarhandler.h"
#include "status/ui/qtstatusbarview.h"

#include <QStatusBar>
#include <memory>

class QProgressBar;
class QPushButton;

namespace pv {

class WalkProgressBar : public QStatusBar {
    Q_OBJECT
  public:
    explicit WalkProgressBar(QWidget* parent = nullptr, const Clock& clock = programClock());

    // Shows done of found; the first call of a walk starts the clock. Returns
    // false once the user confirmed a cancel.
    bool update(long done, long found);
    // The walk has ended: the bar, the button and the texts go away.
    void finish();

    QString panelText(int panel) const;
    QProgressBar* progressBar() const { return m_bar; }
    QPushButton* cancelButton() const { return m_cancel; }
    ProgressBarHandler& progress() { return m_handler.progressBarHandler(); }

  protected:
    void resizeEvent(QResizeEvent* event) override;

  private:
    void newProgressHandler();

    const Clock& m_clock;
    QProgressBar* m_bar;
    QPushButton* m_cancel;
    QtStatusBarView m_statusView;
    QtProgressBarView m_barView;
    StatusBarHandler m_handler;
    bool m_running = false;
};

} // namespace pv
