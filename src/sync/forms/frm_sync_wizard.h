#pragma once

#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QLabel>
#include <QPushButton>

#include "sync/csync_settings.h"

namespace vantrel {

// "Folder Synchronization Method": which of the eight methods a run uses. Accepted means: proceed.
class frmSyncWizard : public QDialog {
    Q_OBJECT
  public:
    struct Flags {
        bool promptForSyncMethod = true;
        bool syncSelectedOnly = false;
    };
    // `settings` must outlive the dialog; OK sets its method, which rewrites the table for every method but
    // Custom.
    frmSyncWizard(CSyncSettings& settings, Flags flags, const PerSide<std::string>& folders,
                  QWidget* parent = nullptr);

    // As the check boxes stand.
    Flags ChosenFlags() const;

  private:
    int ChosenMethod() const { return cboSyncMethod_->currentData().toInt(); }
    QWidget* MakeMethodFrame(const PerSide<std::string>& folders);
    void MethodChanged();

    CSyncSettings& settings_;
    QComboBox* cboSyncMethod_ = nullptr;
    QLabel* imgSyncMethod_ = nullptr;
    QLabel* lblSyncMethodDescription_ = nullptr;
    QPushButton* cmdCustomSettings_ = nullptr;
    QCheckBox* chkSyncSelectedOnly_ = nullptr;
    QCheckBox* chkPromptForSyncMethod_ = nullptr;
};

}  // namespace vantrel
