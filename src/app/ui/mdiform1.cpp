#include "app/ui/mdiform1.h"

#include "about/ui/frmabout.h"
#include "app/errorpolicy.h"
#include "app/optionswitches.h"
#include "app/programpaths.h"
#include "app/ui/formregistry.h"
#include "app/windowplacement.h"
#include "compare/ui/pairview.h"
#include "compare/ui/pairviewcompare.h"
#include "editor/ui/fileopen.h"
#include "lists/ui/listcommands.h"
#include "platform/process.h"
#include "platform/prompter.h"
#include "settings/settings.h"
#include "sidebyside/ui/sidebysidecommands.h"

#include <QAction>
#include <QCloseEvent>
#include <QDir>
#include <QGuiApplication>
#include <QIcon>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QMenuBar>
#include <QScreen>
#include <QStyle>
#include <QTimer>

#include <algorithm>

namespace pv {

namespace {

MDIForm1* g_mainWindow = nullptr;

// The switch items' checked state as the menu holds it.
class MenuSwitchStates : public SwitchStates {
  public:
    explicit MenuSwitchStates(const MDIForm1& frame) : m_frame(frame) {}
    bool isChecked(std::string_view name) const override {
        QAction* a = m_frame.action(QString::fromUtf8(name.data(), qsizetype(name.size())));
        return a && a->isChecked();
    }
    void setChecked(std::string_view name, bool checked) override {
        if (QAction* a = m_frame.action(QString::fromUtf8(name.data(), qsizetype(name.size()))))
            a->setChecked(checked);
    }

