// The main window's menu commands, the refresh timer and the launching of editors.
// Each command follows its failure policy: skipped steps, its own trap, or none, in
// which case the dispatcher shows the command's caption and the error.

#include "app/errorpolicy.h"
#include "app/programpaths.h"
#include "app/recentfiles.h"
#include "app/ui/formregistry.h"
#include "app/ui/mdiform1.h"
#include "app/windowcommands.h"
#include "compare/ui/dirlistbox.h"
#include "compare/ui/drivelistbox.h"
#include "compare/ui/filelistbox.h"
#include "compare/ui/pairview.h"
#include "editor/ui/fileopen.h"
#include "lists/editorlauncher.h"
#include "lists/launchrules.h"
#include "platform/association.h"
#include "platform/clock.h"
#include "platform/drives.h"
#include "platform/process.h"
#include "platform/prompter.h"
#include "platform/runtimeerror.h"

#include <QAction>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QPointer>
#include <QTimer>

namespace pv {

namespace {

// The windows and menus of the frame as the launcher sees them.
class FrameLaunchHost : public LaunchHost {
  public:
    explicit FrameLaunchHost(MDIForm1& frame) : m_frame(frame) {}

    bool useAssociated() const override {
        QAction* a = m_frame.action("UseAssociated");
        return a && a->isChecked();
    }
    int chosenConnection() const override {
        std::vector<bool> checked;
        for (int i = 0;; ++i) {
            QAction* a = m_frame.arrayItem("mnu_isql", i);
            if (!a)
                break;
            checked.push_back(a->isChecked());
        }
        return chosenConnectionIndex(checked);
    }
    long start(const std::string& commandLine) override { return startDetached(commandLine); }
    void loadIntoEditor(const std::string& path) override { m_frame.LoadFileIntoEditor(path); }
    void openInActiveCompareWindow(const std::string& quotedPath) override {
        const QString tag = QString::fromStdString(globals().activeCompareTag);
        for (QWidget* f : FormRegistry::openForms()) {
            if (f->objectName().toUpper() == "PAIRVIEW" && FormRegistry::tagOf(f) == tag)
                if (auto* p = qobject_cast<Pairview*>(f))
                    m_frame.GetRelatedEXEforFileType(p, quotedPath);
        }
    }
    std::string findAssociatedProgram(const std::string& path) override {
        return pv::findAssociatedProgram(path);
    }
    long openAssociated(const std::string&, const std::string& path) override {
        return openWithDesktop(path);
    }

  private:
    MDIForm1& m_frame;
};

// A menu caption as a message names it: without its mnemonic markers ("&&" stays "&").
std::string plainCaption(const QAction* a) {
    QString text = a->text();
    QString out;
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (text[i] == '&' && i + 1 < text.size())
            ++i;
        out += text[i];
    }
    return out.toStdString();
}

PaneSelection selectionOf(Pairview& window, Side side) {
    FileListBox* list = window.files(side);
    PaneSelection s{list->path(), std::nullopt};
    if (list->listIndex() >= 0 && list->listIndex() < list->listCount())
        s.selectedFile = list->item(list->listIndex());
    return s;
}

} // namespace

std::vector<Pairview*> compareWindows() {
    std::vector<Pairview*> out;
    for (QWidget* f : FormRegistry::openForms())
        if (f->objectName().toUpper() == "PAIRVIEW")
            if (auto* p = qobject_cast<Pairview*>(f))
                out.push_back(p);
    return out;
}

