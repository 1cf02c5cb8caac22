#pragma once
// The side-by-side window: two files in two panes that scroll together, their
// changes tinted, the changed characters marked, F7 / Shift+F7 to step from
// change to change, and fc's /c and /w as toggles. A child of the main frame,
// registered as the form "frmSideBySide".

#include "sidebyside/filepairdiff.h"
#include "sidebyside/intralinediff.h"

#include <QWidget>
#include <memory>
#include <string>
#include <unordered_map>

class QCheckBox;
class QLabel;
class QPushButton;
class QScrollBar;
class QStackedWidget;

namespace pv {

class DiffPane;

class frmSideBySide : public QWidget {
    Q_OBJECT
  public:
    // Opens a window for two files, in the main frame when there is one; the
    // toggles start as the settings' fc switches stand. Throws RuntimeError naming
    // a file that cannot be read (no window opens then).
    static frmSideBySide* open(const std::string& leftPath, const std::string& rightPath);

    explicit frmSideBySide(std::unique_ptr<FilePairDiff> pair, QWidget* parent = nullptr);

    const FilePairDiff& pair() const { return *m_pair; }
    DiffPane* pane(int side) const { return side == 0 ? m_left : m_right; }
    size_t currentChange() const { return m_current; }
    QString statusText() const;

    void NextChange_Click();
    void PreviousChange_Click();
    // Shows a change (0-based): makes it current and scrolls it into view.
    void goToChange(size_t change);

  private:
    void buildControls();
    void showPair();
    void applyToggles();
    void updateStatus();
    void syncHorizontalRange();
    const IntraLineSpans& spansOfRow(size_t row);

    std::unique_ptr<FilePairDiff> m_pair;
    std::unordered_map<size_t, IntraLineSpans> m_spans; // by row, filled as rows are shown
    size_t m_current = 0;

    DiffPane* m_left = nullptr;
    DiffPane* m_right = nullptr;
    QScrollBar* m_hscroll = nullptr;
    QCheckBox* m_ignoreCase = nullptr;
    QCheckBox* m_compressWhite = nullptr;
    QPushButton* m_next = nullptr;
    QPushButton* m_previous = nullptr;
    QLabel* m_status = nullptr;
    QLabel* m_binary = nullptr;
    QStackedWidget* m_pages = nullptr;
};

} // namespace pv
