#include "app/ui/formregistry.h"
#include "editor/ui/fileopen.h"
#include "editor/ui/frmfind.h"
#include "editor/ui/frmnotepad.h"
#include "platform/clock.h"
#include "support/fakeclock.h"
#include "support/qt/runningprogram.h"

#include <QAction>
#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QStatusBar>
#include <QTest>
#include <QTimer>

#include <filesystem>

using pv::frmNotePad;

namespace {

class EditorTest : public pvtest::RunningProgramTest {
  protected:
    void SetUp() override {
        RunningProgramTest::SetUp();
        start();
    }
    void TearDown() override {
        pv::editorState().find = {};
        RunningProgramTest::TearDown();
    }
    static std::vector<std::string> editorCaptions() {
        std::vector<std::string> out;
        for (QWidget* f : pv::FormRegistry::openForms())
            if (auto* e = qobject_cast<frmNotePad*>(f))
                out.push_back(e->caption());
        return out;
    }
    static void closeWindow(frmNotePad* e) {
        pv::FormRegistry::unload(e);
        QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QApplication::processEvents();
    }
    static void type(frmNotePad* e, const QString& text) { e->textBox()->insertPlainText(text); }
    static void caretAt(frmNotePad* e, int pos) {
        QTextCursor c = e->textBox()->textCursor();
        c.setPosition(pos);
        e->textBox()->setTextCursor(c);
    }
};

} // namespace

TEST_F(EditorTest, NewDocumentsTakeFreeSlotsAndSaveAsksForAName) {
    for (int i = 0; i < 3; ++i)
        frame->action("New")->trigger();
    EXPECT_EQ(editorCaptions(),
              (std::vector<std::string>{"Untitled:1", "Untitled:2", "Untitled:3"}));
    for (QWidget* f : pv::FormRegistry::openForms())
        if (auto* e = qobject_cast<frmNotePad*>(f); e && e->slot() == 2)
            closeWindow(e);
    frame->action("New")->trigger();
    frmNotePad* e = pv::activeEditorWindow();
    ASSERT_NE(e, nullptr);
    EXPECT_EQ(e->caption(), "Untitled:2");
    EXPECT_EQ(pv::FormRegistry::tagOf(e), "2");

    type(e, "one\ntwo");
    const std::string path = home / "new.txt";
    prompts.fileAnswers = {path};
    frame->action("Save")->trigger();
    EXPECT_EQ(prompts.messages.back(), "save: Save As");
    EXPECT_EQ(pvtest::readFile(path), "one\r\ntwo"); // a new document has CR LF
    EXPECT_FALSE(e->isModified());

    // Saved once, Save writes to the same path without asking.
    type(e, "!");
    frame->action("Save")->trigger();
    EXPECT_EQ(pvtest::readFile(path), "one\r\ntwo!");
    EXPECT_EQ(prompts.messages.size(), 1u);

    // The compare window active: nothing to save.
    frame->mdiArea()->setActiveSubWindow(qobject_cast<QMdiSubWindow*>(window->parentWidget()));
    EXPECT_FALSE(frame->action("Save")->isEnabled());
}

