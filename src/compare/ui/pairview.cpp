#include "compare/ui/pairview.h"

#include "app/commandline.h"
#include "app/errorpolicy.h"
#include "app/optionswitches.h"
#include "app/programpaths.h"
#include "app/settingsseed.h"
#include "app/ui/formregistry.h"
#include "app/ui/mdiform1.h"
#include "compare/filelisting.h"
#include "compare/ui/dirlistbox.h"
#include "compare/ui/drivelistbox.h"
#include "compare/ui/filelistbox.h"
#include "compare/ui/pairviewcompare.h"
#include "platform/drives.h"
#include "platform/prompter.h"
#include "platform/runtimeerror.h"
#include "settings/itemlist.h"

#include <QAction>
#include <QCheckBox>
#include <QCloseEvent>
#include <QComboBox>
#include <QCompleter>
#include <QDir>
#include <QEvent>
#include <QFocusEvent>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalBlocker>
#include <QSplitter>
#include <QStatusBar>
#include <QVBoxLayout>

namespace pv {

namespace {

struct SideText {
    const char* drive;
    const char* dir;
    const char* files;
    const char* network;
    const char* driveKey;
    const char* dirKey;
    const char* label;
    const char* driveTooltip;
    const char* dirTooltip;
    ClickedControl dirClicked;
    ClickedControl fileClicked;
};

constexpr SideText kSides[2] = {
    {"Drive1", "Dir1", "FileOneList", "NetworkDrive1", "DRIVE1", "DIRONE", "file one:", "Drive 1",
     "Directory (Right mouse for Favorites)", ClickedControl::Dir1, ClickedControl::FileOne},
    {"Drive2", "Dir2", "FileTwoList", "NetworkDrive2", "DRIVE2", "DIRTWO", "file two:", "Drive 2",
     "Directory  (Right mouse for Favorites)", ClickedControl::Dir2, ClickedControl::FileTwo}};

QPushButton* button(QWidget* parent, const char* name, const char* caption, const char* tip) {
    auto* b = new QPushButton(QString::fromUtf8(caption), parent);
    b->setObjectName(name);
    b->setToolTip(QString::fromUtf8(tip));
    return b;
}

} // namespace

Pairview::Pairview(MDIForm1* frame, QWidget* parent) : QWidget(parent), m_frame(frame) {
    setObjectName("Pairview");
    FormRegistry::setTag(this, QString());
    setWindowTitle("Directory Comparisons");
    createControls();
    // The lists open on the user's home directory until the settings name another:
    // a first start shows the user's files, not the program's working files.
    std::string home = QDir::homePath().toStdString();
    for (Side side : {Side::Left, Side::Right}) {
        Pane& p = m_panes[index(side)];
        skipOnError([&] { p.drive->setDrive(driveOfPath(home, mountedDrives())); });
        skipOnError([&] { p.dir->setPath(home); });
        skipOnError([&] { p.files->setPath(home); });
    }
    for (Side side : {Side::Left, Side::Right})
        connectPane(side);
    connectCompareControls();
    connectListControls();
    connectScriptControls();
    if (m_frame) {
        connect(findChild<QPushButton*>("ShowINI"), &QPushButton::clicked, this,
                [this] { m_frame->ShowINI_Click(this); });
        connect(findChild<QPushButton*>("OpenByAssociation"), &QPushButton::clicked, this,
                [this] { m_frame->OpenByAssociation_Click(this); });
    }
}

QString Pairview::tag() const { return FormRegistry::tagOf(this); }

std::string Pairview::section() const { return "LASTFILE" + tag().trimmed().toStdString(); }

void Pairview::writeSetting(const char* key, const std::string& value) const {
    programSettings().write(section(), key, value);
}

void Pairview::createControls() {
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(6, 6, 6, 0);
    auto* panes = new QHBoxLayout;
    createPane(Side::Left);
    createPane(Side::Right);
    for (Side side : {Side::Left, Side::Right}) {
        Pane& p = m_panes[index(side)];
        auto* column = new QVBoxLayout;
        column->addWidget(p.drive);
        column->addWidget(p.network);
        auto* split = new QSplitter(Qt::Vertical, this);
        split->addWidget(p.dir);
        split->addWidget(p.files);
        split->setStretchFactor(0, 2);
        split->setStretchFactor(1, 3);
        column->addWidget(split, 1);
        panes->addLayout(column, 1);
    }
    layout->addLayout(panes, 1);

    auto* shared = new QHBoxLayout;
    auto* patternLabel = new QLabel("File Pattern Filter", this);
    patternLabel->setObjectName("ListPatternsLabel");
    m_filePatternCombo = new QComboBox(this);
    m_filePatternCombo->setObjectName("FilePatternCombo");
    m_filePatternCombo->setEditable(true);
    m_filePatternCombo->setToolTip("File pattern filer list ");
    m_filePatternCombo->addItems({"*.*", "*.asp", "*.cls", "*.dll", "*.frm", "*.inc", "*.ini",
                                  "*.ini", "*.txt"});
    m_filePatternCombo->setEditText("----");
    m_editorList = new QComboBox(this);
    m_editorList->setObjectName("EditorList");
    m_editorList->setEditable(true);
    m_editorList->addItems({"-", "Notepad.exe", "Write.exe"});
    m_editorList->setEditText("----");
    m_editorList->setToolTip("Editor used to open files");
    patternLabel->setBuddy(m_filePatternCombo);
    shared->addWidget(patternLabel);
    shared->addWidget(m_filePatternCombo, 2);
    auto* editorLabel = new QLabel("Editor", this);
    editorLabel->setBuddy(m_editorList);
    shared->addWidget(editorLabel);
    shared->addWidget(m_editorList, 2);
    layout->addLayout(shared);
    layout->addWidget(createCommandArea());

    m_statusBar = new QStatusBar(this);
    m_statusBar->setObjectName("StatusBar1");
    m_statusBar->setSizeGripEnabled(false);
    for (int i = 0; i < 6; ++i) {
        auto* panel = new QLabel(this);
        panel->setObjectName(QString("StatusBar1_Panel%1").arg(i + 1));
        panel->setFrameShape(QFrame::Panel);
        panel->setFrameShadow(QFrame::Sunken);
        panel->setMinimumWidth(i == 5 ? 160 : 90);
        m_statusBar->addPermanentWidget(panel, i == 5 ? 2 : 1);
        m_statusPanels[static_cast<size_t>(i)] = panel;
    }
    layout->addWidget(m_statusBar);

    connect(m_filePatternCombo, &QComboBox::activated, this, &Pairview::FilePatternCombo_Change);
    connect(m_editorList, &QComboBox::activated, this, &Pairview::EditorList_Change);
    m_filePatternCombo->installEventFilter(this);
    m_editorList->installEventFilter(this);
}

void Pairview::createPane(Side side) {
    const SideText& t = kSides[index(side)];
    Pane& p = m_panes[index(side)];
    p.drive = new DriveListBox(this);
    p.drive->setObjectName(t.drive);
    p.drive->setToolTip(t.driveTooltip);
    p.dir = new DirListBox(this);
    p.dir->setObjectName(t.dir);
    p.dir->setToolTip(t.dirTooltip);
    p.files = new FileListBox(this);
    p.files->setObjectName(t.files);
    p.files->setToolTip("File list (Right mouse click for Editor list)");
    p.network = new QComboBox(this);
    p.network->setObjectName(t.network);
    p.network->setEditable(true);
    // Completion is offered in a list under the box, never written into it: Enter
    // opens the path as typed (a path in another letter case is another path).
    p.network->completer()->setCompletionMode(QCompleter::PopupCompletion);
    p.network->completer()->setCaseSensitivity(Qt::CaseSensitive);
    p.network->setEditText("UNC paths from INI");
    p.network->setToolTip("UNC paths from INI");
    p.network->installEventFilter(this);
}

QWidget* Pairview::createCommandArea() {
    auto* area = new QWidget(this);
    auto* grid = new QGridLayout(area);
    grid->setContentsMargins(0, 0, 0, 0);

    auto* compare = button(area, "Compare_Button", "Compare",
                           "Compare the selected directories (see options)");
    auto* single = button(area, "CompareSingle", "Compare Single", "Compare selected files only");
    auto* output = new QGroupBox("Output Options", area);
    output->setObjectName("OutputOptions");
    auto* replace = new QRadioButton("Replace", output);
    replace->setObjectName("OutputOptionReplace");
    replace->setToolTip("Replace the results of the above action ");
    replace->setChecked(true);
    auto* append = new QRadioButton("Append", output);
    append->setObjectName("OutputOptionAppend");
    append->setToolTip("Append to the results of the above action ");
    auto* outputLayout = new QHBoxLayout(output);
    outputLayout->addWidget(replace);
    outputLayout->addWidget(append);

    auto* capture = new QComboBox(area);
    capture->setObjectName("CompareUtilityCommands");
    capture->setToolTip("Capture file control ");
    auto* fcLb = new QLineEdit("/lb100", area);
    fcLb->setObjectName("fc_lb");
    fcLb->setToolTip("/lbn Sets the n number of lines for the internal line buffer. The default "
                     "length of the line buffer is 100 lines. If the files that you are comparing "
                     "have more than this number of consecutive differing lines, fc cancels the "
                     "comparison. ");
    fcLb->setMaximumWidth(80);
    auto* fcN = new QLineEdit("/2", area);
    fcN->setObjectName("fc_nnnn");
    fcN->setToolTip("Specifies the number of consecutive lines that must match before fc "
                    "considers the files to be resynchronized. If the number of matching lines in "
                    "the files is less than nnnn, fc displays the matching lines as differences. "
                    "The default value is 2. ");
    fcN->setMaximumWidth(60);
    auto* stop = new QCheckBox("StopProcessing", area);
    stop->setObjectName("StopProcessing");

    auto* copy = button(area, "CopySelected", "Copy Selected",
                        "Copy the selected file between the two directories (fails on read-only)");
    auto* copyList = new QListWidget(area);
    copyList->setObjectName("CopyList");
    copyList->addItems({"left to right", "right to left"});
    copyList->setToolTip("Copy from left to right or right to left");
    copyList->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    copyList->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    copyList->setFixedHeight(copyList->sizeHintForRow(0) * 2 + 2 * copyList->frameWidth() + 2);
    copyList->setFixedWidth(copyList->sizeHintForColumn(0) + 2 * copyList->frameWidth() + 8);

    QWidget* rows[2][5] = {
        {compare, single, copy,
         button(area, "FindFile", "FindFile",
                "Find a given file within the directory (Uses the Dir command (see options))"),
         button(area, "FindText", "Find Text",
                "Find text within the selected directory by the filtered list (see options)")},
        {button(area, "CreateXcopy", "Create Xcopy",
                "Create a bat file to copy code between selected folders (left to right)"),
         button(area, "RunShell", "Run Shell", "Use the shell command to run the selected file."),
         button(area, "AddFavorite", "AddFavorite",
                "Add the Parent of the currently selected directory"),
         button(area, "ShowINI", "Show INI", "Show the product configuration file"),
         button(area, "OpenByAssociation", "Open by association",
                "Open the selected file with it's operating system associated program")}};
    for (int r = 0; r < 2; ++r)
        for (int c = 0; c < 5; ++c)
            grid->addWidget(rows[r][c], r, c);
    grid->addWidget(button(area, "ShowEditors", "Show Editors", "Show the list of editors"), 2, 0);
    grid->addWidget(button(area, "ShowFavorites", "ShowFavorites", "Show the list of favorites"),
                    2, 1);
    grid->addWidget(copyList, 0, 5, 2, 1);
    grid->addWidget(output, 0, 6, 2, 1);
    grid->addWidget(capture, 0, 7, 1, 2);
    grid->addWidget(fcLb, 1, 7);
    grid->addWidget(fcN, 1, 8);
    grid->addWidget(stop, 0, 9, 2, 1);
    grid->setColumnStretch(10, 1);
    return area;
}

void Pairview::connectPane(Side side) {
    Pane& p = m_panes[index(side)];
    connect(p.drive, &DriveListBox::changed, this, [this, side] { Drive_Change(side); });
    connect(p.dir, &DirListBox::changed, this, [this, side] { Dir_Change(side); });
    connect(p.dir, &DirListBox::clicked, this, [this, side] { Dir_Click(side); });
    connect(p.dir, &DirListBox::openFailed, this, [](const QString& description) {
        prompter().message("Error: " + description.toStdString());
    });
    connect(p.dir, &DirListBox::enterPressed, this, [this, side] { Dir_KeyPress(side); });
    connect(p.dir, &DirListBox::rightButtonPressed, this, [this, side](const QPoint& at) {
        globals().setClicked(kSides[index(side)].dirClicked);
        if (m_frame)
            if (QMenu* m = m_frame->menu("FavoritesList"))
                m->popup(at);
    });
    connect(p.files, &FileListBox::clicked, this, [this, side] { FileList_Click(side); });
    connect(p.files, &FileListBox::doubleClicked, this, [this, side] { FileList_DblClick(side); });
    connect(p.files, &FileListBox::enterPressed, this, [this, side] { FileList_DblClick(side); });
    connect(p.files, &FileListBox::rightButtonPressed, this, [this, side](const QPoint& at) {
        globals().setClicked(kSides[index(side)].fileClicked);
        if (m_frame)
            if (QMenu* m = m_frame->menu("OpenWith"))
                m->popup(at);
    });
    connect(p.network, &QComboBox::activated, this, [this, side] { NetworkDrive_Change(side); });
}

bool Pairview::eventFilter(QObject* watched, QEvent* event) {
    // A combo box applies its choice when it loses the focus too; opening its own
    // list (or any pop-up) is no loss of focus.
    if (event->type() == QEvent::FocusOut &&
        static_cast<QFocusEvent*>(event)->reason() != Qt::PopupFocusReason) {
        if (watched == m_filePatternCombo)
            FilePatternCombo_Change();
        else if (watched == m_editorList)
            EditorList_Change();
        else if (watched == m_panes[0].network)
            NetworkDrive_LostFocus(Side::Left);
        else if (watched == m_panes[1].network)
            NetworkDrive_LostFocus(Side::Right);
    }
    return QWidget::eventFilter(watched, event);
}

void Pairview::Drive_Change(Side side) {
    const SideText& t = kSides[index(side)];
    Pane& p = m_panes[index(side)];
    try {
        {
            // The explicit directory change below follows the drive write.
            QSignalBlocker block(p.dir);
            p.dir->setPath(p.drive->drive());
        }
        writeSetting(t.driveKey, p.drive->drive());
        Dir_Change(side);
    } catch (const std::exception& e) {
        prompter().message(std::string("Pairview::") + t.drive + "_Change\r\n" +
                           std::to_string(errorNumber(e)) + "\r\n" + errorDescription(e));
    }
}

void Pairview::Dir_Change(Side side) {
    Pane& p = m_panes[index(side)];
    try {
        p.files->setPath(p.dir->path());
    } catch (const std::exception& e) {
        prompter().message("Error: " + errorDescription(e));
        return;
    }
    writeSetting(kSides[index(side)].dirKey, p.dir->path());
}

void Pairview::Dir_Click(Side side) { globals().setClicked(kSides[index(side)].dirClicked); }

void Pairview::Dir_KeyPress(Side side) {
    Pane& p = m_panes[index(side)];
    skipOnError([&] {
        {
            QSignalBlocker block(p.dir);
            p.dir->setPath(p.dir->item(p.dir->listIndex()));
        }
        Dir_Click(side);
        Dir_Change(side);
    });
}

void Pairview::FileList_Click(Side side) {
    const SideText& t = kSides[index(side)];
    globals().setClicked(t.fileClicked);
    Set_StatusBar1("", "", "", "", t.label, files(side)->selectedName());
}

void Pairview::FileList_DblClick(Side side) {
    const SideText& t = kSides[index(side)];
    FileListBox* list = files(side);
    std::string name = list->selectedName();
    std::string full = joinPath(list->path(), name);
    skipOnError([&] {
        if (m_frame)
            m_frame->AddRecent(full);
    });
    skipOnError([&] { Set_StatusBar1("", "", "", "", t.label, name); });
    skipOnError([&] {
        // With associations on, the opener stores its own task number.
        if (m_frame)
            if (long task = m_frame->runEditor(full))
                lastTask = task;
    });
}

void Pairview::NetworkDrive_Change(Side side) {
    QComboBox* combo = networkDrive(side);
    if (combo->currentIndex() < 0 || combo->currentText() != combo->itemText(combo->currentIndex()))
        return; // typed text that names no list entry
    std::string item = combo->itemText(combo->currentIndex()).toStdString();
    m_networkFailed[index(side)].clear();
    try {
        dir(side)->setPath(item);
    } catch (const std::exception& e) {
        m_networkFailed[index(side)] = item;
        prompter().message(item + " \r\n" + errorDescription(e));
    }
}

void Pairview::NetworkDrive_LostFocus(Side side) {
    // The box loses the focus to the message about the path it just failed on:
    // that path is not tried, and reported, a second time.
    QComboBox* combo = networkDrive(side);
    if (!m_networkFailed[index(side)].empty() &&
        combo->currentText().toStdString() == m_networkFailed[index(side)])
        return;
    NetworkDrive_Change(side);
}

void Pairview::FilePatternCombo_Change() {
    // The item at the list index; a pattern typed into the box counts as well.
    QString text = m_filePatternCombo->currentText().trimmed();
    if (text.isEmpty() || text == "----")
        return;
    std::string pattern = text.toStdString();
    files(Side::Left)->setPattern(pattern);
    files(Side::Right)->setPattern(pattern);
    writeSetting("FILEPATTERN", pattern);
    for (Side side : {Side::Left, Side::Right})
        skipOnError([&] { files(side)->setPath(dir(side)->path()); });
}

void Pairview::EditorList_Change() {
    QString text = m_editorList->currentText();
    if (text.trimmed().isEmpty() || text == "----")
        return;
    programSettings().write("APPLICATION", "EDITOR", text.toStdString());
}

QString Pairview::statusPanel(int panel) const {
    return m_statusPanels.at(static_cast<size_t>(panel - 1))->text();
}

void Pairview::Form_Load() {
    if (m_frame)
        if (auto path = settingsPathFromCommandLine(joinArguments(m_frame->arguments())))
            globals().paths.settingsPath = *path;
    skipOnError([] { seedNewSettingsFile(programSettings()); });
    LoadINISettings();
    if (auto* copyList = findChild<QListWidget*>("CopyList"))
        copyList->setCurrentRow(0);
}

void Pairview::requestStop() {
    if (auto* stop = findChild<QCheckBox*>("StopProcessing"))
        stop->setChecked(true);
}

bool Pairview::stopInsteadOfClosing() {
    if (globals().runningCompares <= 0)
        return false;
    for (QWidget* form : FormRegistry::openForms())
        if (auto* window = qobject_cast<Pairview*>(form))
            window->requestStop();
    return true;
}

void Pairview::closeEvent(QCloseEvent* event) {
    if (stopInsteadOfClosing()) {
        event->ignore();
        return;
    }
    QWidget::closeEvent(event);
}

void Pairview::Form_Activate() { globals().activeCompareTag = tag().trimmed().toStdString(); }

} // namespace pv
