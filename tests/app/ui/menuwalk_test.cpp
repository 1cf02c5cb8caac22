#include "app/ui/commandsfixture.h"
#include "lists/launchrules.h"

#include <QAction>
#include <QMenu>
#include <QMenuBar>

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

// Items whose commands belong to other windows' work (list forms, internal editor,
// compare and results commands, about box). Each must still be safe to trigger;
// this list shrinks as those commands arrive.
const std::set<std::string> kCommandsFromOtherWindows{
    "New",
    "Open",
    "mnuCompare",
    "mnuCompare_Single",
    "FavoritesPage",
    "menuShowEditors",
    "menuShowISQLCons",
    "menuShowUNCPaths",
    "mnuFavorites",
    "mnu_isql",
    "mnu_FileAttributes",
    "ShowCompareResults",
    "ShowCompareResults_Single",
    "mnuOptionsToolbar",
    "mnu_helpAbout",
};

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
                                       m == pv::kNoAssociationText || m == pv::kExecutableWarning;
                EXPECT_TRUE(explained) << pass << ": " << nameOf(a) << " showed: " << m;
            }
        }
    }

  private:
    pvtest::EnvGuard m_path;
};

} // namespace

TEST_F(MenuWalk, EveryEnabledItemHasACommand) {
    start();
    std::vector<std::string> missing, disabledWithCommand;
    for (QAction* a : items()) {
        const std::string name = a->objectName().toStdString();
        // A hidden action reports itself disabled as well; hidden array items still
        // need their command for when the settings fill them.
        if (!a->isEnabled() && a->isVisible()) {
            if (hasCommand(a))
                disabledWithCommand.push_back(nameOf(a));
            continue;
        }
        if (!hasCommand(a) && !kCommandsFromOtherWindows.count(name))
            missing.push_back(nameOf(a));
    }
    EXPECT_EQ(missing, std::vector<std::string>{});
    EXPECT_EQ(disabledWithCommand, std::vector<std::string>{});
    for (const char* name : {"Save", "SaveAs", "mnuCompareResume"})
        EXPECT_FALSE(frame->action(name)->isEnabled()) << name;
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
