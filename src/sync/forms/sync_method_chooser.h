#pragma once

#include <QComboBox>
#include <QLabel>
#include <QObject>

#include "sync/csync_settings.h"

namespace vantrel {

// The combo of the methods with the picture and the description of the one that is chosen. Whoever makes it
// lays the three widgets out, and owns them then.
class SyncMethodChooser : public QObject {
    Q_OBJECT
  public:
    // `customHint` follows the description of the custom method.
    SyncMethodChooser(QString customHint, QObject* parent);

    SyncMethod Chosen() const { return static_cast<SyncMethod>(cboSyncMethod->currentData().toInt()); }
    // Selects the item of a method code; for a code that is none, the one that a fresh program has.
    void Choose(int method);

    QComboBox* cboSyncMethod;
    QLabel* imgSyncMethod;
    QLabel* lblSyncMethodDescription;

  Q_SIGNALS:
    void Changed();

  private:
    void ShowMethod();

    QString customHint_;
};

}  // namespace vantrel
