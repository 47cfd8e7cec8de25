#pragma once

#include <QCoreApplication>
#include <QPointer>
#include <QTimer>

#include "dupes/forms/frm_find_duplicates.h"

namespace vantrel {

// The window at work: every control and menu is disabled, the pointer waits, and ESC asks the work to end. A
// window that was to be closed meanwhile closes afterwards.
class frmFindDuplicates::Run {
  public:
    explicit Run(frmFindDuplicates& form)
        : form_(form), focus_(form.focusWidget()), job_(form.busy_), wait_(form.busy_) {
        form_.parts_.tools.loop.ResetCancel();
        QCoreApplication::instance()->installEventFilter(&form_);
        form_.content_->setEnabled(false);
        form_.setFocus();
    }
    ~Run() {
        job_.End();
        form_.content_->setEnabled(true);
        if (focus_) focus_->setFocus();
        form_.SetBar(0, 0);
        form_.SetSearching(false);
        form_.ShowFigures();
        QCoreApplication::instance()->removeEventFilter(&form_);
        form_.parts_.tools.loop.ResetCancel();
        if (form_.closeAfterRun_) QTimer::singleShot(0, &form_, &QDialog::reject);
    }
    Run(const Run&) = delete;
    Run& operator=(const Run&) = delete;

  private:
    frmFindDuplicates& form_;
    QPointer<QWidget> focus_;
    BusyState::Job job_;
    BusyState::Wait wait_;
};

}  // namespace vantrel
