#pragma once
// A plain, read-only text window for files opened with the editor "INTERNAL",
// until the internal editor takes this place. It is a child of the main frame and
// carries the editor window's form name so that closing forms by name finds it.

#include <QPlainTextEdit>
#include <string>

namespace pv {

class MDIForm1;

class ReadOnlyViewer : public QPlainTextEdit {
    Q_OBJECT
  public:
    explicit ReadOnlyViewer(QWidget* parent = nullptr);

    // Opens a file in a new viewer window of the frame. Every double quote in the
    // path is removed first. A file that cannot be read is reported as
    // "Can't open file: " + path, CR LF, the error's description; returns nullptr then.
    static ReadOnlyViewer* open(MDIForm1& frame, const std::string& path);
};

} // namespace pv