void MDIForm1::connectCommands() {
    auto bind = [this](const char* name, auto command) {
        QAction* a = action(name);
        connect(a, &QAction::triggered, this,
                [a, command] { dispatchCommand(plainCaption(a), command); });
    };
    auto open = [this](auto pathOf) { return [this, pathOf] { runEditor(pathOf()); }; };
    const ProgramGlobals& g = globals();
    const auto tagged = [&g](const std::string& path) {
        return perWindowFileName(path, g.activeCompareTag);
    };

    // Forwarders to the active compare window; the compare commands are the compare
    // window's own.
    using Command = void (CompareWindowCommands::*)();
    const auto forward = [this, bind](const char* name, Command command) {
        bind(name, [this, command] {
            if (CompareWindowCommands* w = activeCompareWindow())
                (w->*command)();
        });
    };
    forward("mnuFindFile", &CompareWindowCommands::FindFile_Click);
    forward("mnuFindText", &CompareWindowCommands::FindTheText);
    forward("mnuXcopy", &CompareWindowCommands::CreateXcopy_Click);
    forward("mnu_Edit_RunShell", &CompareWindowCommands::RunShell_Click);
    bind("AddFavorites", [this] {
        if (CompareWindowCommands* w = defaultCompareWindow(false))
            w->AddFavorite_Click();
    });

    bind("mnu_notes", open([] { return std::string("Notes.txt"); }));
    bind("ShowINI", open([&g] { return g.paths.settingsPath; }));
    bind("mnu_ShowCaptureFileName", open([&g] { return g.paths.capturePath; }));
    bind("mnu_ShowCapture_Xcopy", open([&g] { return g.paths.xcopyPath; }));
    bind("ShowFindResults", open([&g, tagged] { return tagged(g.paths.findTextPath); }));
    bind("mnuFindFile_results", open([&g, tagged] { return tagged(g.paths.findFilePath); }));
    bind("mnu_ShowCaptureFileName_ISQL", [this, &g] {
        std::vector<std::string> captions;
        for (int i = 0; QAction* a = arrayItem("mnuEditor", i); ++i)
            captions.push_back(a->text().toStdString());
        FrameLaunchHost host(*this);
        Settings settings = programSettings();
        EditorLauncher(settings, host).showCaptureInQueryTool(captions, g.paths.capturePath);
    });
    bind("UseAssociated", [this] {
        // The menu has already flipped the check mark; the command flips it itself.
        QAction* a = action("UseAssociated");
        a->setChecked(!a->isChecked());
        UseAssociated_Click();
    });

    bind("CompareForm", [this] { CompareForm_Click(); });
    bind("CompareForm_Additional", [this] { CompareForm_Additional_Click(); });
    bind("mnu_Match", [this] { mnu_Match_Click(); });
    bind("mnu_Match_Parallel", [this] { mnu_Match_Parallel_Click(); });
    bind("mnu_Refresh", [this] { mnu_Refresh_Click(); });
    bind("Cascade", [this] { Cascade_Click(); });
    bind("Horizontal", [this] { Horizontal_Click(); });
    bind("Vertical", [this] { Vertical_Click(); });
    connect(menu("Window"), &QMenu::aboutToShow, this, &MDIForm1::fillWindowList);

    // Item 0 of the recent files is the list's heading, not a file.
    arrayItem("Recent", 0)->setEnabled(false);
    for (int i = 1; QAction* a = arrayItem("Recent", i); ++i)
        connect(a, &QAction::triggered, this,
                [this, a, i] { dispatchCommand(plainCaption(a), [this, i] { Recent_Click(i); }); });
    for (int i = 0; QAction* a = arrayItem("mnuEditor", i); ++i)
        connect(a, &QAction::triggered, this, [this, i] { mnuEditor_Click(i); });

    connect(m_timer, &QTimer::timeout, this, &MDIForm1::Timer1_Timer);
}

void MDIForm1::AddRecent(std::string& path) {
    pv::AddRecent(path, programSettings());
}

long MDIForm1::runEditor(const std::string& path) {
    FrameLaunchHost host(*this);
    Settings settings = programSettings();
    return EditorLauncher(settings, host).runEditor(path);
}

long MDIForm1::runEditorAssociation(const std::string& editor, const std::string& path) {
    FrameLaunchHost host(*this);
    Settings settings = programSettings();
    return EditorLauncher(settings, host).runEditorAssociation(editor, path);
}

