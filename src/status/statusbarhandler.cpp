#include "status/statusbarhandler.h"

#include "platform/prompter.h"
#include "status/timeremaining.h"

#include <cmath>
#include <exception>

namespace pv {

namespace {

// The bar sits this far (in twips) inside its panel and below the bar's top.
constexpr int kBarInset = 40;

// A status line never stops the work it reports on: failures are dropped.
template <typename F> void trapped(F&& step) {
    try {
        step();
    } catch (const std::exception&) {
    }
}

} // namespace

void ProgressBarHandler::Start() {
    m_startTime = m_clock.now();
}

long ProgressBarHandler::elapsedSeconds() const {
    return long(
        std::chrono::duration_cast<std::chrono::seconds>(m_clock.now() - m_startTime).count());
}

void ProgressBarHandler::PositionProgressBar() {
    trapped([&] {
        StatusBarView* status = m_status ? m_status->StatusBar() : nullptr;
        if (!status || !m_bar)
            return;
        const int panel = m_status->ProgressBarPanelNum();
        const auto span = status->panelSpan(panel);
        if (!span)
            return;
        status->setPanelVisible(panel, true);
        m_bar->place(span->left + kBarInset, status->top() + kBarInset, int(span->width * 0.95));
        status->repaint();
    });
}

void ProgressBarHandler::SetProgress(int value) {
    trapped([&] {
        if (!m_bar)
            return;
        if (value != 0) {
            if (!m_bar->isVisible())
                PositionProgressBar();
        } else {
            m_bar->hide();
            if (m_status && m_status->StatusBar())
                m_status->StatusBar()->setPanelVisible(m_status->ProgressBarPanelNum(), false);
        }
        if (m_bar->minimum() <= value && value <= m_bar->maximum())
            m_bar->setValue(value);
    });
}

double ProgressBarHandler::bandValue(long current, long total, std::optional<double> low,
                                     std::optional<double> high) {
    const float fraction = float(current) / float(total);
    const double base = low.value_or(0);
    double span = 100;
    if (low && high)
        span = *high - *low;
    else if (low)
        span = 100 - *low;
    else if (high)
        span = *high;
    return fraction * span + base;
}

void ProgressBarHandler::UpdateProgress(long current, long total, std::optional<double> low,
                                        std::optional<double> high) {
    if (total == 0 || current > total)
        return;
    trapped([&] {
        if (m_bar) {
            if (!m_bar->isVisible())
                PositionProgressBar();
            const int value = int(std::lround(bandValue(current, total, low, high)));
            if (m_bar->minimum() <= value && value <= m_bar->maximum())
                m_bar->setValue(value);
        }
        if (!low)
            if (auto text = estimateText(elapsedSeconds(), current, total))
                m_timeRemaining = *text;
        if (m_cancelRequested && !m_cancelled) {
            // The time spent on the question does not count as work.
            const long elapsed = elapsedSeconds();
            if (prompter().confirm("Are you sure you want to cancel this operation?",
                                   "Cancel Operation", MessageIcon::Question)) {
                m_cancelled = true;
            } else {
                m_startTime = m_clock.now() - std::chrono::seconds(elapsed);
                m_cancelRequested = false;
            }
        }
    });
}

StatusBarHandler::StatusBarHandler(const Clock& clock)
    : m_progress(std::make_unique<ProgressBarHandler>(clock)) {
    m_progress->setStatusBarHandler(this);
}

void StatusBarHandler::setProgressBarHandler(std::unique_ptr<ProgressBarHandler> handler) {
    if (!handler)
        return;
    m_progress = std::move(handler);
    m_progress->setStatusBarHandler(this);
}

void StatusBarHandler::SetText(const std::string& text, int panel) {
    trapped([&] {
        if (!m_statusBar)
            return;
        const int n = panel == 0 ? m_textPanel : panel;
        m_statusBar->setPanelVisible(n, true);
        m_statusBar->setPanelText(n, text);
    });
}

} // namespace pv
