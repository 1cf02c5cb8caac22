// The compare window's search and script commands: Find file, Find text, the copy
// script and Run shell. The commands themselves are plain logic (ScriptCommands);
// this reads the window's controls for them and keeps the started task number.

#include "app/errorpolicy.h"
#include "app/programpaths.h"
#include "app/ui/mdiform1.h"
#include "compare/ui/dirlistbox.h"
#include "compare/ui/drivelistbox.h"
#include "compare/ui/filelistbox.h"
#include "compare/ui/pairview.h"
#include "platform/process.h"
#include "scripts/scriptcommands.h"
#include "settings/settings.h"
#include "status/ui/qtstatusbarview.h"

#include <QAction>
#include <QPushButton>
#include <QRadioButton>

#include <filesystem>

namespace pv {

namespace {

ScriptPane scriptPane(const Pairview& w, Side side) {
    ScriptPane p;
    p.directory = w.dir(side)->path();
    FileListBox* list = w.files(side);
    p.fileListPath = list->path();
    p.drive = w.drive(side)->drive();
    p.items = list->names();
    if (list->listIndex() >= 0 && list->listIndex() < list->listCount())
        p.selectedFile = list->item(list->listIndex());
    return p;
}

// The breakout is the menu item's check mark; without the main window, the
// setting behind it.
bool breakoutChecked() {
    if (MDIForm1* frame = mainWindow())
        if (QAction* item = frame->action("mnu_Options_FindStr_file_type_breakout"))
            return item->isChecked();
    return IniBool(programSettings().read("FINDCONTROL", "FILETYPEBREAKOUT"));
}

ScriptWindow scriptWindow(const Pairview& w) {
    const ProgramGlobals& g = globals();
    ScriptWindow s;
    s.programDirectory = g.paths.programDirectory;
    s.tag = w.tag().trimmed().toStdString();
    s.left = scriptPane(w, Side::Left);
    s.right = scriptPane(w, Side::Right);
    s.rightClickedLast = g.rightSideClicked();
    auto* replace = w.findChild<QRadioButton*>("OutputOptionReplace");
    s.replaceOutput = !replace || replace->isChecked();
    s.breakout = breakoutChecked();
    s.findFileCapture = g.paths.findFilePath;
    s.findTextCapture = g.paths.findTextPath;
    s.xcopyScript = g.paths.xcopyPath;
    return s;
}

long startCommand(const std::string& commandLine) {
    return startDetached(commandLine);
}

std::filesystem::file_time_type writeTime(const std::string& path) {
    std::error_code ec;
    const auto time = std::filesystem::last_write_time(path, ec);
    return ec ? std::filesystem::file_time_type::min() : time;
}

} // namespace

void Pairview::connectScriptControls() {
    const std::pair<const char*, void (Pairview::*)()> buttons[] = {
        {"FindFile", &Pairview::FindFile_Click},
        {"FindText", &Pairview::FindText_Click},
        {"CreateXcopy", &Pairview::CreateXcopy_Click},
        {"RunShell", &Pairview::RunShell_Click}};
    for (const auto& [name, handler] : buttons)
        if (auto* b = findChild<QPushButton*>(name))
            connect(b, &QPushButton::clicked, this, [this, b, handler = handler] {
                dispatchCommand(b->text().toStdString(), [this, handler] { (this->*handler)(); });
            });
}

void Pairview::FindFile_Click() {
    Settings settings = programSettings();
    const ScriptWindow w = scriptWindow(*this);
    if (long task = ScriptCommands(settings, startCommand).FindFile(w)) {
        lastTask = task;
        // dir searches one directory unless /s is on: the status line says which.
        const std::string searched = (w.rightClickedLast ? w.right : w.left).fileListPath;
        std::string text = "Find File: results in " + perWindowFileName(w.findFileCapture, w.tag);
        if (!IniBool(settings.read("DIRCONTROL", "DIR_S")))
            text += " - searched " + searched + " only; Options > Dir > /s searches below it";
        SetMdiStatusText(text, 1);
    }
}

void Pairview::FindTheText() {
    Settings settings = programSettings();
    if (long task = ScriptCommands(settings, startCommand).FindTheText(scriptWindow(*this)))
        lastTask = task;
}

void Pairview::FindText_Click() {
    FindTheText();
}

void Pairview::CreateXcopy_Click() {
    Settings settings = programSettings();
    const ScriptWindow w = scriptWindow(*this);
    const auto before = writeTime(w.xcopyScript);
    ScriptCommands(settings, startCommand).CreateXcopy(w);
    // A script that could not be written has been reported in a message box.
    if (writeTime(w.xcopyScript) != before)
        SetMdiStatusText("Copy script written: " + w.xcopyScript + " - run it with pvcmd", 1);
}

void Pairview::RunShell_Click() {
    Settings settings = programSettings();
    if (long task = ScriptCommands(settings, startCommand).RunShell(scriptWindow(*this)))
        lastTask = task;
}

} // namespace pv
