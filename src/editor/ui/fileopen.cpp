#include "editor/ui/fileopen.h"

#include "app/errorpolicy.h"
#include "app/programpaths.h"
#include "app/ui/mdiform1.h"
#include "editor/editorfile.h"
#include "editor/editortexts.h"
#include "editor/openfilter.h"
#include "editor/ui/frmnotepad.h"
#include "platform/prompter.h"
#include "status/ui/qtstatusbarview.h"

#include <QAction>
#include <QGuiApplication>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QStatusBar>
#include <algorithm>
#include <filesystem>

namespace pv {

namespace {

frmNotePad* showEditor(frmNotePad* editor) {
    if (MDIForm1* frame = mainWindow()) {
        frame->showChildInside(editor, editor->size());
    } else {
        editor->setAttribute(Qt::WA_DeleteOnClose);
        editor->show();
    }
    return editor;
}

// The path a caption keeps: absolute, so that a save writes the same file
// whatever the current directory is by then.
std::string absolutePath(const std::string& path) {
    std::error_code ec;
    auto absolute = std::filesystem::absolute(path, ec);
    return ec ? path : absolute.string();
}

// Save and Save As follow the current child; the frame's status line says how
// the current document will be saved.
void followCurrentChild(MDIForm1& frame) {
    frmNotePad* editor = activeEditorWindow();
    for (const char* name : {"Save", "SaveAs"})
        if (QAction* a = frame.action(name))
            a->setEnabled(editor != nullptr);
    if (editor)
        editor->showFormat();
    else if (frame.statusBar()->isVisible())
        SetMdiStatusText("", 1);
}

} // namespace

EditorState& editorState() {
    static EditorState state;
    return state;
}

frmNotePad* mnuFileNew() {
    auto* editor = new frmNotePad;
    editor->setCaption(untitledCaption(editor->slot()));
    return showEditor(editor);
}

frmNotePad* LoadFileIntoEditor(const std::string& path) {
    std::string file = path;
    file.erase(std::remove(file.begin(), file.end(), '"'), file.end());
    DecodedText decoded;
    QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    try {
        decoded = loadEditorFile(file);
    } catch (const std::exception& e) {
        QGuiApplication::restoreOverrideCursor();
        prompter().message(kCantOpenFile + file + "\r\n" + errorDescription(e));
        return nullptr;
    }
    auto* editor = new frmNotePad;
    editor->setLoadedText(decoded);
    editor->setCaption(absolutePath(file));
    QGuiApplication::restoreOverrideCursor();
    return showEditor(editor);
}

void ShowEditorOpenDialog() {
    Settings settings = programSettings();
    const std::string current =
        settings.GetIniValue("LASTFILE" + globals().activeCompareTag, "FILEPATTERN", "*.*");
    const std::string list = settings.GetIniValue("APPLICATION", "FILEPATTERNLIST", "*.*");
    const OpenFilter filter = editorOpenFilter(list, current);
    const auto chosen = prompter().openFileName("Open", "", dialogFilter(filter));
    if (!chosen || chosen->empty())
        return;
    std::error_code ec;
    const auto size = std::filesystem::file_size(*chosen, ec);
    if (!ec && size >= kEditorOpenLimit) {
        prompter().message(kFileTooLarge);
        return;
    }
    if (LoadFileIntoEditor(*chosen))
        RememberOpenedFile(*chosen);
}

std::string AskSaveFileName(const std::string& defaultName) {
    return prompter().saveFileName("Save As", defaultName, "").value_or("");
}

bool SaveEditorFile(const std::string& path) {
    frmNotePad* editor = activeEditorWindow();
    return editor && editor->saveTo(path);
}

void RememberOpenedFile(const std::string& path) {
    MDIForm1* frame = mainWindow();
    if (!frame || path.empty())
        return;
    const QString shown = QString::fromStdString(path);
    for (int i = 1; QAction* item = frame->arrayItem("Recent", i); ++i)
        if (item->text() == shown)
            return;
    std::string recent = path;
    frame->AddRecent(recent);
}

frmNotePad* activeEditorWindow() {
    MDIForm1* frame = mainWindow();
    QMdiSubWindow* sub = frame ? frame->mdiArea()->currentSubWindow() : nullptr;
    return sub ? qobject_cast<frmNotePad*>(sub->widget()) : nullptr;
}

bool closeEditorWindows() {
    MDIForm1* frame = mainWindow();
    if (!frame)
        return true;
    bool allClosed = true;
    for (QMdiSubWindow* sub : frame->mdiArea()->subWindowList())
        if (qobject_cast<frmNotePad*>(sub->widget()) && sub->isVisible() && !sub->close())
            allClosed = false;
    return allClosed;
}

void connectEditorCommands(MDIForm1& frame) {
    auto bind = [&frame](const char* name, std::function<void()> command) {
        if (QAction* a = frame.action(name))
            QObject::connect(a, &QAction::triggered, &frame, [a, command] {
                dispatchCommand(a->text().remove('&').toStdString(), command);
            });
    };
    bind("New", [] { mnuFileNew(); });
    bind("Open", [] { ShowEditorOpenDialog(); });
    bind("Save", [] {
        if (frmNotePad* editor = activeEditorWindow())
            editor->mnuFileSave_Click();
    });
    bind("SaveAs", [] {
        if (frmNotePad* editor = activeEditorWindow())
            editor->mnuFileSaveAs_Click();
    });
    addFrameStatusBar(frame);
    // The frame is looked up anew: while it is being destroyed it is no longer
    // the main window, and its closing children must not reach it.
    QObject::connect(frame.mdiArea(), &QMdiArea::subWindowActivated, &frame, [](QMdiSubWindow*) {
        if (MDIForm1* current = mainWindow())
            followCurrentChild(*current);
    });
    followCurrentChild(frame);
}

} // namespace pv
