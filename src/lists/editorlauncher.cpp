#include "lists/editorlauncher.h"
#include "platform/textutil.h"

#include "app/errorpolicy.h"
#include "lists/launchrules.h"
#include "platform/prompter.h"
#include "platform/runtimeerror.h"
#include "settings/itemlist.h"

#include <algorithm>
#include <cctype>

namespace pv {

std::string EditorLauncher::editor() const {
    return m_settings.GetIniValueMin2("APPLICATION", "EDITOR", "Write.exe");
}

std::string EditorLauncher::connection() const {
    return m_settings.GetIniValue("ISQL", itemKey(m_host.chosenConnection()), "");
}

long EditorLauncher::runEditor(const std::string& path) {
    if (m_host.useAssociated()) {
        if (isExecutableType(path)) {
            prompter().message(kExecutableWarning);
            return m_host.start("Notepad.exe " + quoted(path));
        }
        m_host.openInActiveCompareWindow(quoted(path));
        return 0;
    }
    const std::string e = editor();
    if (toUpper(e) == "INTERNAL") {
        m_host.loadIntoEditor(quoted(path));
        return 0;
    }
    if (!isQueryTool(e))
        return m_host.start(e + " " + quoted(path));
    // A path that already carries quotes gives "" at each end; the pairs collapse.
    return m_host.start(collapseDoubledQuotes(queryToolCommand(e, connection(), quoted(path))));
}

long EditorLauncher::runEditorAssociation(const std::string& editorName, const std::string& path) {
    if (toUpper(editorName) == "INTERNAL") {
        m_host.loadIntoEditor(quoted(path));
        return 0;
    }
    if (isQueryTool(editorName))
        return m_host.start(queryToolCommand(editorName, connection(), path));
    return m_host.start(editorName + " " + path);
}

long EditorLauncher::GetRelatedEXEforFileType(const std::string& path) {
    long task = 0;
    skipOnError([&] {
        if (isExecutableType(path)) {
            prompter().message(associationExecutableWarning(path));
            task = m_host.start("Notepad.exe " + path);
            return;
        }
        const std::string program = m_host.findAssociatedProgram(path);
        if (program.empty()) {
            prompter().message(kNoAssociationText, kNoAssociationTitle, MessageIcon::Exclamation);
            return;
        }
        if (isQueryTool(program)) {
            task = m_host.start(queryToolCommand(program, connection(), path));
            return;
        }
        try {
            task = m_host.openAssociated(program, path);
        } catch (const std::exception& e) {
            prompter().message(openFailedText(errorNumber(e), errorDescription(e)),
                               kOpenFailedTitle, MessageIcon::Exclamation);
        }
    });
    return task;
}

void EditorLauncher::openWith(const std::string& caption, const std::string& file) {
    skipOnError([&] {
        if (toLower(caption) == "open by association")
            m_host.openInActiveCompareWindow(file);
        else if (toUpper(caption) == "INTERNAL")
            m_host.loadIntoEditor(file);
        else
            runEditorAssociation(caption, file);
    });
}

void EditorLauncher::showCaptureInQueryTool(const std::vector<std::string>& openWithCaptions,
                                            const std::string& capturePath) {
    bool found = false;
    for (const std::string& caption : openWithCaptions) {
        if (toUpper(caption).find("ISQL") == std::string::npos)
            continue;
        found = true;
        runEditorAssociation(caption, capturePath);
    }
    if (!found)
        prompter().message(kNoIsqlEditor);
}

} // namespace pv
