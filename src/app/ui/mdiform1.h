#pragma once
// The main window: the multiple-document frame that holds the compare windows and
// every other child form, owns the menu bar, the recent-files list, the refresh
// timer and the registry of open forms.

#include <QMainWindow>
#include <string>
#include <vector>

class QMdiArea;
class QMenu;
class QTimer;
class QAction;
class QMdiSubWindow;

namespace pv {

class Pairview;

// The main window's caption (the frame shows a maximized child's caption after it).
inline constexpr const char* kMainCaption = "Pairview Utility ";

class MDIForm1 : public QMainWindow {
    Q_OBJECT
public:
    // `arguments` are the program's command-line words without its name.
    explicit MDIForm1(std::vector<std::string> arguments = {}, QWidget* parent = nullptr);
    ~MDIForm1() override;

    // The start sequence: paths, the frame shown, the program directory made current,
    // the first compare window, the refresh timer.
    void MDIForm_Load(const std::string& programDirectory);

    const std::vector<std::string>& arguments() const { return m_arguments; }
    QMdiArea* mdiArea() const { return m_mdiArea; }
    QTimer* timer() const { return m_timer; }
    int refreshTickCount = 0;

    // Menu items by name; control arrays by name and index.
    QAction* action(const QString& name) const;
    QAction* arrayItem(const QString& arrayName, int index) const;
    QMenu* menu(const QString& name) const;

    // Adds a form as a child window, registers and shows it.
    QMdiSubWindow* showChild(QWidget* form);
    // The same for a window that opens at its own size: not maximized, its content
    // `size` as far as the frame's area allows, wholly inside the area, in front.
    QMdiSubWindow* showChildInside(QWidget* form, QSize size);
    // The default (first) compare window, creating and loading it when missing.
    Pairview* defaultCompareWindow(bool create = true);
    // The compare window the menu commands act on, or nullptr.
    Pairview* activeCompareWindow() const;

    void AddRecent(std::string& path);
    // Opens a file in the chosen editor; returns the task number or 0.
    long runEditor(const std::string& path);

    // Menu commands, the refresh timer and launching (mdiform1commands.cpp).
    long runEditorAssociation(const std::string& editor, const std::string& path);
    void LoadFileIntoEditor(const std::string& path);
    // The association opener, the "Open by association" and "Show INI" buttons of
    // a compare window; each stores its task number in the window's lastTask.
    void GetRelatedEXEforFileType(Pairview* window, const std::string& path);
    void OpenByAssociation_Click(Pairview* window);
    void ShowINI_Click(Pairview* window);
    void Recent_Click(int index);
    void mnuEditor_Click(int index);
    void Timer1_Timer();
    void mnu_Refresh_Click();
    void mnu_Match_Click();
    void mnu_Match_Parallel_Click();
    void CompareForm_Click();
    Pairview* CompareForm_Additional_Click();
    void Cascade_Click();
    void Horizontal_Click();
    void Vertical_Click();
    // Lists the open child windows at the end of the "&Window" menu by caption,
    // the active one checked; choosing one brings it to the front.
    void fillWindowList();
    void UseAssociated_Click();

    void closeThisForm(const QString& name);
    void closeAllForms();
    void Exit_Click();
    void Close_Click();

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void createMenus();
    QAction* addItem(QMenu* menu, const char* name, const char* caption);
    QMenu* addSubmenu(QMenu* parent, const char* name, const char* caption);
    void addArray(QMenu* menu, const char* arrayName, int count, const char* firstCaption);
    void createSwitchMenus(QMenu* options);
    void MDIForm_Unload();
    void connectCommands();
    void disableItemsWithoutCommand();
    void refreshCompareWindow(Pairview* window, bool stamp);
    void tileChildren(Qt::Orientation orientation);
    void restorePlacement();
    void savePlacement();

    std::vector<std::string> m_arguments;
    QMdiArea* m_mdiArea = nullptr;
    QTimer* m_timer = nullptr;
    bool m_loaded = false;         // the start sequence ran: the placement is worth keeping
    int m_lastAdditionalIndex = 0; // additional compare windows' indexes are never reused
};

// The main window of the running program (nullptr before it exists).
MDIForm1* mainWindow();
// Every open compare window, whatever its tag, in opening order.
std::vector<Pairview*> compareWindows();

} // namespace pv
