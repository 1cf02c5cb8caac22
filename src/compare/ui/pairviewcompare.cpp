#include "compare/ui/pairviewcompare.h"

#include "app/errorpolicy.h"
#include "app/programpaths.h"
#include "app/ui/mdiform1.h"
#include "compare/compareoptions.h"
#include "compare/fileattributes.h"
#include "compare/filelisting.h"
#include "compare/singlecompare.h"
#include "compare/ui/dirlistbox.h"
#include "compare/ui/filelistbox.h"
#include "compare/ui/pairview.h"
#include "platform/process.h"
#include "platform/prompter.h"
#include "results/ui/resultslist.h"
#include "settings/settings.h"
#include "status/ui/qtstatusbarview.h"

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QCoreApplication>
#include <QEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalBlocker>

namespace pv {

namespace {

// Reports a press on one of the status line's panels.
class PanelPressFilter : public QObject {
  public:
    PanelPressFilter(QObject* parent, std::function<void()> pressed)
        : QObject(parent), m_pressed(std::move(pressed)) {}

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::MouseButtonRelease)
            m_pressed();
        return QObject::eventFilter(watched, event);
    }

  private:
    std::function<void()> m_pressed;
};

} // namespace

// --- the panes as the compare sees them ---

std::string PairviewCompare::leftDir() const {
    return m_form.dir(Side::Left)->path();
}
std::string PairviewCompare::rightDir() const {
    return m_form.dir(Side::Right)->path();
}

PaneLists PairviewCompare::lists() {
    return {leftDir(), rightDir(), m_form.files(Side::Left)->names(),
            m_form.files(Side::Right)->names()};
}

// The walk moves the panes without their change events: those would write the
// pane settings and show a message box for a missing right directory, where the
// walk reports it as a results line instead.
std::string PairviewCompare::moveLeft(const std::string& dir) {
    QSignalBlocker blockDir(m_form.dir(Side::Left));
    // The list's view would recompute its selection area at every move; it is
    // repainted once when the walk ends.
    QSignalBlocker blockSelection(m_form.dir(Side::Left)->selectionModel());
    m_form.dir(Side::Left)->setPath(dir);
    // One read of the directory serves both lists.
    m_form.files(Side::Left)
        ->setListing(m_form.dir(Side::Left)->path(), m_form.dir(Side::Left)->files());
    return m_form.dir(Side::Left)->path();
}

std::string PairviewCompare::moveRight(const std::string& dir) {
    QSignalBlocker blockDir(m_form.dir(Side::Right));
    QSignalBlocker blockSelection(m_form.dir(Side::Right)->selectionModel());
    m_form.dir(Side::Right)->setPath(dir);
    m_form.files(Side::Right)
        ->setListing(m_form.dir(Side::Right)->path(), m_form.dir(Side::Right)->files());
    return m_form.dir(Side::Right)->path();
}

std::vector<std::string> PairviewCompare::subdirectories(const std::string& dir) {
    std::vector<std::string> paths;
    // A pane that was just moved there has listed this directory's sub-directories.
    for (Side side : {Side::Left, Side::Right}) {
        DirListBox* pane = m_form.dir(side);
        if (pane->path() == dir) {
            for (int k = 0; k < pane->listCount(); ++k)
                paths.push_back(pane->item(k));
            return paths;
        }
    }
    for (const std::string& name : listSubdirectories(dir))
        paths.push_back(joinPath(dir, name));
    return paths;
}

bool PairviewCompare::stopRequested() {
    auto* stop = m_form.findChild<QCheckBox*>("StopProcessing");
    return stop && stop->isChecked();
}

void PairviewCompare::clearStopRequest() {
    if (auto* stop = m_form.findChild<QCheckBox*>("StopProcessing"))
        stop->setChecked(false);
}

void PairviewCompare::betweenLevels() {
    // Lets a click on StopProcessing through; a second Compare is ignored while
    // `running` is set. Not more often than a person can click: every pass paints
    // what changed, and a walk has thousands of levels.
    if (m_sinceEvents.isValid() && m_sinceEvents.elapsed() < 40)
        return;
    QCoreApplication::processEvents();
    m_sinceEvents.start();
}

DirectoryCompare::Call PairviewCompare::readCall() const {
    DirectoryCompare::Call call;
    call.options = readCompareOptions(programSettings());
    if (auto* capture = m_form.findChild<QComboBox*>("CompareUtilityCommands"))
        call.capture = captureSelectionFromItem(capture->currentText().toStdString());
    auto* replace = m_form.findChild<QRadioButton*>("OutputOptionReplace");
    call.replace = !replace || replace->isChecked();
    call.pattern = m_form.files(Side::Left)->pattern();
    return call;
}

