#include "editor/ui/frmnotepad.h"

#include "app/errorpolicy.h"
#include "app/ui/formregistry.h"
#include "app/ui/mdiform1.h"
#include "editor/editorfile.h"
#include "editor/editortexts.h"
#include "editor/ui/fileopen.h"
#include "editor/ui/frmfind.h"
#include "platform/clock.h"
#include "platform/prompter.h"
#include "status/ui/qtstatusbarview.h"

#include <QAction>
#include <QCloseEvent>
#include <QFontDatabase>
#include <QGuiApplication>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QStyle>
#include <QTextBlock>

namespace pv {

namespace {

char16_t foldQt(char16_t c) {
    return char16_t(QChar::toUpper(c));
}

// The text box as the search sees it; the caret is the selection's start.
class TextBoxTarget : public FindTarget {
  public:
    explicit TextBoxTarget(QPlainTextEdit& box) : m_box(box) {}
    std::u16string text() const override { return m_box.toPlainText().toStdU16String(); }
    int caret() const override { return m_box.textCursor().selectionStart(); }
    void select(int start, int length) override {
        QTextCursor c = m_box.textCursor();
        c.setPosition(start);
        c.setPosition(start + length, QTextCursor::KeepAnchor);
        m_box.setTextCursor(c);
    }

