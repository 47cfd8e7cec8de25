#pragma once

#include <QDialog>
#include <QPointer>
#include <memory>
#include <string>

#include "platform/clock.h"
#include "platform/locale/locale_formats.h"
#include "shell/operation_pace.h"
#include "shell/shell_operations.h"

class QLabel;
class QProgressBar;
class QPushButton;

namespace vantrel {

// The progress window of the shell operations: what is done, the object, a bar, counts, speed and time left,
// and Cancel. ESC and closing cancel as well; Enter and the blank, which somebody may be typing for another
// window, do not.
class frmShellProgress : public QDialog {
    Q_OBJECT
  public:
    explicit frmShellProgress(const LocaleFormats& locale, QWidget* parent = nullptr);

    // An empty title is that of the operation.
    void Show(ShellOperation operation, const std::string& title);
    void Paint(const std::string& path, const std::string& target, ShellProgress::Totals done,
               ShellProgress::Totals totals, const std::string& pace);
    bool Cancelled() const { return cancelled_; }

    QLabel* lblOperation;
    QLabel* lblFileName;
    QLabel* lblTarget;
    QLabel* lblCount;
    QLabel* lblPace;
    QProgressBar* prgProgress;
    QPushButton* cmdCancel;

  public Q_SLOTS:
    void reject() override;

  protected:
    void closeEvent(QCloseEvent* event) override;

  private:
    const LocaleFormats& locale_;
    bool cancelled_ = false;
};

// Keeps the values as they are set and shows the window once an operation has taken half a second.
class QtShellProgress : public ShellProgress {
  public:
    QtShellProgress(Clock& clock, const LocaleFormats& locale) : clock_(clock), locale_(locale) {}
    ~QtShellProgress() override;
    // A window that takes no commands while an operation runs: the progress window is not modal over it.
    void SetParentWindow(QWidget* window) { parent_ = window; }
    frmShellProgress* Window() const { return window_.get(); }  // while it is shown

    void Begin(ShellOperation operation) override;
    void SetTitle(std::string_view title) override { title_ = title; }
    void SetTotals(Totals totals) override { totals_ = totals; }
    void Item(std::string_view path, std::string_view target) override;
    void Advance(Totals done) override { done_ = done; }
    bool CancelAsked() override;
    void End() override;

  private:
    Clock& clock_;
    const LocaleFormats& locale_;
    QPointer<QWidget> parent_;
    std::unique_ptr<frmShellProgress> window_;
    ShellOperation operation_ = ShellOperation::Copy;
    Totals totals_, done_;
    OperationPace pace_;
    std::string title_, path_, target_;
    bool running_ = false;
    std::uint32_t begun_ = 0, painted_ = 0;  // ticks
};

}  // namespace vantrel