bool PairviewCompare::includeSubDirectories() const {
    if (MDIForm1* frame = mainWindow())
        if (QAction* item = frame->action("mnu_Options_Compare_Include_Sub_Directories"))
            return item->isChecked();
    // Without the main window's menu, the setting behind it.
    return IniBool(programSettings().read("COMPARECONTROL", "CMPR_SUB_DIRECTORIES"));
}

CompareFiles PairviewCompare::files() const {
    return CompareFiles::forWindow(globals().paths.programDirectory,
                                   m_form.tag().trimmed().toStdString());
}

// --- the compare members of the compare window ---

Pairview::~Pairview() = default;

void Pairview::connectCompareControls() {
    m_compare = std::make_unique<PairviewCompare>(*this);
    if (auto* b = findChild<QPushButton*>("Compare_Button"))
        connect(b, &QPushButton::clicked, this, &Pairview::Compare_Button_Click);
    if (auto* b = findChild<QPushButton*>("CompareSingle"))
        connect(b, &QPushButton::clicked, this, &Pairview::CompareSingle_Click);
    if (auto* e = findChild<QLineEdit*>("fc_lb"))
        connect(e, &QLineEdit::textChanged, this, &Pairview::fc_lb_Change);
    if (auto* e = findChild<QLineEdit*>("fc_nnnn"))
        connect(e, &QLineEdit::textChanged, this, &Pairview::fc_nnnn_Change);
    for (int panel = 1; panel <= 6; ++panel)
        m_statusPanels[static_cast<size_t>(panel - 1)]->installEventFilter(
            new PanelPressFilter(this, [this, panel] { StatusBar1_PanelClick(panel); }));
}

bool Pairview::compareRunning() const {
    return m_compare->running;
}

std::string Pairview::GetFileAttributes(const std::string& path) const {
    return pv::GetFileAttributes(programSettings(), path);
}

void Pairview::Compare_Button_Click() {
    if (m_compare->running)
        return;
    m_compare->running = true;
    // While the compare runs, the windows it writes to stay open (they refuse to
    // close), because the walk lets other events through between levels.
    struct RunningGuard {
        RunningGuard() { ++globals().runningCompares; }
        ~RunningGuard() { --globals().runningCompares; }
    } runningGuard;
    QPointer<Pairview> self(this);
    ResultsList* results = ResultsList::instance();
    results->bringToFront();
    DirectoryCompare compare(*results, m_compare->files(),
                             [](const std::string& command) { return startDetached(command); });
    compare.setAttrOne(attrOne);
    compare.setAttrTwo(attrTwo);
    CompareCommand command(compare, *results, *m_compare, [this] { return m_compare->readCall(); });
    const std::string section = this->section();
    // Every move of the left pane is remembered, but the settings file is
    // rewritten at most twice a second; the last directory is written at the end.
    std::string currentDir;
    QElapsedTimer sinceWrite;
    command.onLeftMoved = [&](const std::string& dir) {
        currentDir = dir;
        if (!sinceWrite.isValid() || sinceWrite.elapsed() >= 500) {
            programSettings().write(section, "COMPARECURRENTDIR", dir);
            sinceWrite.start();
            currentDir.clear();
        }
    };
    try {
        command.run(m_compare->includeSubDirectories());
    } catch (const std::exception& e) {
        prompter().message("Compare:fall through error:" + errorDescription(e));
    }
    if (!currentDir.empty())
        programSettings().write(section, "COMPARECURRENTDIR", currentDir);
    if (!self)
        return;
    for (Side side : {Side::Left, Side::Right})
        dir(side)->viewport()->update();
    if (compare.lastTask())
        lastTask = compare.lastTask();
    attrOne = compare.attrOne();
    attrTwo = compare.attrTwo();
    m_compare->running = false;
}

void Pairview::CompareDirectories() {
    ResultsList* results = ResultsList::instance();
    DirectoryCompare compare(*results, m_compare->files(),
                             [](const std::string& command) { return startDetached(command); });
    compare.setAttrOne(attrOne);
    compare.setAttrTwo(attrTwo);
    compare.compareDirectories(m_compare->lists(), m_compare->readCall());
    if (compare.lastTask())
        lastTask = compare.lastTask();
    attrOne = compare.attrOne();
    attrTwo = compare.attrTwo();
}

