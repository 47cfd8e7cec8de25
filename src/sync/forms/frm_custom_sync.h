#pragma once

#include <QDialog>

#include "sync/csync_settings.h"

namespace vantrel {

// The custom action table. OK writes the eight cells into the settings; the method code is not changed here.
class frmCustomSync : public QDialog {
    Q_OBJECT
  public:
    // `settings` must outlive the dialog.
    explicit frmCustomSync(CSyncSettings& settings, QWidget* parent = nullptr);
};

}  // namespace vantrel
