#pragma once

#include <QCheckBox>
#include <QDialog>
#include <QPushButton>

#include "sync/csync_settings.h"

namespace vantrel {

class SyncMethodChooser;

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
    QWidget* MakeMethodFrame(const PerSide<std::string>& folders);
    void MethodChanged();

    CSyncSettings& settings_;
    SyncMethodChooser* method_ = nullptr;
    QPushButton* cmdCustomSettings_ = nullptr;
    QCheckBox* chkSyncSelectedOnly_ = nullptr;
    QCheckBox* chkPromptForSyncMethod_ = nullptr;
};

}  // namespace vantrel
