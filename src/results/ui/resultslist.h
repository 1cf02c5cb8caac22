#pragma once
// The results window: the results list that every compare appends to, the
// progress of the compare in progress, "Next Difference" and "print".

#include "compare/compareobserver.h"

#include <QElapsedTimer>
#include <QWidget>

#include <functional>
#include <string>
#include <vector>

class QCheckBox;
class QHBoxLayout;
class QProgressBar;
class QTreeWidget;
class QTreeWidgetItem;
class QPushButton;
class QLineEdit;

namespace pv {

class ResultLines;
struct LineDirectories;
class ResultsModel;
class ResultsView;
class WalkProgressBar;

class ResultsList : public QWidget, public CompareObserver {
    Q_OBJECT
  public:
    explicit ResultsList(QWidget* parent = nullptr);

    // The one results window of the program, opened (as a child of the main
    // window when there is one) on first use; nullptr when it is not open and
    // `create` is false. A click on a matched or different line compares that
    // pair in the active compare window; "print" opens its file in the editor.
    static ResultsList* instance(bool create = true);
    // Brings the window in front of the other child windows of the main window
    // and activates it (a visible but covered window included).
    void bringToFront();

    // What a click on a matched or different line does: compare the pair
    // (fileName, dir1, fileName, dir2) in the active compare window.
    using SingleCompare =
        std::function<void(const std::string& fileName1, const std::string& dir1,
                           const std::string& fileName2, const std::string& dir2)>;
    void setSingleCompare(SingleCompare compare) { m_singleCompare = std::move(compare); }
    // What "Side by Side", Enter or a double-click on a matched or different line
    // does: show the pair (fileName, dir1, fileName, dir2) in a side-by-side window.
    void setSideBySide(SingleCompare show) { m_sideBySide = std::move(show); }
    // Opens a file in the chosen editor (the main window's runEditor).
    void setEditorLauncher(std::function<void(const std::string&)> run) {
        m_runEditor = std::move(run);
    }
    // Where "print" writes the list ("PairviewList.txt" in the program directory).
    void setListFilePath(std::string path) { m_listFilePath = std::move(path); }

    void setCntl(std::string_view value) override;
    std::string getCntl() const { return m_cntl; }
    void InitializeProgressBar1(long max);
    void IncrementProgressBar1();
    void CompleteProgressBar1();

    // CompareObserver: the compare's view of this window.
    bool isEmpty() const override;
    void show() override { QWidget::show(); }
    void addLine(std::string_view line) override;
    // The entry lines of a directory pair come between these two calls.
    void initializeProgress(long max) override;
    void incrementProgress() override { IncrementProgressBar1(); }
    void completeProgress() override;
    // A sub-directory walk: directories done of found, the time remaining and a
    // Cancel button under the list; false once the user confirmed a cancel.
    bool walkProgress(long done, long found) override;
    void walkEnded() override;
    WalkProgressBar* walkProgressBar() const { return m_walkProgress; }
    // Shows the lines added since the last paint, scrolls to the last line and
    // repaints, at most every few tens of milliseconds so that a big compare is
    // not slowed by painting. A repaint after an entry line selects the last
    // line; the header and the statistics around the entries do not move the
    // selection. When the compare ends (setCntl("")) the last line that an entry
    // selected is selected, whatever paints were skipped.
    void repaint() override;

    // The list's lines, every added line included.
    const ResultLines& store() const;
    std::vector<std::string> lines() const;
    int lineCount() const;
    // Selects a line (as a click would; -1 clears the selection).
    void selectLine(int index);
    int selectedLine() const;
    QString progressText() const;
    long progressMaximum() const { return m_progressMax; }
    long progressCount() const { return m_progressCount; }

    void List1_Click();
    void NextDifference_Click();
    void PrintButton_Click();
    void SideBySide_Click();
    // Writes the latest compare run, or every run, as an HTML page or a CSV
    // table, as the user chooses.
    void SaveReport_Click();

    // "Differences only": the list shows the lines that report a difference;
    // line indexes (selectLine, selectedLine) stay those of the whole list.
    void setDifferencesOnly(bool on);
    // The rows the list shows, as line indexes.
    std::vector<long> shownLines() const;
    // The directory tree: a node's line is scrolled to the top of the list.
    QTreeWidget* resultsTree() const { return m_tree; }
    void showTreeNodeLine(long line);

    // The row of buttons, for callers that add their own after the progress.
    QHBoxLayout* buttonRow() const { return m_buttons; }

  protected:
    void closeEvent(QCloseEvent* event) override;
    void changeEvent(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    // Shows the lines added since the last paint in the list.
    void flush() const;
    void paintNow();
    // The file name and directories of the selected line, when it names a pair.
    bool selectedPair(std::string& fileName, LineDirectories& dirs) const;
    QWidget* createLegend();
    // Builds the tree again when lines came since it was last built.
    void refreshTree();
    QTreeWidgetItem* treeItem(QTreeWidgetItem* parent, int run, int id);
    void fillTreeItem(QTreeWidgetItem* item);

    ResultsModel* m_model;
    ResultsView* m_list;
    QHBoxLayout* m_buttons;
    QPushButton* m_nextDifference;
    QPushButton* m_print;
    QPushButton* m_saveReport;
    QCheckBox* m_differencesOnly;
    QTreeWidget* m_tree;
    long m_treeLines = -1; // the lines the tree was built from
    QProgressBar* m_progressBar;
    QLineEdit* m_percentage;
    WalkProgressBar* m_walkProgress;

    std::string m_cntl;
    long m_progressMax = 0;
    long m_progressCount = 0;
    bool m_progressChanged = false;
    bool m_progressComplete = false;
    QElapsedTimer m_sincePaint;
    bool m_inEntries = false;  // between initializeProgress and completeProgress
    bool m_entryAdded = false; // an entry line came since the last repaint()
    int m_entrySelection = -1; // the line the compare's entries selected last
    int m_rowAtPress = -1; // the selected line when the mouse went down on the list

    SingleCompare m_singleCompare;
    SingleCompare m_sideBySide;
    QPushButton* m_sideBySideButton;
    std::function<void(const std::string&)> m_runEditor;
    std::string m_listFilePath;
};

} // namespace pv
