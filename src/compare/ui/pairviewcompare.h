#pragma once
// The compare side of a compare window: its panes as the compare engine sees
// them, the status-line state and whether a compare is running.

#include "compare/comparecommand.h"
#include "status/statusline.h"

#include <QElapsedTimer>

namespace pv {

class Pairview;

// The status line of Compare Single without a file selected on both sides.
inline constexpr const char* kSelectFileInEachList = "Select a file in each list to compare them";

class PairviewCompare : public ComparePanes {
  public:
    explicit PairviewCompare(Pairview& form) : m_form(form) {}

    std::string leftDir() const override;
    std::string rightDir() const override;
    PaneLists lists() override;
    std::string moveLeft(const std::string& dir) override;
    std::string moveRight(const std::string& dir) override;
    std::vector<std::string> subdirectories(const std::string& dir) override;
    bool stopRequested() override;
    void clearStopRequest() override;
    void betweenLevels() override;

    // The options of one CompareDirectories call, from the settings and the
    // window's capture and output choices.
    DirectoryCompare::Call readCall() const;
    // Whether the main window asks for sub-directories.
    bool includeSubDirectories() const;
    CompareFiles files() const;

    bool running = false;
    StatusLine status;

  private:
    Pairview& m_form;
    QElapsedTimer m_sinceEvents;
};

// Connects the main window's compare commands (Compare, Compare single,
// AttributesView, Compare_Results, Compare_Results_Single) to the active compare
// window.
class MDIForm1;
void connectCompareCommands(MDIForm1& frame);
void mnu_FileAttributes_Click();

} // namespace pv
