#pragma once

#include <QAbstractTableModel>
#include <QDialog>
#include <vector>

#include "platform/locale/locale_formats.h"
#include "sync/plan_figures.h"
#include "sync/sync_plan.h"

namespace vantrel {

// The actions on the objects of one side, as the confirmation lists them: "File" and "Action". What replaces
// something newer, or deletes for good, is marked. The plan must outlive it.
class PlanModel : public QAbstractTableModel {
    Q_OBJECT
  public:
    PlanModel(const SyncPlan& plan, Side side, QObject* parent = nullptr);

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

  private:
    QVariant TipOf(const PlannedAction& action, const QString& text) const;

    std::vector<const PlannedAction*> actions_;
    Side side_;
};

// "Confirm Synchronization": everything that is about to be done, and under each list what that comes to.
// Accepted means: proceed. What it lists is the plan that is carried out, to the letter.
class frmConfirmSync : public QDialog {
    Q_OBJECT
  public:
    frmConfirmSync(const SyncPlan& plan, const LocaleFormats& locale, QWidget* parent = nullptr);

  private:
    QWidget* MakeList(const SyncPlan& plan, Side side);
    QWidget* MakeFigures(const PlanFigures& figures, Side side);

    const LocaleFormats& locale_;
};

}  // namespace vantrel
