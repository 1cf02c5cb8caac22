#include "sidebyside/ui/sidebysidecommands.h"

#include "app/errorpolicy.h"
#include "app/ui/mdiform1.h"
#include "compare/ui/dirlistbox.h"
#include "compare/ui/filelistbox.h"
#include "compare/ui/pairview.h"
#include "platform/runtimeerror.h"
#include "platform/textutil.h"
#include "sidebyside/ui/frmsidebyside.h"

#include <QAction>

namespace pv {

void ShowCompareResults_SideBySide_Click() {
    MDIForm1* frame = mainWindow();
    Pairview* window = frame ? frame->activeCompareWindow() : nullptr;
    if (!window)
        return;
    std::string paths[2];
    for (Side side : {Side::Left, Side::Right}) {
        FileListBox* files = window->files(side);
        if (!files->hasSelection())
            throw RuntimeError(0, std::string(kSelectBothFiles));
        paths[int(side)] = joinPath(window->dir(side)->path(), files->selectedName());
    }
    frmSideBySide::open(paths[0], paths[1]);
}

void connectSideBySideCommands(MDIForm1& frame) {
    if (QAction* a = frame.action("ShowCompareResults_SideBySide"))
        QObject::connect(a, &QAction::triggered, &frame, [] {
            dispatchCommand("Compare_Results_Side_by_Side", ShowCompareResults_SideBySide_Click);
        });
}

} // namespace pv
