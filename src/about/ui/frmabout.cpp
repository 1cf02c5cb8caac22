#include "about/ui/frmabout.h"

#include "about/aboutbox.h"
#include "app/errorpolicy.h"
#include "app/programpaths.h"
#include "app/ui/formregistry.h"
#include "app/ui/mdiform1.h"
#include "platform/prompter.h"

#include <QAction>
#include <QApplication>
#include <QFrame>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QIcon>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace pv {

namespace {

QLabel* label(QWidget* parent, const char* name, const QString& text) {
    auto* l = new QLabel(text, parent);
    l->setObjectName(name);
    l->setWordWrap(true);
    return l;
}

} // namespace

frmAbout::frmAbout(QWidget* parent) : QWidget(parent) {
    setObjectName("frmAbout");
    setProperty("tag", QString());
    const QString title = QString::fromUtf8(kProgramTitle);
    setWindowTitle("About " + title);

    auto* icon = new QLabel(this);
    icon->setObjectName("picIcon");
    icon->setPixmap(QIcon(":/icons/pairview.svg").pixmap(48, 48));
    icon->setAlignment(Qt::AlignTop);
    auto* lblTitle = label(this, "lblTitle", title);
    QFont big = lblTitle->font();
    big.setPointSizeF(big.pointSizeF() * 1.5);
    big.setBold(true);
    lblTitle->setFont(big);
    auto* lblVersion = label(this, "lblVersion", QString::fromStdString(aboutVersionText()));
    auto* lblDescription = label(this, "lblDescription", kAboutDescription);
    auto* text = new QPlainTextEdit(this);
    text->setObjectName("Text1");
    text->setReadOnly(true);
    text->setPlainText(QString::fromStdString(documentationText(programSettings())));
    auto* line = new QFrame(this);
    line->setObjectName("Line1");
    line->setFrameShape(QFrame::HLine);
    line->setFrameShadow(QFrame::Sunken);
    auto* lblDisclaimer = label(this, "lblDisclaimer", kAboutDisclaimer);
    auto* ok = new QPushButton("OK", this);
    ok->setObjectName("cmdOK");
    ok->setDefault(true);
    auto* sysInfo = new QPushButton("&System Info...", this);
    sysInfo->setObjectName("cmdSysInfo");

    auto* grid = new QGridLayout(this);
    grid->addWidget(icon, 0, 0, 3, 1);
    grid->addWidget(lblTitle, 0, 1);
    grid->addWidget(lblVersion, 1, 1);
    grid->addWidget(lblDescription, 2, 1);
    grid->addWidget(text, 3, 1);
    grid->addWidget(line, 4, 0, 1, 3);
    grid->addWidget(lblDisclaimer, 5, 0, 2, 2);
    grid->addWidget(ok, 5, 2);
    grid->addWidget(sysInfo, 6, 2);
    grid->setRowStretch(3, 1);
    grid->setColumnStretch(1, 1);
    resize(560, 460);

    connect(ok, &QPushButton::clicked, this, &frmAbout::cmdOK_Click);
    connect(sysInfo, &QPushButton::clicked, this, &frmAbout::cmdSysInfo_Click);
}

void frmAbout::cmdOK_Click() {
    FormRegistry::unload(this);
}

void frmAbout::cmdSysInfo_Click() {
    StartSysInfo();
}

void mnu_helpAbout_Click(MDIForm1& frame) {
    frame.closeThisForm("frmAbout");
    auto* box = new frmAbout;
    // The box keeps its own size beside a maximized compare window.
    frame.showChildInside(box, box->size());
}

void connectAboutCommand(MDIForm1& frame) {
    if (QAction* a = frame.action("mnu_helpAbout"))
        QObject::connect(a, &QAction::triggered, &frame, [&frame] {
            dispatchCommand("About", [&frame] { mnu_helpAbout_Click(frame); });
        });
}

} // namespace pv
