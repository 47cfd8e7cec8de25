#pragma once

#include <QDialog>
#include <functional>

#include "core/side.h"
#include "core/toolbox.h"
#include "settings/path_history.h"

class QLineEdit;
class QListWidget;
class QPushButton;
class QRadioButton;

namespace vantrel {

// "Maintain Folder Lists": the recent folders of both path boxes, edited as copies that OK gives back whole.
class frmMaintainFolderLists : public QDialog {
    Q_OBJECT
  public:
    // `save` is SaveFoldersListsToIniAndCombos: it takes the lists as they are at OK.
    using Save = std::function<void(const PathHistory::Lists& lists)>;
    frmMaintainFolderLists(const Toolbox& tools, const PathHistory::Lists& lists, Save save,
                           QWidget* parent = nullptr);

    PathHistory::Lists Lists() const;

    PerSide<QRadioButton*> optFolderList;
    QListWidget* lstLeftFolderList;
    QListWidget* lstRightFolderList;
    QLineEdit* txtNewFolderName;
    QPushButton* cmdAdd;
    QPushButton* cmdDelete;
    QPushButton* cmdBrowseForFolder;
    QPushButton* OKButton;
    QPushButton* CancelButton;

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    QListWidget* ListOf(Side side) const {
        return side == Side::Left ? lstLeftFolderList : lstRightFolderList;
    }
    QListWidget* ListInView() const;
    void LayOut();
    void ShowList();
    void cmdAdd_Click();
    void cmdDelete_Click();
    void cmdBrowseForFolder_Click();
    void Tell(const char* title, const std::string& text);
    // `work` as what a button calls, reported as "frmMaintainFolderLists.<routine>".
    template <typename Work>
    auto Guarded(const char* routine, Work work) {
        return [this, name = std::string("frmMaintainFolderLists.") + routine, work] {
            tools_.reporter.GuardRun(name, work);
        };
    }

    Toolbox tools_;
    Save save_;
};

}  // namespace vantrel
