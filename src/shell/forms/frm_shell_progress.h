#pragma once

#include <QDialog>
#include <QPointer>
#include <memory>
#include <string>

#include "platform/clock.h"
#include "shell/shell_operations.h"

class QLabel;
class QProgressBar;
class QPushButton;

namespace vantrel {

// The progress window of the shell operations: what is done, the object, a bar, and Cancel. ESC and closing
// cancel as well.
class frmShellProgress : public QDialog {
    Q_OBJECT
  public:
    explicit frmShellProgress(QWidget* parent = nullptr);

    void Show(ShellOperation operation);
    void Paint(const std::string& path, const std::string& target, ShellProgress::Totals done,
               ShellProgress::Totals totals);
    bool Cancelled() const { return cancelled_; }

    QLabel* lblOperation;
    QLabel* lblFileName;
    QLabel* lblTarget;
    QLabel* lblCount;
    QProgressBar* prgProgress;
    QPushButton* cmdCancel;

  public Q_SLOTS:
    void reject() override;

  protected:
    void closeEvent(QCloseEvent* event) override;

  private:
    bool cancelled_ = false;
};

// Keeps the values as they are set and shows the window once an operation has taken half a second.
class QtShellProgress : public ShellProgress {
  public:
    explicit QtShellProgress(Clock& clock) : clock_(clock) {}
    ~QtShellProgress() override;
    void SetParentWindow(QWidget* window) { parent_ = window; }
    frmShellProgress* Window() const { return window_.get(); }  // while it is shown

    void Begin(ShellOperation operation) override;
    void SetTotals(Totals totals) override { totals_ = totals; }
    void Item(std::string_view path, std::string_view target) override;
    void Advance(Totals done) override { done_ = done; }
    bool CancelAsked() override;
    void End() override;

  private:
    Clock& clock_;
    QPointer<QWidget> parent_;
    std::unique_ptr<frmShellProgress> window_;
    ShellOperation operation_ = ShellOperation::Copy;
    Totals totals_, done_;
    std::string path_, target_;
    bool running_ = false;
    std::uint32_t begun_ = 0, painted_ = 0;  // ticks
};

}  // namespace vantrel
