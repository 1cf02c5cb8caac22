// Pairview: compares two directories side by side.

#include "app/commandline.h"
#include "app/ui/instancechannel.h"
#include "app/ui/mdiform1.h"
#include "app/ui/qtprompter.h"
#include "editor/ui/fileopen.h"
#include "platform/programdir.h"

#include <QApplication>
#include <QDir>
#include <QIcon>

#include <cstdio>

int main(int argc, char** argv) {
    // The options that print and end are answered before a display is needed.
    const pv::StartRequest request =
        pv::startRequest(std::vector<std::string>(argv + 1, argv + argc));
    switch (request.kind) {
    case pv::StartRequest::Kind::Help:
    case pv::StartRequest::Kind::Version:
        std::fputs(request.text.c_str(), stdout);
        return 0;
    case pv::StartRequest::Kind::Error:
        std::fputs(request.text.c_str(), stderr);
        return 2;
    case pv::StartRequest::Kind::Run:
        break;
    }
    QString openFile;
    if (!request.openFile.empty()) {
        openFile = QDir::current().absoluteFilePath(QString::fromLocal8Bit(request.openFile.c_str()));
        // Handing over needs no display: a script may run where there is none.
        int coreArgc = 1;
        QCoreApplication core(coreArgc, argv);
        if (pv::handOverToRunningInstance(openFile))
            return 0;
    }
    QApplication app(argc, argv);
    QApplication::setApplicationName("Pairview");
    QApplication::setWindowIcon(QIcon(":/icons/pairview.svg"));
    pv::QtPrompter prompter;
    std::vector<std::string> args;
    for (int i = 1; i < argc; ++i)
        args.emplace_back(argv[i]);
    pv::MDIForm1 frame(args);
    frame.MDIForm_Load(pv::resolveProgramDirectory());
    // Reports that scripts hand over open here, in front of the other windows.
    pv::InstanceServer instance;
    QObject::connect(&instance, &pv::InstanceServer::fileRequested, &frame,
                     [&frame](const QString& path) {
                         pv::OpenReportInEditor(path.toStdString());
                         frame.raise();
                         frame.activateWindow();
                     });
    instance.listen();
    if (!openFile.isEmpty())
        pv::OpenReportInEditor(openFile.toStdString());
    return app.exec();
}
