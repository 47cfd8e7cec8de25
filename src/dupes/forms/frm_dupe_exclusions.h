#pragma once

#include <QDialog>
#include <functional>
#include <string>
#include <vector>

#include "core/toolbox.h"
#include "dupes/cls_dupe_settings.h"

class QLineEdit;
class QListWidget;
class QPushButton;

namespace vantrel {

// "Dupes - File Exclusions": the patterns of names that a search leaves out. It works on a copy, which OK
// stores.
class frmDupeExclusions : public QDialog {
    Q_OBJECT
  public:
    // `save` writes the settings. All must outlive the dialog.
    frmDupeExclusions(const Toolbox& tools, clsDupeSettings settings, std::function<void()> save,
                      QWidget* parent = nullptr);

    QListWidget* lstFilesToExclude;
    QLineEdit* txtFileName;
    QPushButton* cmdAddFile;
    QPushButton* cmdRemoveFile;
    QPushButton* cmdOK;
    QPushButton* cmdCancel;

  private:
    void LayOut();
    void Wire();
    void ShowPattern(const std::string& pattern);
    void cmdAddFile_Click();
    void cmdRemoveFile_Click();
    void cmdOK_Click();

    const Toolbox& tools_;
    clsDupeSettings settings_;
    std::function<void()> save_;
    std::vector<std::string> patterns_;
};

}  // namespace vantrel
