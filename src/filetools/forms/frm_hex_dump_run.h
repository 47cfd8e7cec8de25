#pragma once

#include <QCoreApplication>
#include <QProgressBar>

#include "filetools/forms/file_path_box.h"
#include "filetools/forms/frm_hex_dump.h"

namespace vantrel {

// The window at work: no command starts, the pointer waits, ESC asks the work to end, and the paths stay as
// they are. A window that was to be closed meanwhile closes afterwards.
class frmHexDump::Run {
  public:
    explicit Run(frmHexDump& form) : form_(form), job_(form.busy_), wait_(form.busy_) {
        form_.parts_.tools.loop.ResetCancel();
        QCoreApplication::instance()->installEventFilter(&form_);
        SetReadOnly(true);
    }
    ~Run() {
        SetReadOnly(false);
        form_.prgProgress->hide();
        QCoreApplication::instance()->removeEventFilter(&form_);
        form_.parts_.tools.loop.ResetCancel();
        if (form_.closeAfterRun_) QTimer::singleShot(0, &form_, &QDialog::reject);
    }
    Run(const Run&) = delete;
    Run& operator=(const Run&) = delete;

    // What shows how far the work has come.
    BytesDone Progress() {
        return [this](std::uint64_t done, std::uint64_t total) {
            constexpr double kSteps = 1000;
            const double share = total == 0 ? 1 : static_cast<double>(done) / static_cast<double>(total);
            form_.prgProgress->setValue(static_cast<int>(share * kSteps));
            form_.prgProgress->show();
        };
    }

  private:
    void SetReadOnly(bool on) {
        for (const Side side : kBothSides) form_.txtFile[side]->setReadOnly(on);
    }

    frmHexDump& form_;
    BusyState::Job job_;
    BusyState::Wait wait_;
};

}  // namespace vantrel