void Pairview::compare_singles(const std::string& fileName1, const std::string& dirPath1,
                               const std::string& fileName2, const std::string& dirPath2) {
    const std::string& programDir = globals().paths.programDirectory;
    std::string command =
        compareSinglesCommand(programDir, fileName1, dirPath1, fileName2, dirPath2,
                              singleResultFile(programDir, tag().trimmed().toStdString()),
                              readCompareOptions(programSettings()));
    lastTask = startDetached(command);
}

void Pairview::CompareSingle_Click() {
    for (Side side : {Side::Left, Side::Right})
        if (!files(side)->hasSelection()) {
            SetMdiStatusText(kSelectFileInEachList, 1);
            return;
        }
    dispatchCommand("Compare Single", [this] {
        compare_singles(files(Side::Left)->selectedName(), dir(Side::Left)->path(),
                        files(Side::Right)->selectedName(), dir(Side::Right)->path());
    });
}

void Pairview::StatusBar1_PanelClick(int) {
    CompareSingle_Click();
}

void Pairview::fc_lb_Change() {
    if (auto* e = findChild<QLineEdit*>("fc_lb"))
        programSettings().write("COMPARECONTROL", "FC_LB", e->text().toStdString());
}

void Pairview::fc_nnnn_Change() {
    if (auto* e = findChild<QLineEdit*>("fc_nnnn"))
        programSettings().write("COMPARECONTROL", "FC_NNNN", e->text().toStdString());
}

void Pairview::Set_StatusBar1(const std::string& text1, const std::string& text2,
                              const std::string& text3, const std::string& text4,
                              const std::string& label, const std::string& fileName) {
    Side side = label == "file one:" ? Side::Left : Side::Right;
    m_compare->status.Set_StatusBar1(
        text1, text2, text3, text4, label, fileName, attrOne, attrTwo,
        [&] { return GetFileAttributes(joinPath(dir(side)->path(), fileName)); });
    const StatusLine::Panels& panels = m_compare->status.panels();
    for (size_t i = 0; i < panels.size(); ++i)
        m_statusPanels[i]->setText(QString::fromStdString(panels[i]));
}

// --- the main window's compare commands ---

void mnu_FileAttributes_Click() {
    MDIForm1* frame = mainWindow();
    Pairview* window = frame ? frame->activeCompareWindow() : nullptr;
    if (!window)
        return;
    try {
        FileListBox* left = window->files(Side::Left);
        FileListBox* right = window->files(Side::Right);
        bool haveLeft = left->listIndex() >= 0, haveRight = right->listIndex() >= 0;
        if (!haveLeft && !haveRight) {
            prompter().message(
                "Please select a file to open. I will use the last file you clicked on.");
            return;
        }
        FileListBox* chosen = haveLeft && haveRight ? (globals().rightSideClicked() ? right : left)
                                                    : (haveLeft ? left : right);
        std::string path = joinPath(chosen->path(), chosen->selectedName());
        if (path.empty()) {
            prompter().message("File not selected for attributes");
            return;
        }
        AttributesMessage m = attributesMessage(window->GetFileAttributes(path));
        if (m.titled)
            prompter().message(m.text, path);
        else
            prompter().message(m.text);
    } catch (const std::exception& e) {
        prompter().message("mnu_FileAttributes::Error::\r\n" + errorDescription(e));
    }
}

void connectCompareCommands(MDIForm1& frame) {
    auto on = [&frame](const char* name, std::function<void()> run) {
        if (QAction* a = frame.action(name))
            QObject::connect(a, &QAction::triggered, &frame, [run] { run(); });
    };
    on("mnuCompare", [] {
        // The forwarder passes over any failure of its own.
        skipOnError([] {
            if (Pairview* w = mainWindow()->activeCompareWindow())
                w->Compare_Button_Click();
        });
    });
    on("mnuCompare_Single", [] {
        if (Pairview* w = mainWindow()->activeCompareWindow())
            w->CompareSingle_Click();
    });
    on("mnu_FileAttributes", [] { mnu_FileAttributes_Click(); });
    auto openResults = [](const std::string& prefix) {
        dispatchCommand("Compare_Results", [&] {
            mainWindow()->runEditor(perWindowFileName(globals().paths.resultsPath,
                                                      prefix + globals().activeCompareTag));
        });
    };
    on("ShowCompareResults", [openResults] { openResults(""); });
    on("ShowCompareResults_Single", [openResults] { openResults("Single"); });
}

} // namespace pv
