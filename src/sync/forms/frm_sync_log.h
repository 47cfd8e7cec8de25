#pragma once

#include <QDialog>
#include <QLineEdit>
#include <QTreeWidget>
#include <cstdint>

#include "core/toolbox.h"

namespace vantrel {

// "Synchronization History": the records of past runs, and how many of them are kept.
class frmSyncLog : public QDialog {
    Q_OBJECT
  public:
    // Trims an over-long history at once. `numSyncLogEntries` follows what the user enters; it must outlive
    // the dialog.
    frmSyncLog(const Toolbox& tools, std::int32_t& numSyncLogEntries, QWidget* parent = nullptr);

  private:
    void FillList();
    bool ValidateEntries();
    void cmdOK_Click();

    const Toolbox& tools_;
    std::int32_t& numSyncLogEntries_;
    QTreeWidget* lvwSyncHistory_ = nullptr;
    QLineEdit* txtNumEntries_ = nullptr;
};

}  // namespace vantrel