TEST_F(EditorTest, CloseAsksBeforeAChangedTextIsLost) {
    const std::string file = home.write("c.txt", "keep\r\n");
    frmNotePad* e = pv::LoadFileIntoEditor("\"" + file + "\"");
    ASSERT_NE(e, nullptr);
    closeWindow(e); // unchanged: no question
    EXPECT_TRUE(prompts.messages.empty());
    EXPECT_TRUE(editorCaptions().empty());

    e = pv::LoadFileIntoEditor(file);
    type(e, "x");
    struct Row {
        pv::Answer answer;
        std::size_t windowsLeft;
        const char* bytes;
    } rows[] = {{pv::Answer::Cancel, 1, "keep\r\n"},
                {pv::Answer::No, 0, "keep\r\n"},
                {pv::Answer::Yes, 0, "xkeep\r\n"}};
    for (const Row& r : rows) {
        if (editorCaptions().empty()) {
            e = pv::LoadFileIntoEditor(file);
            type(e, "x");
        }
        prompts.askAnswers = {r.answer};
        closeWindow(e);
        EXPECT_EQ(editorCaptions().size(), r.windowsLeft);
        EXPECT_EQ(pvtest::readFile(file), r.bytes);
    }
    EXPECT_EQ(prompts.messages[0],
              "The text in [" + file + "] has changed.\r\nDo you want to save the changes?");
    EXPECT_EQ(prompts.titles[0], "Pairview Utility ");
    EXPECT_EQ(prompts.icons[0], pv::MessageIcon::Exclamation);

    // A new document: Yes asks for a name; the window closes even when that is
    // cancelled.
    e = pv::mnuFileNew();
    type(e, "y");
    prompts.askAnswers = {pv::Answer::Yes};
    closeWindow(e);
    EXPECT_EQ(prompts.messages.back(), "save: Save As");
    EXPECT_TRUE(editorCaptions().empty());
}

TEST_F(EditorTest, FailedSaveKeepsTheWindow) {
    const std::string file = home.write(std::string(250, 'n'), "old");
    frmNotePad* e = pv::LoadFileIntoEditor(file);
    type(e, "new ");
    prompts.askAnswers = {pv::Answer::Yes};
    closeWindow(e);
    ASSERT_EQ(prompts.messages.size(), 2u); // the question, then the error
    EXPECT_EQ(prompts.icons[1], pv::MessageIcon::Exclamation);
    EXPECT_EQ(editorCaptions().size(), 1u);
    EXPECT_TRUE(e->isModified());
    prompts.askAnswers = {pv::Answer::No};
    closeWindow(e);
}

TEST_F(EditorTest, EditingKeepsTheFilesBytesAndLineEnds) {
    // Latin-1 bytes (a non-breaking space among them) and CR LF line ends.
    const std::string file = home.write("l1.txt", "caf\xE9\xA0z\r\nend\r\n");
    frmNotePad* e = pv::LoadFileIntoEditor(file);
    // The main window's status line says how the file will be written.
    QLabel* format = frame->statusBar()->findChild<QLabel*>("StatusBar1_Panel1");
    EXPECT_EQ(format->text(), "Latin-1, CR LF");
    caretAt(e, 6); // the CR LF after "z"
    e->action("mnuEditDelete")->trigger();
    e->textBox()->selectAll();
    e->action("ToUpperCase")->trigger();
    e->action("mnuFileSave")->trigger();
    EXPECT_EQ(pvtest::readFile(file), "CAF\xC9\xA0ZEND\r\n");

    const std::string lf = home.write("lf.txt", "A\nb\n");
    e = pv::LoadFileIntoEditor(lf);
    e->textBox()->selectAll();
    e->action("ToLowerCase")->trigger();
    e->action("mnuFileSave")->trigger();
    EXPECT_EQ(pvtest::readFile(lf), "a\nb\n");
    EXPECT_EQ(format->text(), "UTF-8, LF");
}

TEST_F(EditorTest, TimeDateAndFont) {
    pvtest::FakeClock clock;
    const pv::Clock* old = pv::setProgramClock(&clock);
    frmNotePad* e = pv::mnuFileNew();
    e->action("mnuEditTime")->trigger();
    EXPECT_EQ(e->text(), pv::nowText());
    pv::setProgramClock(old);

    // A font from the list, and the text stays unchanged.
    QAction* font = e->arrayItem("mnuFontName", 0);
    pv::editorState().windows.setModified(e->slot(), false);
    font->trigger();
    EXPECT_EQ(e->textBox()->font().family(), font->text());
    EXPECT_FALSE(e->isModified());
}

