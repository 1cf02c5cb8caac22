// Pairview: compares two directories side by side.

#include "app/commandline.h"
#include "app/ui/mdiform1.h"
#include "app/ui/qtprompter.h"
#include "platform/programdir.h"

#include <QApplication>
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
    QApplication app(argc, argv);
    QApplication::setApplicationName("Pairview");
    QApplication::setWindowIcon(QIcon(":/icons/pairview.svg"));
    pv::QtPrompter prompter;
    std::vector<std::string> args;
    for (int i = 1; i < argc; ++i)
        args.emplace_back(argv[i]);
    pv::MDIForm1 frame(args);
    frame.MDIForm_Load(pv::resolveProgramDirectory());
    return app.exec();
}
