#pragma once
// The Find dialog of the editor windows: the text to find, match case and the
// direction, kept in the find state that every editor window shares.

#include <QDialog>

class QCheckBox;
class QLineEdit;
class QPushButton;
class QRadioButton;

namespace pv {

class frmNotePad;

class frmFind : public QDialog {
    Q_OBJECT
  public:
    // Opens on the editor's selected text, or the last find text when nothing is
    // selected.
    frmFind(frmNotePad& editor, QWidget* parent = nullptr);

    QLineEdit* Text1() const { return m_text; }
    QCheckBox* chkCase() const { return m_case; }
    QRadioButton* optDirection(int index) const { return index == 1 ? m_down : m_up; }
    QPushButton* cmdFind() const { return m_find; }
    QPushButton* cmdcancel() const { return m_cancel; }

    void cmdFind_Click();
    void cmdcancel_Click();
    // Escape and the window's close button cancel as the Cancel button does.
    void reject() override { cmdcancel_Click(); }

  private:
    frmNotePad& m_editor;
    QLineEdit* m_text;
    QCheckBox* m_case;
    QRadioButton* m_up;
    QRadioButton* m_down;
    QPushButton* m_find;
    QPushButton* m_cancel;
};

} // namespace pv
