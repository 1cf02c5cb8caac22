#pragma once
// An editor window: one document in a text box, with its own menus, inside the
// main frame. Its tag is its slot in the table of editor windows; its caption is
// "Untitled:" + slot until it is loaded or saved, then the file's path.

#include "editor/textcodec.h"

#include <QMainWindow>
#include <string>

class QAction;
class QMenu;
class QPlainTextEdit;

namespace pv {

class frmNotePad : public QMainWindow {
    Q_OBJECT
  public:
    // Takes a slot in the table; the slot is free again when the window is gone.
    explicit frmNotePad(QWidget* parent = nullptr);
    ~frmNotePad() override;

    int slot() const { return m_slot; }
    QPlainTextEdit* textBox() const { return m_text; }
    std::string caption() const;
    void setCaption(const std::string& caption);
    bool isModified() const;

    // The text as it is written to a file ("\n" line ends).
    std::string text() const;
    // Puts a loaded text in the box; the window is then unmodified.
    void setLoadedText(const DecodedText& decoded);
    const TextFormat& format() const { return m_format; }
    // Shows the encoding and line ends in the main window's status line.
    void showFormat() const;

    // Writes the text to a path; the caption becomes the path. A failure is
    // shown (exclamation) and changes nothing; returns false then.
    bool saveTo(const std::string& path);

    // The window size that shows `columns` x `lines` characters of the text.
    QSize sizeForText(int columns, int lines) const;

    QAction* action(const QString& name) const;
    QAction* arrayItem(const QString& arrayName, int index) const;

    void mnuFileSave_Click();
    void mnuFileSaveAs_Click();
    void mnuEditDelete_Click();
    void mnuEditTime_Click();
    void changeCase(bool upper);
    void mnuSearchFind_Click();
    void mnuSearchFindNext_Click();
    void mnuOptionsToolbar_Click();
    void mnuFontName_Click(int index);
    void mnuRecentFile_Click(int index);
    void mnuWindowArrange_Click();
    // Searches with the shared find state.
    void FindInEditor();

  protected:
    void closeEvent(QCloseEvent* event) override;

  private:
    void createMenus();
    QAction* addItem(QMenu* menu, const char* name, const char* caption);
    QMenu* addMenu(const char* name, const char* caption);
    void updateRecentItems();

    QPlainTextEdit* m_text;
    int m_slot;
    TextFormat m_format;
    bool m_loading = false;
};

} // namespace pv
