#pragma once

#include <QDialog>

#include "filetools/forms/frm_file_diffs.h"

class QLabel;
class QPushButton;

namespace vantrel {

// "View File Difference - Options": asks for the two files and what counts as no difference, before they are
// compared.
class frmViewFileDiffOptions : public QDialog {
    Q_OBJECT

  public:
    // Browsing begins in `startFolders` where a box holds no path whose folder exists.
    frmViewFileDiffOptions(FileDiffsParts parts, PerSide<std::string> startFolders,
                           QWidget* parent = nullptr);

    // True when the user said OK: the options then hold what was chosen.
    bool ShowForm();

    PerSide<FilePathBox*> txtFile;
    PerSide<QPushButton*> cmdBrowse;
    QCheckBox* chkIgnoreWhiteSpace;
    QCheckBox* chkIgnoreCase;
    QCheckBox* chkShowOptionsDialog;
    QPushButton* cmdShowDiffs;
    QPushButton* cmdCancel;
    QPushButton* cmdHelp;

  private:
    void LayOut();
    void Browse(Side side);
    bool IsThere(const std::string& path, const char* unspecified, const char* missing);
    void cmdShowDiffs_Click();

    FileDiffsParts parts_;
    PerSide<std::string> startFolders_;
};

// Shows the differences of the two files of `parts.options`: the dialog first where the options say so, then
// the viewer, both modal over `parent`. `startFolders` are those of the window that calls.
void ShowFileDifferences(const FileDiffsParts& parts, const PerSide<std::string>& startFolders,
                         QWidget* parent);

}  // namespace vantrel
