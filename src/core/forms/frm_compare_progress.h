#pragma once

#include <QDialog>
#include <QTimer>
#include <cstdint>
#include <string>

#include "core/compare_ports.h"
#include "platform/files/file_system.h"
#include "platform/files/support_files.h"
#include "platform/forms/qt_ports.h"
#include "platform/locale/locale_formats.h"

class QLabel;
class QProgressBar;
class QPushButton;

namespace vantrel {

class AnimationView;

// The progress window of a comparison. It does not keep input from the other windows, the busy state does;
// but ESC pressed in any of them cancels while this window is open, and so do its button and closing it;
// Enter and the blank do not. Cancelling asks the event loop and unloads the window; what is set afterwards
// is kept and not shown until the next Show().
class frmCompareProgress : public QDialog, public CompareProgress {
  public:
    frmCompareProgress(QtEventLoop& loop, const FileSystem& files, const ProgramFolders& folders,
                       const LocaleFormats& locale, QWidget* parent = nullptr);
    ~frmCompareProgress() override;

    void Show() override;
    void SetMessage(std::string_view text) override;
    void SetFileName(std::string_view text) override;
    // A maximum of 0 or less is unknown: the bar then only shows that something goes on.
    void SetBarRange(std::int64_t maximum) override;
    void SetBarValue(std::int64_t value) override;
    // Whether the next runs wait for the first painting: not where nobody asked for them.
    void SetWaits(bool waits) { waits_ = waits; }
    // An empty name stops the animation.
    void SetAnimation(std::string_view supportFile) override;
    // For the first painting since Show(), 250 milliseconds at most.
    void WaitUntilPainted() override;
    void Unload() override;

    void reject() override;

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

  private:
    void PaintSoon();
    void PaintValues();
    void PaintFileName();
    QString CountText() const;

    QtEventLoop& loop_;
    const FileSystem& files_;
    const ProgramFolders& folders_;
    const LocaleFormats& locale_;

    AnimationView* animFolder_;
    QLabel* lblMessage_;
    QLabel* lblFileName_;
    QLabel* lblCount_;
    QProgressBar* progressBar_;
    QPushButton* cmdCancel_;
    QTimer timer1_;

    std::string message_;
    std::string fileName_;
    std::string animation_;
    std::int64_t maximum_ = 0;
    std::int64_t value_ = 0;
    bool paintPending_ = false;
    bool painted_ = false;  // the window, since Show()
    bool waits_ = true;
    bool filtering_ = false;
};

}  // namespace vantrel
