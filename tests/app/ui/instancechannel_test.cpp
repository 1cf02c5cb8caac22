#include "app/ui/instancechannel.h"
#include "editor/ui/fileopen.h"
#include "editor/ui/frmnotepad.h"
#include "support/envguard.h"
#include "support/qt/runningprogram.h"

#include <QElapsedTimer>
#include <QMdiArea>
#include <QProcess>
#include <QSignalSpy>
#include <QTest>

#include <future>

using namespace pv;

namespace {

QString pairviewProgram() {
    return QString(PV_BINARY_DIR) + "/pairview";
}

// A socket name of this test's own, so no running Pairview of the user answers.
std::string testSocketName() {
    return "pairview-test-" + std::to_string(QCoreApplication::applicationPid());
}

class ReportHandOver : public pvtest::RunningProgramTest {};

// A second program, started as a script starts it, hands its file to the
// running instance and ends; that instance opens it in its own editor, and the
// next report of the same file comes back into the same window.
TEST_F(ReportHandOver, SecondProgramHandsTheFileToTheRunningOne) {
    pvtest::EnvGuard name("PAIRVIEW_INSTANCE", testSocketName());
    start();
    InstanceServer server;
    ASSERT_TRUE(server.listen());
    QStringList handed;
    QObject::connect(&server, &InstanceServer::fileRequested, [&](const QString& path) {
        handed << path;
        OpenReportInEditor(path.toStdString());
    });
    const std::string report = home.write("Pairview.txt", "first\r\n");
    QProcess second;
    second.setWorkingDirectory(QString::fromStdString(home.str()));
    second.start(pairviewProgram(), {"--open", "Pairview.txt"});
    QElapsedTimer clock;
    clock.start();
    while (second.state() != QProcess::NotRunning && clock.elapsed() < 20000)
        QTest::qWait(20);
    ASSERT_EQ(second.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(second.exitCode(), 0) << second.readAllStandardError().toStdString();
    EXPECT_EQ(handed, QStringList{QString::fromStdString(report)}) << "the path, made absolute";
    frmNotePad* editor = activeEditorWindow();
    ASSERT_NE(editor, nullptr);
    EXPECT_EQ(editor->caption(), report);
    EXPECT_EQ(editor->text(), "first\n");

    home.write("Pairview.txt", "second\r\n");
    // The hand-over waits for the answer, which this thread's events give.
    auto handedOver = std::async(std::launch::async, [&] {
        return handOverToRunningInstance(QString::fromStdString(report));
    });
    QTRY_COMPARE(handed.size(), 2);
    EXPECT_TRUE(handedOver.get());
    EXPECT_EQ(activeEditorWindow(), editor) << "the same window reads the file again";
    EXPECT_EQ(editor->text(), "second\n");
    EXPECT_EQ(frame->mdiArea()->subWindowList().size(), 2) << "the compare window and one editor";
}

TEST_F(ReportHandOver, NobodyListeningIsNoHandOverAndAStaleSocketIsTakenOver) {
    pvtest::EnvGuard name("PAIRVIEW_INSTANCE", testSocketName());
    EXPECT_FALSE(handOverToRunningInstance("/tmp/x", 500));
    {
        InstanceServer first;
        ASSERT_TRUE(first.listen());
        InstanceServer second;
        EXPECT_FALSE(second.listen()) << "one instance answers at a time";
    }
    InstanceServer again;
    EXPECT_TRUE(again.listen());
}

} // namespace