  private:
    const MDIForm1& m_frame;
};

// A menu item that can tell whether a command listens to it. Every menu it is
// added to listens to it as well, so a command is a listener beyond those.
class MenuItem : public QAction {
public:
    MenuItem(const QString& caption, QObject* parent) : QAction(caption, parent) {}
    bool hasCommand() const {
        qsizetype menus = 0;
        for (QObject* o : associatedObjects())
            if (qobject_cast<QMenu*>(o) || qobject_cast<QMenuBar*>(o))
                ++menus;
        return receivers(SIGNAL(triggered(bool))) > menus;
    }
};

} // namespace

MDIForm1* mainWindow() {
    return g_mainWindow;
}

MDIForm1::MDIForm1(std::vector<std::string> arguments, QWidget* parent)
    : QMainWindow(parent), m_arguments(std::move(arguments)) {
    g_mainWindow = this;
    setObjectName("MDIForm1");
    setWindowTitle(kMainCaption);
    FormRegistry::add(this);
    m_mdiArea = new QMdiArea(this);
    m_mdiArea->setObjectName("MDIArea");
    setCentralWidget(m_mdiArea);
    // A window that opens or comes to the front keeps its own size, and a maximized
    // compare window stays maximized behind it.
    m_mdiArea->setOption(QMdiArea::DontMaximizeSubWindowOnActivation);
    // A window that closes hands the front to the one that was there before it.
    m_mdiArea->setActivationOrder(QMdiArea::ActivationHistoryOrder);
    m_timer = new QTimer(this);
    m_timer->setObjectName("Timer1");
    createMenus();
    connectCommands();
    connectCompareCommands(*this);
    connectListCommands(*this);
    connectAboutCommand(*this);
    connectEditorCommands(*this);
    connectSideBySideCommands(*this);
    disableItemsWithoutCommand();
    resize(1100, 760);
    setWindowIcon(QIcon(":/icons/pairview.svg"));
    connect(m_mdiArea, &QMdiArea::subWindowActivated, this, [](QMdiSubWindow* sub) {
        if (sub)
            if (auto* p = qobject_cast<Pairview*>(sub->widget()))
                p->Form_Activate();
    });
}

MDIForm1::~MDIForm1() {
    if (g_mainWindow == this)
        g_mainWindow = nullptr;
}

void MDIForm1::MDIForm_Load(const std::string& programDirectory) {
    ProgramGlobals& g = globals();
    g.paths = ProgramPaths::inDirectory(programDirectory);
    show();
    QDir::setCurrent(QString::fromStdString(programDirectory));
    defaultCompareWindow(true);
    // The first compare window's load settles which settings file is in use.
    restorePlacement();
    m_loaded = true;
    refreshTickCount = 0;
    m_timer->start(60000);
}

QAction* MDIForm1::action(const QString& name) const {
    return FormRegistry::menuItem(this, name);
}

QAction* MDIForm1::arrayItem(const QString& arrayName, int index) const {
    return FormRegistry::menuArrayItem(this, arrayName, index);
}

QMenu* MDIForm1::menu(const QString& name) const {
    QAction* a = action(name);
    return a ? a->menu() : nullptr;
}

QAction* MDIForm1::addItem(QMenu* menu, const char* name, const char* caption) {
    auto* a = new MenuItem(QString::fromUtf8(caption), this);
    menu->addAction(a);
    a->setObjectName(name);
    return a;
}

void MDIForm1::disableItemsWithoutCommand() {
    // An item nothing listens to would do nothing when chosen: it is shown
    // disabled until its command is bound. Submenus open on their own.
    for (QAction* a : findChildren<QAction*>())
        if (auto* item = dynamic_cast<MenuItem*>(a); item && !item->menu() && !item->hasCommand())
            item->setEnabled(false);
}

QMenu* MDIForm1::addSubmenu(QMenu* parent, const char* name, const char* caption) {
    QMenu* m = parent ? parent->addMenu(QString::fromUtf8(caption))
                      : menuBar()->addMenu(QString::fromUtf8(caption));
    m->setObjectName(QString(name) + "_menu");
    m->menuAction()->setObjectName(name);
    m->menuAction()->setParent(this);
    return m;
}

void MDIForm1::addArray(QMenu* menu, const char* arrayName, int count, const char* firstCaption) {
    for (int i = 0; i < count; ++i) {
        QAction* a = addItem(menu, arrayName, i == 0 ? firstCaption : "");
        a->setProperty("index", i);
        a->setVisible(i == 0);
    }
}

void MDIForm1::createMenus() {
    QMenu* file = addSubmenu(nullptr, "File", "&File");
    addItem(file, "New", "&New");
    addItem(file, "Open", "&Open");
    addItem(file, "Save", "&Save");
    addItem(file, "SaveAs", "Save&As");
    connect(addItem(file, "Close", "&Close"), &QAction::triggered, this, &MDIForm1::Close_Click);
    file->addSeparator()->setObjectName("s1");
    connect(addItem(file, "Exit", "Exit"), &QAction::triggered, this, &MDIForm1::Exit_Click);
    file->addSeparator()->setObjectName("s2");
    addArray(file, "Recent", 21, "Recent");

    QMenu* edit = addSubmenu(nullptr, "edit", "&Edit");
    addItem(edit, "mnuCompare", "Compare");
    addItem(edit, "mnuCompare_Single", "Compare single");
    addItem(edit, "mnuCompareResume", "Compare Resume");
    addItem(edit, "mnuFindFile", "FindFile");
    addItem(edit, "mnuFindText", "FindText");
    addItem(edit, "mnuXcopy", "XCOPY build");
    addItem(edit, "FavoritesPage", "Favorites");
    addItem(edit, "AddFavorites", "&AddFavorites");
    addItem(edit, "menuShowEditors", "&Editors");
    addItem(edit, "menuShowISQLCons", "ISQL connections");
    addItem(edit, "menuShowUNCPaths", "UNC Paths");
    addItem(edit, "mnu_notes", "&Notes");
    QAction* associated = addItem(edit, "UseAssociated", "Use &Associated editor on click");
    associated->setCheckable(true);
    QMenu* openWith = addSubmenu(edit, "OpenWith", "&OpenWith");
    addArray(openWith, "mnuEditor", 21, "Open by association");
    addItem(openWith, "mnu_Edit_RunShell", "Run Shell");

    QMenu* view = addSubmenu(nullptr, "View", "&View");
    addItem(view, "mnu_FileAttributes", "AttributesView");
    addItem(view, "CompareForm", "&CompareForm");
    addItem(view, "CompareForm_Additional", "CompareForm Additional ");
    addItem(view, "mnu_Match", "Match Directory Locations");
    addItem(view, "mnu_Match_Parallel", "Parallel Directory Locations");
    QMenu* favorites = addSubmenu(view, "FavoritesList", "Favorites >>>");
    addItem(favorites, "mnu_Refresh", "Refresh");
    addArray(favorites, "mnuFavorites", 51, "Favorites");
    addItem(view, "ShowINI", "&INI");
    addItem(view, "ShowCompareResults", "Compare_&Results");
    addItem(view, "ShowCompareResults_Single", "Compare_Results_&Single");
    addItem(view, "ShowCompareResults_SideBySide", "Compare_Results_Side_by_Side");
    addItem(view, "mnu_ShowCaptureFileName", "Capture_FileName in Editor");
    addItem(view, "mnu_ShowCaptureFileName_ISQL", "Capture_FileName in ISQL");
    addItem(view, "mnu_ShowCapture_Xcopy", "XCOPY file");
    addItem(view, "ShowFindResults", "Find_Results");
    addItem(view, "mnuFindFile_results", "Find_File_Results ");
    addItem(view, "mnuOptionsToolbar", "&ToolBars");

    QMenu* options = addSubmenu(nullptr, "mnu_Options", "&Options");
    createSwitchMenus(options);
    QMenu* isql = addSubmenu(options, "mnu_isql_top", "ISQL");
    addArray(isql, "mnu_isql", 21, "");
    for (int i = 0; i < 21; ++i)
        arrayItem("mnu_isql", i)->setCheckable(true);

    QMenu* window = addSubmenu(nullptr, "Window", "&Window");
    QMenu* arrange = addSubmenu(window, "Arrange", "&Arrange");
    addItem(arrange, "Cascade", "&Cascade");
    addItem(arrange, "Horizontal", "&Horizontal");
    addItem(arrange, "Vertical", "&Vertical");

    QMenu* help = addSubmenu(nullptr, "Help", "&Help");
    addItem(help, "mnu_helpAbout", "About");
}

void MDIForm1::createSwitchMenus(QMenu* options) {
    QMenu* compare = addSubmenu(options, "mnu_Options_Compare", "&Compare");
    QMenu* dir = addSubmenu(options, "mnu_Dir", "&Dir");
    QMenu* find = addSubmenu(options, "mnu_Options_FindStr", "&FindStr");
    // The /a, /o and /t groups of dir are submenus that open where their first
    // item stands in the menu order.
    struct Group {
        const char* prefix;
        const char* name;
        const char* caption;
        QMenu* menu;
    } groups[] = {{"mnu_Dir_a_", "mnu_Dir_a", "/a attributes", nullptr},
                  {"mnu_Dir_o_", "mnu_Dir_o", "/o SortOrder", nullptr},
                  {"mnu_Dir_t_", "mnu_Dir_t", "/t TimeField", nullptr}};
    for (const SwitchItem& item : switchItems()) {
        std::string_view section = item.section;
        std::string_view name = item.menuName;
        QMenu* target = section == "COMPARECONTROL" ? compare
                        : section == "FINDCONTROL"  ? find
                                                    : dir;
        if (target == dir)
            for (Group& g : groups)
                if (name.substr(0, std::string_view(g.prefix).size()) == g.prefix) {
                    if (!g.menu)
                        g.menu = addSubmenu(dir, g.name, g.caption);
                    target = g.menu;
                }
        QAction* a = addItem(target, item.menuName, item.caption);
        a->setCheckable(true);
        const char* menuName = item.menuName;
        connect(a, &QAction::triggered, this, [this, a, menuName](bool checkedNow) {
            // The menu has already flipped the check mark; the click rules decide
            // from the state before the click.
            a->setChecked(!checkedNow);
            MenuSwitchStates states(*this);
            Settings settings = programSettings();
            clickSwitch(menuName, states, [&settings](const SettingWrite& w) {
                settings.write(w.section, w.key, w.value);
            });
        });
    }
}

QMdiSubWindow* MDIForm1::showChild(QWidget* form) {
    FormRegistry::add(form);
    QMdiSubWindow* sub = m_mdiArea->addSubWindow(form);
    sub->setAttribute(Qt::WA_DeleteOnClose);
    sub->setWindowIcon(windowIcon());
    form->setAttribute(Qt::WA_DeleteOnClose);
    form->show();
    return sub;
}

QMdiSubWindow* MDIForm1::showChildInside(QWidget* form, QSize size) {
    QMdiSubWindow* sub = showChild(form);
    sub->showNormal();
    // The child window's border and title bar come around the content.
    const int border = sub->style()->pixelMetric(QStyle::PM_MdiSubWindowFrameWidth, nullptr, sub);
    const int title = sub->style()->pixelMetric(QStyle::PM_TitleBarHeight, nullptr, sub);
    const QSize area = m_mdiArea->viewport()->size();
    sub->resize((size + QSize(2 * border, title + border)).boundedTo(area));
    const QPoint at(std::clamp(sub->x(), 0, std::max(0, area.width() - sub->width())),
                    std::clamp(sub->y(), 0, std::max(0, area.height() - sub->height())));
    sub->move(at);
    m_mdiArea->setActiveSubWindow(sub);
    return sub;
}

Pairview* MDIForm1::defaultCompareWindow(bool create) {
    for (QWidget* f : FormRegistry::openForms())
        if (auto* p = qobject_cast<Pairview*>(f); p && FormRegistry::tagOf(p).isEmpty())
            return p;
    if (!create)
        return nullptr;
    auto* p = new Pairview(this);
    // Restored from maximized, the window shows all of its controls.
    QMdiSubWindow* sub = showChildInside(p, p->sizeHint());
    p->Form_Load();
    sub->showMaximized();
    m_mdiArea->setActiveSubWindow(sub);
    p->Form_Activate();
    return p;
}

Pairview* MDIForm1::activeCompareWindow() const {
    const QString tag = QString::fromStdString(globals().activeCompareTag);
    for (QWidget* f : FormRegistry::openForms())
        if (f->objectName().toUpper() == "PAIRVIEW" && FormRegistry::tagOf(f) == tag)
            return qobject_cast<Pairview*>(f);
    return nullptr;
}

void MDIForm1::closeThisForm(const QString& name) {
    for (QWidget* f : FormRegistry::openForms())
        if (f->objectName().compare(name, Qt::CaseInsensitive) == 0)
            FormRegistry::unload(f);
}

void MDIForm1::closeAllForms() {
    for (QWidget* f : FormRegistry::openForms())
        if (f->objectName().compare("MDIForm1", Qt::CaseInsensitive) != 0)
            FormRegistry::unload(f);
}

void MDIForm1::MDIForm_Unload() {
    closeThisForm("frmAbout");
}

void MDIForm1::Exit_Click() {
    closeThisForm("frmAbout");
    close();
}

void MDIForm1::Close_Click() {
    closeThisForm("frmAbout");
    closeAllForms();
}

void MDIForm1::closeEvent(QCloseEvent* event) {
    // A walk lets events through between levels; ending the program under it
    // would pull its windows away. Ask it to stop; the user closes again after.
    if (Pairview::stopInsteadOfClosing()) {
        event->ignore();
        return;
    }
    // An editor window whose changed text the user keeps (Cancel) keeps the program.
    if (!closeEditorWindows()) {
        event->ignore();
        return;
    }
    MDIForm_Unload();
    if (m_loaded)
        skipOnError([this] { savePlacement(); });
    m_mdiArea->closeAllSubWindows();
    m_timer->stop();
    event->accept();
}

// The window comes back where it was, but always on a screen that exists now.
void MDIForm1::restorePlacement() {
    const std::optional<WindowPlacement> stored = readWindowPlacement(programSettings());
    if (!stored)
        return;
    QRect frame(stored->x, stored->y, stored->width, stored->height);
    if (const QScreen* screen = QGuiApplication::screenAt(frame.center())) {
        const QRect available = screen->availableGeometry();
        frame.setSize(frame.size().boundedTo(available.size()));
        if (!available.contains(frame))
            frame.moveTopLeft(available.topLeft());
    }
    setGeometry(frame);
    if (stored->maximized)
        setWindowState(windowState() | Qt::WindowMaximized);
}

void MDIForm1::savePlacement() {
    const QRect normal = isMaximized() ? normalGeometry() : geometry();
    writeWindowPlacement(programSettings(),
                         {normal.x(), normal.y(), normal.width(), normal.height(), isMaximized()});
}

} // namespace pv
