// Pairview: compares two directories side by side.

#include "app/ui/mdiform1.h"
#include "app/ui/qtprompter.h"
#include "platform/programdir.h"

#include <QApplication>
#include <QIcon>

int main(int argc, char** argv) {
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
