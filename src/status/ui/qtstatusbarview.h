#pragma once
// The status and progress handlers on Qt widgets. A status bar's panels are its
// labels named after it: "<bar name>_Panel1", "_Panel2", ...; positions given in
// twips are converted with the screen's resolution.

#include "status/statusbarhandler.h"

#include <string>

class QLabel;
class QMainWindow;
class QProgressBar;
class QStatusBar;
class QWidget;

namespace pv {

class QtStatusBarView : public StatusBarView {
  public:
    explicit QtStatusBarView(QStatusBar& bar) : m_bar(bar) {}
    void setPanelVisible(int panel, bool visible) override;
    void setPanelText(int panel, const std::string& text) override;
    std::optional<Span> panelSpan(int panel) const override;
    int top() const override { return 0; } // the bar is placed in the status bar itself
    void repaint() override;

    QLabel* panel(int panel) const;

  private:
    QStatusBar& m_bar;
};

class QtProgressBarView : public ProgressBarView {
  public:
    // The bar is a child of the status bar it is laid over.
    explicit QtProgressBarView(QProgressBar& bar) : m_bar(bar) {}
    bool isVisible() const override;
    void place(int left, int top, int width) override;
    void hide() override;
    int minimum() const override;
    int maximum() const override;
    void setValue(int value) override;

  private:
    QProgressBar& m_bar;
};

// Writes a text into panel `panel` of every status bar of the main frame, which
// is shown and enabled first. Failures are dropped.
void SetMdiStatusText(const std::string& text, int panel);

// Gives a frame a status bar with one panel, hidden until a text is written to it.
void addFrameStatusBar(QMainWindow& frame);

int twipsToPixels(const QWidget& widget, int twips);
int pixelsToTwips(const QWidget& widget, int pixels);

} // namespace pv
