#pragma once

#include <QPointer>
#include <QStringList>
#include <QWidget>
#include <cstdint>
#include <functional>

#include "platform/ports.h"

namespace vantrel {

// The message port on message boxes and dialogs. Each one is modal: it stands over the modal window that is
// open, otherwise over the parent window, and shows the ordinary pointer while it does.
class QtMessages : public MessagePort {
  public:
    // Shows the shared confirmation dialog; set by the owner of its window. Until it is set a confirmation is
    // a plain question with Yes and No.
    std::function<MessageAnswer(const Confirmation&)> showConfirmation;

    void SetParentWindow(QWidget* window) { parent_ = window; }

    MessageAnswer Ask(const Message& message) override;
    void ShowInformationMessage(const std::string& title, const std::string& text) override;
    MessageAnswer Confirm(const Confirmation& confirmation) override;
    std::optional<std::string> AskForText(const std::string& title, const std::string& prompt,
                                          const std::string& proposal) override;
    std::optional<std::string> AskForFile(const FileDialog& dialog) override;
    // Without a trailing "/", except for "/" itself.
    std::optional<std::string> PickDirectory(const std::string& title, const std::string& prompt,
                                             const std::string& startFolder) override;

  private:
    QWidget* Owner() const;

    QPointer<QWidget> parent_;
};

// Qt's name filters for a filter text, which holds pairs of a description and its patterns:
// "Filter List Files (*.lst)|*.lst" or "Pictures|*.png;*.jpg|All Files (*.*)|*.*".
QStringList NameFilters(std::string_view filter);

// The event loop of this thread. Input passes during a job, so that ESC works; what must not start in between
// is kept off by the busy state. A handler may itself run a job that yields.
class QtEventLoop : public EventLoopPort {
  public:
    void Yield() override;
    bool CancelRequested() const override { return cancelRequested_; }
    void ResetCancel() override { cancelRequested_ = false; }

    void RequestCancel() { cancelRequested_ = true; }
    // Lets events through at once, also within the 15 milliseconds.
    void YieldNow();

  private:
    std::int64_t lastTurn_ = 0;  // milliseconds of the coarse monotonic clock
    bool cancelRequested_ = false;
};

}  // namespace vantrel
