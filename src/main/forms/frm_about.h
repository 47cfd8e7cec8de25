#pragma once

#include <QDialog>
#include <string>

#include "platform/files/support_files.h"

class QLabel;
class QPushButton;

namespace vantrel {

// "Kind: value" lines about the program, the system and its screens, for a report of a problem.
QString SystemInformation(const std::string& appVersion, const ProgramFolders& folders);

class frmAbout : public QDialog {
    Q_OBJECT

  public:
    frmAbout(const std::string& appVersion, const ProgramFolders& folders, QWidget* parent);

    QLabel* lblTitle;
    QLabel* lblVersion;
    QPushButton* cmdSysInfo;
    QPushButton* cmdOK;

  private:
    void ShowSystemInformation();

    QString information_;
};

}  // namespace vantrel
