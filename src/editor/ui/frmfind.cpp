#include "editor/ui/frmfind.h"

#include "editor/ui/fileopen.h"
#include "editor/ui/frmnotepad.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

namespace pv {

frmFind::frmFind(frmNotePad& editor, QWidget* parent) : QDialog(parent), m_editor(editor) {
    setObjectName("frmFind");
    setWindowTitle("Find");
    FindState& state = editorState().find;

    m_text = new QLineEdit(this);
    m_text->setObjectName("Text1");
    auto* label = new QLabel("Fi&nd What:", this);
    label->setBuddy(m_text);
    m_case = new QCheckBox("Match &Case", this);
    m_case->setObjectName("chkCase");
    auto* direction = new QGroupBox("Direction", this);
    m_up = new QRadioButton("&Up", direction);
    m_down = new QRadioButton("&Down", direction);
    for (int i : {0, 1}) {
        optDirection(i)->setObjectName("optDirection");
        optDirection(i)->setProperty("index", i);
    }
    auto* directionLayout = new QHBoxLayout(direction);
    directionLayout->addWidget(m_up);
    directionLayout->addWidget(m_down);
    m_find = new QPushButton("&Find", this);
    m_find->setObjectName("cmdFind");
    m_find->setDefault(true);
    m_cancel = new QPushButton("Cancel", this);
    m_cancel->setObjectName("cmdcancel");

    auto* grid = new QGridLayout(this);
    grid->addWidget(label, 0, 0);
    grid->addWidget(m_text, 0, 1);
    grid->addWidget(m_find, 0, 2);
    grid->addWidget(m_case, 1, 0);
    grid->addWidget(direction, 1, 1);
    grid->addWidget(m_cancel, 1, 2);

    // Load: Find waits for a text; the direction shows the shared one.
    m_find->setEnabled(false);
    (state.findDirection == 1 ? m_down : m_up)->setChecked(true);

    connect(m_text, &QLineEdit::textChanged, this, [this](const QString& text) {
        editorState().find.findFresh = true;
        m_find->setEnabled(!text.isEmpty());
    });
    connect(m_case, &QCheckBox::toggled, this,
            [](bool on) { editorState().find.findMatchCase = on; });
    for (int i : {0, 1})
        connect(optDirection(i), &QRadioButton::clicked, this,
                [i] { editorState().find.findDirection = i; });
    connect(m_find, &QPushButton::clicked, this, &frmFind::cmdFind_Click);
    connect(m_cancel, &QPushButton::clicked, this, &frmFind::cmdcancel_Click);

    const QString selected = editor.textBox()->textCursor().selectedText();
    m_text->setText(selected.isEmpty() ? QString::fromStdU16String(state.findText) : selected);
    state.findFresh = true;
    m_case->setChecked(state.findMatchCase);
}

void frmFind::cmdFind_Click() {
    editorState().find.findText = m_text->text().toStdU16String();
    m_editor.FindInEditor();
}

void frmFind::cmdcancel_Click() {
    editorState().find.findText = m_text->text().toStdU16String();
    editorState().find.findMatchCase = m_case->isChecked();
    QDialog::reject();
}

} // namespace pv