  private:
    QPlainTextEdit& m_box;
};

} // namespace

frmNotePad::frmNotePad(QWidget* parent)
    : QMainWindow(parent), m_slot(editorState().windows.TakeEditorSlot()) {
    setObjectName("frmNotePad");
    FormRegistry::setTag(this, QString::number(m_slot));
    m_text = new QPlainTextEdit(this);
    m_text->setObjectName("Text1");
    m_text->setLineWrapMode(QPlainTextEdit::NoWrap);
    m_text->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    // The text box fills the window at every size.
    setCentralWidget(m_text);
    connect(m_text->document(), &QTextDocument::contentsChange, this,
            [this](int, int removed, int added) {
                if (!m_loading && removed + added > 0)
                    editorState().windows.setModified(m_slot, true);
            });
    menuBar()->setNativeMenuBar(false);
    createMenus();
    resize(sizeForText(80, 25));
}

QSize frmNotePad::sizeForText(int columns, int lines) const {
    const QFontMetrics metrics(m_text->font());
    const int margins = 2 * (m_text->frameWidth() + int(m_text->document()->documentMargin()) + 1);
    const int scrollBar = style()->pixelMetric(QStyle::PM_ScrollBarExtent, nullptr, m_text);
    return {columns * metrics.horizontalAdvance(u'M') + margins + scrollBar,
            lines * metrics.lineSpacing() + margins + scrollBar + menuBar()->sizeHint().height()};
}

frmNotePad::~frmNotePad() {
    editorState().windows.release(m_slot);
}

std::string frmNotePad::caption() const {
    return windowTitle().toStdString();
}

void frmNotePad::setCaption(const std::string& caption) {
    setWindowTitle(QString::fromStdString(caption));
}

bool frmNotePad::isModified() const {
    return editorState().windows.isModified(m_slot);
}

std::string frmNotePad::text() const {
    // The raw text keeps non-breaking spaces (the plain text turns them into
    // blanks); block and line separators are the line ends.
    QString raw = m_text->document()->toRawText();
    raw.replace(QChar::ParagraphSeparator, '\n');
    raw.replace(QChar::LineSeparator, '\n');
    return raw.toStdString();
}

void frmNotePad::setLoadedText(const DecodedText& decoded) {
    m_loading = true;
    m_text->setPlainText(QString::fromStdString(decoded.text));
    m_loading = false;
    m_format = decoded.format;
    editorState().windows.setModified(m_slot, false);
}

void frmNotePad::showFormat() const {
    SetMdiStatusText(formatDescription(m_format), 1);
}

bool frmNotePad::saveTo(const std::string& path) {
    QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    TextFormat format = m_format;
    bool ok = true;
    try {
        saveEditorFile(path, text(), format);
    } catch (const std::exception& e) {
        ok = false;
        QGuiApplication::restoreOverrideCursor();
        prompter().message(errorDescription(e), kProgramTitle, MessageIcon::Exclamation);
    }
    if (!ok)
        return false;
    QGuiApplication::restoreOverrideCursor();
    m_format = format;
    showFormat();
    setCaption(path);
    editorState().windows.setModified(m_slot, false);
    return true;
}

QAction* frmNotePad::action(const QString& name) const {
    return FormRegistry::menuItem(this, name);
}

QAction* frmNotePad::arrayItem(const QString& arrayName, int index) const {
    return FormRegistry::menuArrayItem(this, arrayName, index);
}

QAction* frmNotePad::addItem(QMenu* menu, const char* name, const char* caption) {
    QAction* a = menu->addAction(QString::fromUtf8(caption));
    a->setObjectName(name);
    a->setParent(this);
    // Every editor window has the same keys; each acts on its own text. A key
    // only reaches an item that sits on a widget holding the focus: the menu
    // alone is never that, so the window carries the items too.
    a->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    addAction(a);
    return a;
}

QMenu* frmNotePad::addMenu(const char* name, const char* caption) {
    QMenu* m = menuBar()->addMenu(QString::fromUtf8(caption));
    m->setObjectName(QString(name) + "_menu");
    m->menuAction()->setObjectName(name);
    return m;
}

void frmNotePad::createMenus() {
    auto on = [this](QAction* a, auto handler) {
        connect(a, &QAction::triggered, this, handler);
        return a;
    };
    QMenu* file = addMenu("mnuFile", "&File");
    on(addItem(file, "mnuFileNew", "&New"), [] { mnuFileNew(); });
    on(addItem(file, "mnuFileOpen", "&Open..."), [] { ShowEditorOpenDialog(); });
    on(addItem(file, "mnuFileClose", "&Close"), [this] { FormRegistry::unload(this); });
    on(addItem(file, "mnuFileSave", "&Save"), [this] {
        mnuFileSave_Click();
    })->setShortcut(QKeySequence::Save);
    on(addItem(file, "mnuFileSaveAs", "Save &As..."), [this] { mnuFileSaveAs_Click(); });
    on(addItem(file, "mnuFileExit", "E&xit"), [] {
        if (MDIForm1* frame = mainWindow())
            frame->Exit_Click();
    });
    file->addSeparator();
    for (int i = 1; i <= 5; ++i) {
        const std::string caption = "RecentFile" + std::to_string(i);
        QAction* a = addItem(file, "mnuRecentFile", caption.c_str());
        a->setProperty("index", i);
        a->setVisible(false);
        on(a, [this, i] { mnuRecentFile_Click(i); });
    }
    connect(file, &QMenu::aboutToShow, this, &frmNotePad::updateRecentItems);

    QMenu* edit = addMenu("mnuEdit", "&Edit");
    on(addItem(edit, "mnuEditCut", "Cu&t"), [this] { m_text->cut(); });
    on(addItem(edit, "mnuEditCopy", "&Copy"), [this] { m_text->copy(); });
    on(addItem(edit, "mnuEditPaste", "&Paste"), [this] { m_text->paste(); });
    on(addItem(edit, "mnuEditDelete", "De&lete"), [this] { mnuEditDelete_Click(); });
    on(addItem(edit, "mnuEditSelectAll", "Select &All"), [this] { m_text->selectAll(); });
    on(addItem(edit, "mnuEditTime", "Time/&Date"), [this] {
        mnuEditTime_Click();
    })->setShortcut(Qt::Key_F5);

    QMenu* textMenu = addMenu("mnuText", "&Text");
    on(addItem(textMenu, "ToLowerCase", "To&LowerCase"), [this] { changeCase(false); });
    on(addItem(textMenu, "ToUpperCase", "To&UpperCase"), [this] { changeCase(true); });

    QMenu* search = addMenu("mnuSearch", "&Search");
    on(addItem(search, "mnuSearchFind", "&Find"), [this] {
        mnuSearchFind_Click();
    })->setShortcut(QKeySequence::Find);
    on(addItem(search, "mnuSearchFindNext", "Find &Next"), [this] {
        mnuSearchFindNext_Click();
    })->setShortcut(Qt::Key_F3);

    QMenu* options = addMenu("mnuOptions", "&Options");
    QAction* toolbar = addItem(options, "mnuOptionsToolbar", "&Toolbar");
    toolbar->setCheckable(true);
    on(toolbar, [this] { mnuOptionsToolbar_Click(); });

    QMenu* fonts = addMenu("mnuFont", "F&ont");
    const QStringList families = QFontDatabase::families();
    for (int i = 0; i < families.size(); ++i) {
        QAction* a = addItem(fonts, "mnuFontName", "");
        a->setText(families[i]);
        a->setProperty("index", i);
        on(a, [this, i] { mnuFontName_Click(i); });
    }

    QMenu* window = addMenu("mnuWindow", "&Window");
    on(addItem(window, "mnuWindowCascade", "&Cascade"), [] {
        if (MDIForm1* frame = mainWindow())
            frame->Cascade_Click();
    });
    on(addItem(window, "mnuWindowTile", "&Tile Horizontal"), [] {
        if (MDIForm1* frame = mainWindow())
            frame->Horizontal_Click();
    });
    on(addItem(window, "mnuWindowTileVertical", "Tile &Vertical"), [] {
        if (MDIForm1* frame = mainWindow())
            frame->Vertical_Click();
    });
    on(addItem(window, "mnuWindowArrange", "&Arrange Icons"), [this] { mnuWindowArrange_Click(); });
}

void frmNotePad::updateRecentItems() {
    MDIForm1* frame = mainWindow();
    for (int i = 1; i <= 5; ++i) {
        QAction* mine = arrayItem("mnuRecentFile", i);
        QAction* theirs = frame ? frame->arrayItem("Recent", i) : nullptr;
        const QString path = theirs ? theirs->text() : QString();
        mine->setVisible(!path.isEmpty());
        if (!path.isEmpty())
            mine->setText(path);
    }
}

void frmNotePad::mnuRecentFile_Click(int index) {
    MDIForm1* frame = mainWindow();
    QAction* theirs = frame ? frame->arrayItem("Recent", index) : nullptr;
    if (theirs && !theirs->text().isEmpty())
        LoadFileIntoEditor(theirs->text().toStdString());
}

void frmNotePad::mnuFileSave_Click() {
    const std::string name = isNeverSaved(caption()) ? AskSaveFileName("Untitled") : caption();
    if (!name.empty())
        saveTo(name);
}

void frmNotePad::mnuFileSaveAs_Click() {
    const std::string name = AskSaveFileName(isNeverSaved(caption()) ? "Untitled.txt" : caption());
    if (!name.empty())
        saveTo(name);
    RememberOpenedFile(name);
}

void frmNotePad::closeEvent(QCloseEvent* event) {
    if (isModified()) {
        const Answer answer =
            prompter().ask(closeQuestion(caption()), kMainCaption, MessageIcon::Exclamation);
        if (answer == Answer::Cancel) {
            event->ignore();
            return;
        }
        if (answer == Answer::Yes) {
            const std::string name =
                isNeverSaved(caption()) ? AskSaveFileName("untitled.txt") : caption();
            // A save that failed keeps the window, so the text is not lost.
            if (!name.empty() && !saveTo(name)) {
                event->ignore();
                return;
            }
        }
    }
    event->accept();
}

void frmNotePad::mnuEditDelete_Click() {
    QTextCursor c = m_text->textCursor();
    const TextRange r = deleteRange(m_text->toPlainText().toStdU16String(),
                                    {c.selectionStart(), c.selectionEnd() - c.selectionStart()});
    if (r.length == 0)
        return;
    c.setPosition(r.start);
    c.setPosition(r.start + r.length, QTextCursor::KeepAnchor);
    c.removeSelectedText();
    m_text->setTextCursor(c);
}

void frmNotePad::mnuEditTime_Click() {
    m_text->insertPlainText(QString::fromStdString(nowText()));
}

void frmNotePad::changeCase(bool upper) {
    QTextCursor c = m_text->textCursor();
    if (!c.hasSelection())
        return;
    const int start = c.selectionStart();
    const QString changed = upper ? c.selectedText().toUpper() : c.selectedText().toLower();
    c.insertText(changed);
    c.setPosition(start);
    c.setPosition(start + int(changed.size()), QTextCursor::KeepAnchor);
    m_text->setTextCursor(c);
}

void frmNotePad::FindInEditor() {
    TextBoxTarget target(*m_text);
    pv::FindInEditor(target, editorState().find, foldQt);
}

void frmNotePad::mnuSearchFind_Click() {
    frmFind dialog(*this, this);
    dialog.exec();
}

void frmNotePad::mnuSearchFindNext_Click() {
    if (editorState().find.findText.empty())
        mnuSearchFind_Click();
    else
        FindInEditor();
}

void frmNotePad::mnuOptionsToolbar_Click() {
    // The item has flipped its own mark; the main window's item follows it.
    if (MDIForm1* frame = mainWindow())
        if (QAction* theirs = frame->action("mnuOptionsToolbar")) {
            theirs->setCheckable(true);
            theirs->setChecked(action("mnuOptionsToolbar")->isChecked());
        }
}

void frmNotePad::mnuFontName_Click(int index) {
    QAction* item = arrayItem("mnuFontName", index);
    if (!item)
        return;
    QFont font = m_text->font();
    font.setFamily(item->text());
    m_text->setFont(font);
}

void frmNotePad::mnuWindowArrange_Click() {
    MDIForm1* frame = mainWindow();
    if (!frame)
        return;
    // The minimized windows line up along the bottom of the frame.
    QMdiArea* area = frame->mdiArea();
    int x = 0;
    for (QMdiSubWindow* sub : area->subWindowList())
        if (sub->isMinimized()) {
            sub->move(x, area->viewport()->height() - sub->height());
            x += sub->width();
        }
}

} // namespace pv
