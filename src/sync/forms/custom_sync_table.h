#pragma once

#include <QComboBox>
#include <QWidget>
#include <array>

#include "sync/csync_settings.h"
#include "sync/custom_sync_choices.h"

namespace vantrel {

// The action table as four rows of two combos: cboNew(0) is the left one, cboNew(1) the right. A click into
// one keeps its partner on the other side in step. The settings are read and written when asked to only.
class CustomSyncTable : public QWidget {
    Q_OBJECT
  public:
    // `settings` must outlive the widget.
    explicit CustomSyncTable(CSyncSettings& settings, QWidget* parent = nullptr);

    void LoadCustomSyncCombos();
    void Store();
    QComboBox* Combo(SyncCell cell, Side side) const { return combos_[static_cast<std::size_t>(cell)][side]; }

  Q_SIGNALS:
    void Clicked();  // the combo and its partner show what was chosen

  private:
    struct Row;
    static const std::array<Row, kSyncCellCount> kRows;
    void AddRow(const Row& row, int number);
    void ComboClicked(SyncCell cell, Side side);

    CSyncSettings& settings_;
    std::array<PerSide<QComboBox*>, kSyncCellCount> combos_{};
};

}  // namespace vantrel
