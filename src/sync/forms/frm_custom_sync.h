#pragma once

#include <QComboBox>
#include <QDialog>
#include <array>

#include "sync/csync_settings.h"
#include "sync/custom_sync_choices.h"

class QGridLayout;

namespace vantrel {

// The custom action table. OK writes the eight cells into the settings; the method code is not changed here.
class frmCustomSync : public QDialog {
    Q_OBJECT
  public:
    // `settings` must outlive the dialog.
    explicit frmCustomSync(CSyncSettings& settings, QWidget* parent = nullptr);

  private:
    QComboBox* Combo(SyncCell cell, Side side) const { return combos_[static_cast<std::size_t>(cell)][side]; }
    void AddRow(QGridLayout& grid, int row, SyncCell cell, ResultType type);
    void LoadCustomSyncCombos();
    void ComboClicked(SyncCell cell, Side side);
    void Store();

    CSyncSettings& settings_;
    std::array<PerSide<QComboBox*>, kSyncCellCount> combos_{};
};

}  // namespace vantrel
