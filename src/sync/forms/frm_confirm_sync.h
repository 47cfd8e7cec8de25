#pragma once

#include <QAbstractTableModel>
#include <QDialog>
#include <vector>

#include "sync/sync_plan.h"

namespace vantrel {

// The actions on the objects of one side, as the confirmation lists them: "File" and "Action". The plan must
// outlive it.
class PlanModel : public QAbstractTableModel {
    Q_OBJECT
  public:
    PlanModel(const SyncPlan& plan, Side side, QObject* parent = nullptr);

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

  private:
    std::vector<const PlannedAction*> actions_;
    Side side_;
};

// "Confirm Synchronization": everything that is about to be done. Accepted means: proceed. What it lists is
// the plan that is carried out, to the letter.
class frmConfirmSync : public QDialog {
    Q_OBJECT
  public:
    explicit frmConfirmSync(const SyncPlan& plan, QWidget* parent = nullptr);

  private:
    QWidget* MakeList(const SyncPlan& plan, Side side);
};

}  // namespace vantrel
