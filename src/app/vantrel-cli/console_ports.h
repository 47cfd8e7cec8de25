#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "core/compare_ports.h"
#include "platform/ports.h"

namespace vantrel::cli {

// The state of a running job as one line on standard error, where that is a terminal; otherwise nothing.
class ConsoleProgress : public CompareProgress {
  public:
    ConsoleProgress();
    ~ConsoleProgress() override { Erase(); }

    void Show() override { shown_ = true; }
    void SetMessage(std::string_view text) override;
    void SetFileName(std::string_view text) override { fileName_ = text; }
    void SetBarRange(std::int64_t maximum) override { maximum_ = maximum; }
    void SetBarValue(std::int64_t value) override { value_ = value; }
    void SetAnimation(std::string_view) override {}
    void WaitUntilPainted() override {}
    void Unload() override;

    // Costs a look at the clock, and paints at most ten times a second.
    void PaintWhenDue();
    // Makes room for other text.
    void Erase();

  private:
    bool terminal_;
    bool shown_ = false;
    bool painted_ = false;
    std::int64_t nextPaint_ = 0;  // milliseconds
    std::string message_, fileName_;
    std::int64_t maximum_ = 0, value_ = 0;
};

// Writes messages to standard error. A question that nobody is there to answer gets the answer that changes
// least: No, else Cancel.
class ConsoleMessages : public MessagePort {
  public:
    explicit ConsoleMessages(ConsoleProgress& progress) : progress_(progress) {}

    MessageAnswer Ask(const Message& message) override;
    void ShowInformationMessage(const std::string& title, const std::string& text) override;
    MessageAnswer Confirm(const Confirmation& confirmation) override;
    std::optional<std::string> AskForText(const std::string& title, const std::string& prompt,
                                          const std::string& proposal) override;
    std::optional<std::string> AskForFile(const FileDialog& dialog) override;
    std::optional<std::string> PickDirectory(const std::string& title, const std::string& prompt,
                                             const std::string& startFolder) override;

    // One line for the user that is no message of the engine.
    void Say(std::string_view text);

  private:
    ConsoleProgress& progress_;
};

// There are no events to let through; a cancel is SIGINT, SIGTERM or SIGHUP. A second signal ends the program
// at once.
class ConsoleLoop : public EventLoopPort {
  public:
    explicit ConsoleLoop(ConsoleProgress& progress) : progress_(progress) {}

    void Yield() override { progress_.PaintWhenDue(); }
    bool CancelRequested() const override;
    // The signal asked for the whole program to end, not for one job.
    void ResetCancel() override {}

    // From now on a signal cancels; from then on it ends the program as usual.
    static void CatchSignals();
    static void LeaveSignals();

  private:
    ConsoleProgress& progress_;
};

}  // namespace vantrel::cli
