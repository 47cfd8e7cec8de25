#pragma once

#include <QDialog>
#include <QTimer>
#include <cstdint>
#include <string>

#include "core/compare_ports.h"
#include "platform/files/file_system.h"
#include "platform/files/support_files.h"
#include "platform/forms/qt_ports.h"

class QLabel;
class QProgressBar;

namespace vantrel {

class AnimationView;

// The progress window of a comparison. It does not keep input from the other windows, the busy state does;
// but ESC pressed in any of them cancels while this window is open, and so does closing it. Cancelling asks
// the event loop and unloads the window; what is set afterwards is kept and not shown until the next Show().
class frmCompareProgress : public QDialog, public CompareProgress {
  public:
    frmCompareProgress(QtEventLoop& loop, const FileSystem& files, const ProgramFolders& folders,
                       QWidget* parent = nullptr);
    ~frmCompareProgress() override;

    void Show() override;
    void SetMessage(std::string_view text) override;
    void SetFileName(std::string_view text) override;
    // A maximum of 0 or less is unknown: the bar then only shows that something goes on.
    void SetBarRange(std::int64_t maximum) override;
    void SetBarValue(std::int64_t value) override;
    // An empty name stops the animation.
    void SetAnimation(std::string_view supportFile) override;
    void WaitUntilPainted() override;
    void Unload() override;

    void reject() override;

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

  private:
    void PaintSoon();
    void PaintValues();
    void PaintFileName();

    QtEventLoop& loop_;
    const FileSystem& files_;
    const ProgramFolders& folders_;

    AnimationView* animFolder_;
    QLabel* lblMessage_;
    QLabel* lblFileName_;
    QProgressBar* progressBar_;
    QTimer timer1_;

    std::string message_;
    std::string fileName_;
    std::string animation_;
    std::int64_t maximum_ = 0;
    std::int64_t value_ = 0;
    bool paintPending_ = false;
    bool filtering_ = false;
};

}  // namespace vantrel
