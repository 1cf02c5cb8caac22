#include "editor/ui/readonlyviewer.h"

#include "app/errorpolicy.h"
#include "app/ui/mdiform1.h"
#include "platform/prompter.h"
#include "platform/textfile.h"

#include <QFontDatabase>
#include <algorithm>
#include <filesystem>

namespace pv {

ReadOnlyViewer::ReadOnlyViewer(QWidget* parent) : QPlainTextEdit(parent) {
    setObjectName("frmNotePad");
    setReadOnly(true);
    setLineWrapMode(QPlainTextEdit::NoWrap);
    setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
}

ReadOnlyViewer* ReadOnlyViewer::open(MDIForm1& frame, const std::string& path) {
    std::string file = path;
    file.erase(std::remove(file.begin(), file.end(), '"'), file.end());
    std::string bytes;
    try {
        if (std::filesystem::is_directory(file))
            throw std::runtime_error("Is a directory");
        bytes = readFileBytes(file);
    } catch (const std::exception& e) {
        prompter().message("Can't open file: " + file + "\r\n" + errorDescription(e));
        return nullptr;
    }
    // CR LF is the program's line end; the text box wants plain line feeds.
    QString text = QString::fromUtf8(bytes.data(), qsizetype(bytes.size()));
    text.replace("\r\n", "\n");
    auto* viewer = new ReadOnlyViewer;
    viewer->setPlainText(text);
    viewer->setWindowTitle(QString::fromStdString(file).toUpper());
    frame.showChild(viewer);
    return viewer;
}

} // namespace pv