void MDIForm1::LoadFileIntoEditor(const std::string& path) {
    pv::LoadFileIntoEditor(path);
}

void MDIForm1::GetRelatedEXEforFileType(Pairview* window, const std::string& path) {
    FrameLaunchHost host(*this);
    Settings settings = programSettings();
    const long task = EditorLauncher(settings, host).GetRelatedEXEforFileType(path);
    if (window && task)
        window->lastTask = task;
}

void MDIForm1::OpenByAssociation_Click(Pairview* window) {
    if (!window)
        return;
    auto file = fileToOpen(selectionOf(*window, Side::Left), selectionOf(*window, Side::Right),
                           globals().rightSideClicked());
    if (!file) {
        prompter().message(kSelectFileFirst);
        return;
    }
    GetRelatedEXEforFileType(window, *file);
}

void MDIForm1::ShowINI_Click(Pairview* window) {
    skipOnError([&] {
        const long task = startDetached("Write.exe " + quoted(globals().paths.settingsPath));
        if (window)
            window->lastTask = task;
    });
}

void MDIForm1::mnuEditor_Click(int index) {
    Pairview* window = activeCompareWindow();
    QAction* item = arrayItem("mnuEditor", index);
    if (!window || !item)
        return;
    auto file = fileToOpen(selectionOf(*window, Side::Left), selectionOf(*window, Side::Right),
                           globals().rightSideClicked());
    if (!file) {
        prompter().message(kSelectFileLastClicked);
        return;
    }
    FrameLaunchHost host(*this);
    Settings settings = programSettings();
    EditorLauncher(settings, host).openWith(item->text().toStdString(), *file);
}

void MDIForm1::Recent_Click(int index) {
    QAction* item = arrayItem("Recent", index);
    if (!item)
        return;
    const std::string path = item->text().toStdString();
    const RecentLocation where = splitRecentPath(path);
    Pairview* window = activeCompareWindow();
    if (!window)
        return;
    window->drive(Side::Left)->setDrive(driveOfPath(where.directory, mountedDrives()));
    window->dir(Side::Left)->setPath(where.directory);
    FileListBox* files = window->files(Side::Left);
    const QString name = QString::fromStdString(where.fileName);
    for (int i = 0; i < files->listCount(); ++i)
        if (QString::fromStdString(files->item(i)).compare(name, Qt::CaseInsensitive) == 0)
            files->setListIndex(i);
    runEditor(path);
}

void MDIForm1::refreshCompareWindow(Pairview* window, bool stamp) {
    if (stamp)
        skipOnError([] { programSettings().write("APPLICATION", "LASTREFRESH", nowText()); });
    const int left = window->files(Side::Left)->listIndex();
    const int right = window->files(Side::Right)->listIndex();
    skipOnError([&] { window->dir(Side::Left)->refresh(); });
    skipOnError([&] { window->files(Side::Left)->refresh(); });
    skipOnError([&] { window->dir(Side::Right)->refresh(); });
    skipOnError([&] { window->files(Side::Right)->refresh(); });
    skipOnError([&] { window->files(Side::Left)->setListIndex(left); });
    skipOnError([&] { window->files(Side::Right)->setListIndex(right); });
}

void MDIForm1::Timer1_Timer() {
    ++refreshTickCount;
    if (!isRefreshTick(refreshTickCount))
        return;
    for (Pairview* p : compareWindows())
        refreshCompareWindow(p, true);
}

void MDIForm1::mnu_Refresh_Click() {
    for (Pairview* p : compareWindows()) {
        refreshCompareWindow(p, false);
        p->update();
    }
}

void MDIForm1::mnu_Match_Click() {
    Pairview* w = activeCompareWindow();
    if (!w)
        return;
    const Side from = globals().rightSideClicked() ? Side::Right : Side::Left;
    const Side to = from == Side::Right ? Side::Left : Side::Right;
    w->drive(to)->setDrive(w->drive(from)->drive());
    w->dir(to)->setPath(w->dir(from)->path());
}

