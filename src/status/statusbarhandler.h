#pragma once
// A window's status bar with a progress bar laid over one of its panels: the
// status handler writes panel texts and owns the progress handler, which sets
// the bar from a current/total pair, estimates the time remaining and offers a
// cancel button whose click is confirmed at the next update.
// Positions are in twips (1/1440 inch); the views convert.

#include "platform/clock.h"

#include <chrono>
#include <memory>
#include <optional>
#include <string>

namespace pv {

// The status bar as the handlers see it; panels are numbered from 1. A panel
// that does not exist is ignored.
class StatusBarView {
  public:
    virtual ~StatusBarView() = default;
    virtual void setPanelVisible(int panel, bool visible) = 0;
    virtual void setPanelText(int panel, const std::string& text) = 0;
    struct Span {
        int left = 0;
        int width = 0;
    };
    virtual std::optional<Span> panelSpan(int panel) const = 0;
    virtual int top() const = 0;
    virtual void repaint() = 0;
};

class ProgressBarView {
  public:
    virtual ~ProgressBarView() = default;
    virtual bool isVisible() const = 0;
    virtual void place(int left, int top, int width) = 0; // and show
    virtual void hide() = 0;
    virtual int minimum() const = 0;
    virtual int maximum() const = 0;
    virtual void setValue(int value) = 0;
};

class StatusBarHandler;

class ProgressBarHandler {
  public:
    explicit ProgressBarHandler(const Clock& clock = programClock()) : m_clock(clock) {}

    ProgressBarView* ProgressBar() const { return m_bar; }
    void setProgressBar(ProgressBarView* bar) { m_bar = bar; }
    StatusBarHandler* statusBarHandler() const { return m_status; }
    void setStatusBarHandler(StatusBarHandler* status) { m_status = status; }
    const std::string& TimeRemaining() const { return m_timeRemaining; }

    void Start();
    void PositionProgressBar();
    // 0 hides the bar and its panel.
    void SetProgress(int value = 0);
    // Sets the bar to current of total, within the band low..high percent when
    // given; without a low limit the time estimate follows. Then asks about a
    // cancel clicked since the last update. Nothing happens when total is 0 or
    // current is past it.
    void UpdateProgress(long current, long total, std::optional<double> low = std::nullopt,
                        std::optional<double> high = std::nullopt);

    // The cancel button was clicked; the question waits for the next update.
    void cmdcancel_Click() { m_cancelRequested = true; }
    bool cancelRequested() const { return m_cancelRequested; }
    // The user confirmed the cancel: the operation stops its work.
    bool cancelled() const { return m_cancelled; }

    // The bar value of current/total within a band, as UpdateProgress sets it.
    static double bandValue(long current, long total, std::optional<double> low,
                            std::optional<double> high);

  private:
    long elapsedSeconds() const;

    const Clock& m_clock;
    ProgressBarView* m_bar = nullptr;
    StatusBarHandler* m_status = nullptr;
    std::chrono::system_clock::time_point m_startTime;
    std::string m_timeRemaining;
    bool m_cancelRequested = false;
    bool m_cancelled = false;
};

class StatusBarHandler {
  public:
    explicit StatusBarHandler(const Clock& clock = programClock());

    ProgressBarHandler& progressBarHandler() { return *m_progress; }
    void setProgressBarHandler(std::unique_ptr<ProgressBarHandler> handler);
    int ProgressBarPanelNum() const { return m_progressPanel; }
    void setProgressBarPanelNum(int panel) { m_progressPanel = panel; }
    StatusBarView* StatusBar() const { return m_statusBar; }
    void setStatusBar(StatusBarView* bar) { m_statusBar = bar; }
    int PriTextPanelNum() const { return m_textPanel; }
    void setPriTextPanelNum(int panel) { m_textPanel = panel; }

    // Shows a text in a panel, the text panel when `panel` is 0.
    void SetText(const std::string& text, int panel = 0);

  private:
    int m_textPanel = 1;
    int m_progressPanel = 2;
    StatusBarView* m_statusBar = nullptr;
    std::unique_ptr<ProgressBarHandler> m_progress;
};

} // namespace pv
