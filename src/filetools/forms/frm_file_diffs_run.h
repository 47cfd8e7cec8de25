#pragma once

#include <QCoreApplication>
#include <QTimer>

#include "filetools/forms/file_path_box.h"
#include "filetools/forms/frm_file_diffs.h"

namespace vantrel {

// The window at work: no command starts, the pointer waits, ESC asks the work to end, and the paths stay as
// they are. A window that was to be closed meanwhile closes afterwards.
class frmFileDiffs::Run {
  public:
    explicit Run(frmFileDiffs& form) : form_(form), job_(form.busy_), wait_(form.busy_) {
        form_.parts_.tools.loop.ResetCancel();
        QCoreApplication::instance()->installEventFilter(&form_);
        SetReadOnly(true);
    }
    ~Run() {
        SetReadOnly(false);
        QCoreApplication::instance()->removeEventFilter(&form_);
        form_.parts_.tools.loop.ResetCancel();
        if (form_.closeAfterRun_) QTimer::singleShot(0, &form_, &QDialog::reject);
    }
    Run(const Run&) = delete;
    Run& operator=(const Run&) = delete;

  private:
    void SetReadOnly(bool on) {
        for (const Side side : kBothSides) form_.txtFile[side]->setReadOnly(on);
    }

    frmFileDiffs& form_;
    BusyState::Job job_;
    BusyState::Wait wait_;
};

}  // namespace vantrel