void MDIForm1::mnu_Match_Parallel_Click() {
    Pairview* w = activeCompareWindow();
    if (!w)
        return;
    const Side from = globals().rightSideClicked() ? Side::Right : Side::Left;
    const Side to = from == Side::Right ? Side::Left : Side::Right;
    skipOnError(
        [&] { w->dir(to)->setPath(parallelLocation(w->dir(from)->path(), w->dir(to)->path())); });
}

void MDIForm1::CompareForm_Click() {
    closeThisForm("Pairview");
    defaultCompareWindow(true);
}

Pairview* MDIForm1::CompareForm_Additional_Click() {
    const int index = ++m_lastAdditionalIndex;
    auto* window = new Pairview(this);
    QMdiSubWindow* sub = showChildInside(window, window->sizeHint());
    // The load runs before the tag is set, so it reads the first window's section;
    // the second load below takes the window's own.
    window->Form_Load();
    FormRegistry::setTag(window, QString::number(index));
    window->setWindowTitle(QString::fromStdString(additionalCompareCaption(index)));
    sub->show();
    m_mdiArea->setActiveSubWindow(sub);
    window->Form_Activate();
    window->LoadINISettings();
    return window;
}

void MDIForm1::tileChildren(Qt::Orientation orientation) {
    QList<QMdiSubWindow*> children;
    for (QMdiSubWindow* sub : m_mdiArea->subWindowList())
        if (sub->isVisible() && !sub->isMinimized())
            children.append(sub);
    if (children.isEmpty())
        return;
    const QRect area = m_mdiArea->viewport()->rect();
    const int n = int(children.size());
    for (int i = 0; i < n; ++i) {
        QMdiSubWindow* sub = children[i];
        sub->showNormal();
        // Horizontal tiling stacks the windows one above the other, full width;
        // vertical tiling puts them side by side, full height.
        if (orientation == Qt::Horizontal) {
            const int h = area.height() / n;
            sub->setGeometry(0, i * h, area.width(), i == n - 1 ? area.height() - i * h : h);
        } else {
            const int w = area.width() / n;
            sub->setGeometry(i * w, 0, i == n - 1 ? area.width() - i * w : w, area.height());
        }
    }
}

void MDIForm1::Cascade_Click() {
    for (QMdiSubWindow* sub : m_mdiArea->subWindowList())
        if (sub->isMaximized())
            sub->showNormal();
    m_mdiArea->cascadeSubWindows();
}

void MDIForm1::fillWindowList() {
    QMenu* window = menu("Window");
    for (QAction* a : window->actions())
        if (a->property("windowList").toBool())
            delete a;
    const QList<QMdiSubWindow*> children = m_mdiArea->subWindowList();
    if (children.isEmpty())
        return;
    window->addSeparator()->setProperty("windowList", true);
    for (int i = 0; i < children.size(); ++i) {
        QPointer<QMdiSubWindow> sub = children[i];
        QAction* a = window->addAction(sub->widget() ? sub->widget()->windowTitle() : QString());
        a->setObjectName("WindowList");
        a->setProperty("index", i);
        a->setProperty("windowList", true);
        a->setCheckable(true);
        a->setChecked(sub == m_mdiArea->activeSubWindow());
        connect(a, &QAction::triggered, this, [this, sub] {
            if (!sub)
                return;
            if (sub->isMinimized())
                sub->showNormal();
            m_mdiArea->setActiveSubWindow(sub);
            sub->raise();
        });
    }
}

void MDIForm1::Horizontal_Click() {
    tileChildren(Qt::Horizontal);
}

void MDIForm1::Vertical_Click() {
    tileChildren(Qt::Vertical);
}

void MDIForm1::UseAssociated_Click() {
    QAction* a = action("UseAssociated");
    a->setChecked(!a->isChecked());
    programSettings().write("APPLICATION", "ASSOCIATED", a->isChecked() ? "YES" : "NO");
}

} // namespace pv
