#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "console_ports.h"
#include "shell/shell_operations.h"

namespace vantrel::cli {

// The state of a shell operation as the line on standard error.
class ConsoleShellProgress : public ShellProgress {
  public:
    ConsoleShellProgress(ConsoleProgress& line, EventLoopPort& loop) : line_(line), loop_(loop) {}

    void Begin(ShellOperation operation) override;
    void SetTotals(Totals totals) override;
    void Item(std::string_view path, std::string_view) override { line_.SetFileName(path); }
    void Advance(Totals done) override;
    bool CancelAsked() override;
    void End() override { line_.Unload(); }

  private:
    ConsoleProgress& line_;
    EventLoopPort& loop_;
    bool countsBytes_ = false;
};

// Nobody is asked in the middle: what fails is passed over, and told at the end by whoever runs the
// operation; nothing is overwritten.
class ConsoleShellQuestions : public ShellQuestions {
  public:
    explicit ConsoleShellQuestions(ConsoleMessages& messages) : messages_(messages) {}

    OverwriteAnswer AskOverwrite(const Overwrite& question) override;
    ErrorAnswer AskAboutError(const Trouble&) override { return ErrorAnswer::Skip; }

  private:
    ConsoleMessages& messages_;
};

// Whether somebody sees a question and can answer it.
bool CanAskOnTerminal();
// Writes `question` behind what stands on standard error and waits for a line. Only "y" and "yes" are a yes;
// a signal that cancels is none.
bool AskOnTerminal(std::string_view question);

// The console in an operation that may put questions before it begins. A box with OK and Cancel gets OK where
// all was agreed to beforehand; else the terminal is asked.
class AskingMessages : public MessagePort {
  public:
    AskingMessages(ConsoleMessages& console, bool agreed) : console_(console), agreed_(agreed) {}

    MessageAnswer Ask(const Message& message) override;
    void ShowInformationMessage(const std::string& title, const std::string& text) override {
        console_.ShowInformationMessage(title, text);
    }
    MessageAnswer Confirm(const Confirmation& confirmation) override {
        return console_.Confirm(confirmation);
    }
    std::optional<std::string> AskForText(const std::string& title, const std::string& prompt,
                                          const std::string& proposal) override {
        return console_.AskForText(title, prompt, proposal);
    }
    std::optional<std::string> AskForFile(const FileDialog& dialog) override {
        return console_.AskForFile(dialog);
    }
    std::optional<std::string> PickDirectory(const std::string& title, const std::string& prompt,
                                             const std::string& startFolder) override {
        return console_.PickDirectory(title, prompt, startFolder);
    }

    // Boxes that told of something wrong, so far.
    std::size_t Warnings() const { return warnings_; }

  private:
    ConsoleMessages& console_;
    bool agreed_;
    std::size_t warnings_ = 0;
};

}  // namespace vantrel::cli
