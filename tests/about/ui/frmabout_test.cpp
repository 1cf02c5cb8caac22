#include "about/ui/frmabout.h"
#include "app/ui/formregistry.h"
#include "support/envguard.h"
#include "support/qt/runningprogram.h"

#include <QAction>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>

namespace {

class AboutTest : public pvtest::RunningProgramTest {
  protected:
    std::vector<pv::frmAbout*> boxes() const {
        std::vector<pv::frmAbout*> out;
        for (QWidget* f : pv::FormRegistry::openForms())
            if (auto* box = qobject_cast<pv::frmAbout*>(f))
                out.push_back(box);
        return out;
    }
};

} // namespace

TEST_F(AboutTest, HelpAboutShowsOneBoxWithVersionAndDocumentation) {
    write("DOCUMENTATION", "APPLICATION", "How the program is set up");
    start();
    frame->action("mnu_helpAbout")->trigger();
    frame->action("mnu_helpAbout")->trigger();
    QApplication::processEvents();
    ASSERT_EQ(boxes().size(), 1u);
    pv::frmAbout* box = boxes().front();
    EXPECT_TRUE(box->findChild<QLabel*>("lblVersion")->text().startsWith("Version "));
    EXPECT_TRUE(box->findChild<QPlainTextEdit*>("Text1")->toPlainText().startsWith(
        "Documentation:\n\nHow the program is set up\n\nempty"));

    pvtest::EnvGuard path("PATH", home.str());
    pvtest::EnvGuard none("PAIRVIEW_SYSINFO", "");
    box->findChild<QPushButton*>("cmdSysInfo")->click();
    EXPECT_EQ(prompts.messages,
              std::vector<std::string>{"System Information Is Unavailable At This Time"});
    box->findChild<QPushButton*>("cmdOK")->click();
    QApplication::processEvents();
    EXPECT_TRUE(boxes().empty());
}
