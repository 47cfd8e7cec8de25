#pragma once

#include <QDialog>
#include <string>

#include "core/toolbox.h"

class QLineEdit;
class QLabel;
class QListWidget;
class QListWidgetItem;
class QPushButton;

namespace vantrel {

// "Create New Sub-Folder": asks for the name of a new folder in a folder that it shows. It only asks.
class frmCreateSubFolder : public QDialog {
    Q_OBJECT
  public:
    explicit frmCreateSubFolder(const Toolbox& tools, QWidget* parent = nullptr);

    // The name as it was typed, without the blanks around it; empty for no answer.
    std::string ShowForm(const std::string& parentPath);

    QLabel* Label1;
    QLineEdit* txtNewSubFolderName;
    // The folders on the way to the parent, each below the last, and the parent's own: what names are taken.
    QListWidget* Dir1;
    QPushButton* OKButton;
    QPushButton* CancelButton;

  private:
    void LayOut();
    void FillDir1();
    void StayAtParent();
    void TakeMoveBack();

    Toolbox tools_;
    std::string parentPath_;
    QListWidgetItem* parentItem_ = nullptr;
};

}  // namespace vantrel
