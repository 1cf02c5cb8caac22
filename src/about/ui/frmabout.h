#pragma once
// The about box: the program's icon, title and version, what it does, a warning,
// the documentation texts of the settings file, OK and "&System Info...".

#include <QWidget>

namespace pv {

class MDIForm1;

class frmAbout : public QWidget {
    Q_OBJECT
  public:
    explicit frmAbout(QWidget* parent = nullptr);

    void cmdOK_Click();
    void cmdSysInfo_Click();
};

// Help > About: closes an open about box and shows a new one.
void mnu_helpAbout_Click(MDIForm1& frame);
void connectAboutCommand(MDIForm1& frame);

} // namespace pv
