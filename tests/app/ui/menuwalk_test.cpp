#include "app/ui/commandsfixture.h"
#include "lists/favorites.h"
#include "lists/launchrules.h"
#include "scripts/scriptcommands.h"

#include <QAction>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>

#include <set>

using pvtest::CommandsTest;

namespace {

// receivers() is protected. A derived class may name it, and the pointer to member
// it gives is QObject's own, called on the action as the QObject it is (casting the
// action to a class it is not would be undefined behaviour).
struct ReceiversAccess : QObject {
    using QObject::receivers;
};

int triggeredReceivers(QAction* a) {
    int (QObject::*receivers)(const char*) const = &ReceiversAccess::receivers;
    const QObject& object = *a;
    return (object.*receivers)(SIGNAL(triggered(bool)));
}

// The menu itself listens to its actions; a command is a receiver beyond that.
bool hasCommand(QAction* a) {
    QMenu plain;
    static const int menuOwn = triggeredReceivers(plain.addAction("x"));
    return triggeredReceivers(a) > menuOwn;
}

void collect(QMenu* menu, std::vector<QAction*>& out) {
    for (QAction* a : menu->actions()) {
        if (a->isSeparator())
            continue;
        if (a->menu())
            collect(a->menu(), out);
        else
            out.push_back(a);
    }
}

std::string nameOf(QAction* a) {
    std::string name = a->objectName().toStdString();
    if (a->property("index").isValid())
        name += "(" + std::to_string(a->property("index").toInt()) + ")";
    return name;
}

// What the search and script commands ask and answer when the walk cancels them.
const std::set<std::string> kScriptCommandTexts{"Enter File name / pattern to be scanned for",
                                                "Enter text to be scanned for",
                                                pv::kCancelledByOperator, pv::kSelectFileToRun};

class MenuWalk : public CommandsTest {
  protected:
    MenuWalk() : m_path("PATH", tools.str() + ":" + std::string(std::getenv("PATH"))) {
        // The desktop association tools answer "nothing", so no real program opens.
        pvtest::writeExecutable(tools, "xdg-mime", "exit 1\n");
        pvtest::writeRecorder(tools, "xdg-open", tools / "open.log");
    }

    std::vector<QAction*> items() {
        std::vector<QAction*> out;
        for (QAction* top : frame->menuBar()->actions())
            if (top->menu())
                collect(top->menu(), out);
        return out;
    }

    // Triggers every visible, enabled item but Exit; every message must name its
    // command (the dispatcher's caption) or be one of the launcher's own texts.
    void walk(const char* pass) {
        for (QAction* a : items()) {
            if (a->objectName() == "Exit" || !a->isVisible() || !a->isEnabled())
                continue;
            const std::size_t before = prompts.messages.size();
            const std::string caption = a->text().remove('&').toStdString();
            a->trigger();
            QApplication::processEvents();
            for (std::size_t i = before; i < prompts.messages.size(); ++i) {
                const std::string& m = prompts.messages[i];
                const bool explained = m.rfind(caption + "\r\n", 0) == 0 ||
                                       m == pv::kSelectFileLastClicked || m == pv::kNoIsqlEditor ||
                                       m == pv::kNoAssociationText || m == pv::kExecutableWarning ||
                                       m == pv::kNoFavoriteCandidate ||
                                       kScriptCommandTexts.count(m) ||
                                       // file dialogs, recorded beside the messages
                                       m.rfind("open: ", 0) == 0 || m.rfind("save: ", 0) == 0;
                EXPECT_TRUE(explained) << pass << ": " << nameOf(a) << " showed: " << m;
            }
        }
    }

  private:
    pvtest::EnvGuard m_path;
};

} // namespace

// An item either runs a command or is disabled; hidden array items too, for when
// the settings fill them.
TEST_F(MenuWalk, EveryItemWithACommandIsEnabledAndNoOtherIs) {
    start();
    std::vector<std::string> enabledWithout, disabledWith;
    for (QAction* a : items()) {
        const bool hidden = !a->isVisible();
        a->setVisible(true); // a hidden action reports itself disabled as well
        if (a->isEnabled() && !hasCommand(a))
            enabledWithout.push_back(nameOf(a));
        if (!a->isEnabled() && hasCommand(a))
            disabledWith.push_back(nameOf(a));
        a->setVisible(!hidden);
    }
    EXPECT_EQ(enabledWithout, std::vector<std::string>{});
    // Save and Save As wait for an editor window.
    EXPECT_EQ(disabledWith, (std::vector<std::string>{"Save", "SaveAs"}));
}

TEST_F(MenuWalk, EveryItemRunsWithAndWithoutACompareWindow) {
    write("RECENTFILES", "ITEM0", left + "/a.cpp");
    write("EDITORS", "ITEM0", editor);
    start();
    frame->Close_Click();
    QApplication::processEvents();
    ASSERT_EQ(frame->activeCompareWindow(), nullptr);
    walk("no compare window");

    frame.reset();
    QApplication::processEvents();
    start();
    walk("one compare window");

    frame->action("Exit")->trigger();
    QApplication::processEvents();
    EXPECT_FALSE(frame->isVisible());
}

TEST_F(MenuWalk, ScriptItemsReachTheActiveCompareWindow) {
    start();
    struct Row {
        const char* item;
        const char* button;
        std::vector<std::string> messages;
    } rows[] = {
        {"mnuFindFile",
         "FindFile",
         {"Enter File name / pattern to be scanned for", pv::kCancelledByOperator}},
        {"mnuFindText", "FindText", {"Enter text to be scanned for", pv::kCancelledByOperator}},
        {"mnuXcopy", "CreateXcopy", {}},
        {"mnu_Edit_RunShell", "RunShell", {pv::kSelectFileToRun}},
    };
    for (const Row& r : rows) {
        prompts.messages.clear();
        frame->action(r.item)->trigger();
        EXPECT_EQ(prompts.messages, r.messages) << r.item;
        EXPECT_TRUE(window->findChild<QPushButton*>(r.button)->isEnabled()) << r.button;
    }
    EXPECT_TRUE(std::filesystem::exists(home / "Xcopy_FILE.CMD"));
}