TEST_F(EditorTest, FindDialogRulesAndSearch) {
    frmNotePad* e = pv::mnuFileNew();
    type(e, "one Two two");
    e->textBox()->selectAll();
    {
        pv::frmFind find(*e);
        EXPECT_EQ(find.Text1()->text(), "one Two two"); // the selection
        EXPECT_TRUE(find.optDirection(1)->isChecked());
        find.Text1()->clear();
        EXPECT_FALSE(find.cmdFind()->isEnabled());
        find.Text1()->setText("two");
        find.chkCase()->setChecked(true);
        caretAt(e, 0);
        find.cmdFind()->click();
        EXPECT_EQ(e->textBox()->textCursor().selectionStart(), 8);
        find.optDirection(0)->click();
        find.cmdcancel()->click();
    }

    // Find Next goes on with the shared state: upwards, match case off.
    pv::editorState().find.findMatchCase = false;
    e->action("mnuSearchFindNext")->trigger();
    EXPECT_EQ(e->textBox()->textCursor().selectedText(), "Two");
    caretAt(e, 0); // nothing selected: the dialog shows the last text
    pv::frmFind find(*e);
    EXPECT_EQ(find.Text1()->text(), "two");
    EXPECT_TRUE(pv::editorState().find.findFresh);
    EXPECT_TRUE(find.optDirection(0)->isChecked());
}

TEST_F(EditorTest, OpenDialogOpensRemembersAndRefusesLargeFiles) {
    const std::string file = home.write("o.txt", "text");
    prompts.fileAnswers = {file};
    frame->action("Open")->trigger();
    EXPECT_EQ(editorCaptions(), std::vector<std::string>{file});
    EXPECT_EQ(value("RECENTFILES", "ITEM0"), file);

    std::filesystem::resize_file(home.write("big.txt"), 16u * 1024u * 1024u);
    prompts.fileAnswers = {home / "big.txt"};
    frame->action("Open")->trigger();
    EXPECT_EQ(prompts.messages.back(),
              "The file is too large to open with this tool. Change your editor to NotePad.exe");

    // A file that cannot be read opens no window.
    prompts.fileAnswers = {home.str()};
    frame->action("Open")->trigger();
    EXPECT_EQ(prompts.messages.back().rfind("Can't open file: " + home.str() + "\r\n", 0), 0u);
    EXPECT_EQ(editorCaptions().size(), 1u);
}

// The keys shown in the menus work from the text itself: each runs its command
// in the window that has the focus.
TEST_F(EditorTest, MenuKeysWorkInTheText) {
    pvtest::FakeClock clock;
    const pv::Clock* old = pv::setProgramClock(&clock);
    const std::string file = home.write("k.txt", "find me, find me\n");
    frmNotePad* e = pv::LoadFileIntoEditor(file);
    frame->show();
    QApplication::setActiveWindow(frame.get());
    ASSERT_TRUE(QTest::qWaitForWindowActive(frame.get()));
    QPlainTextEdit* text = e->textBox();
    text->setFocus();
    caretAt(e, 0);

    QTest::keyClick(text, Qt::Key_F5);
    EXPECT_EQ(e->text(), pv::nowText() + "find me, find me\n");
    QTest::keyClick(text, Qt::Key_S, Qt::ControlModifier);
    EXPECT_EQ(pvtest::readFile(file), pv::nowText() + "find me, find me\n");
    EXPECT_FALSE(e->isModified());

    pv::editorState().find.findText = u"find";
    caretAt(e, 0);
    QTest::keyClick(text, Qt::Key_F3);
    EXPECT_EQ(text->textCursor().selectionStart(), int(pv::nowText().size()));

    bool dialogShown = false;
    QTimer::singleShot(0, [&dialogShown] {
        if (QWidget* dialog = QApplication::activeModalWidget()) {
            dialogShown = qobject_cast<pv::frmFind*>(dialog) != nullptr;
            dialog->close();
        }
    });
    QTest::keyClick(text, Qt::Key_F, Qt::ControlModifier);
    EXPECT_TRUE(dialogShown);
    pv::setProgramClock(old);
}
