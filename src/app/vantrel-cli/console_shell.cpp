#include "console_shell.h"

#include <unistd.h>

#include <cstdio>

namespace vantrel::cli {

namespace {

std::string_view Doing(ShellOperation operation) {
    switch (operation) {
        case ShellOperation::Move:
            return "Moving";
        case ShellOperation::Copy:
            return "Copying";
        case ShellOperation::Rename:
            return "Renaming";
        case ShellOperation::Delete:
        case ShellOperation::Recycle:
            break;
    }
    return "Deleting";
}

}  // namespace

void ConsoleShellProgress::Begin(ShellOperation operation) {
    line_.SetMessage(Doing(operation));
    line_.SetFileName({});
    line_.SetBarRange(0);
    line_.Show();
}

void ConsoleShellProgress::SetTotals(Totals totals) {
    countsBytes_ = totals.bytes > 0;
    line_.SetBarValue(0);
    line_.SetBarRange(static_cast<std::int64_t>(countsBytes_ ? totals.bytes : totals.objects));
}

void ConsoleShellProgress::Advance(Totals done) {
    line_.SetBarValue(static_cast<std::int64_t>(countsBytes_ ? done.bytes : done.objects));
}

bool ConsoleShellProgress::CancelAsked() {
    loop_.Yield();
    return loop_.CancelRequested();
}

OverwriteAnswer ConsoleShellQuestions::AskOverwrite(const Overwrite& question) {
    messages_.Say("not overwritten: '" + question.target + "'");
    return OverwriteAnswer::No;
}

bool CanAskOnTerminal() {
    return isatty(STDIN_FILENO) != 0 && isatty(STDERR_FILENO) != 0;
}

bool AskOnTerminal(std::string_view question) {
    std::fprintf(stderr, "%s ", std::string(question).c_str());
    std::string answer;
    for (char letter = 0; read(STDIN_FILENO, &letter, 1) == 1 && letter != '\n';) answer += letter;
    return answer == "y" || answer == "Y" || answer == "yes" || answer == "Yes" || answer == "YES";
}

MessageAnswer AskingMessages::Ask(const Message& message) {
    if (message.icon == MessageIcon::Warning || message.icon == MessageIcon::Stop) ++warnings_;
    const MessageAnswer answer = console_.Ask(message);
    if (message.buttons != MessageButtons::OkCancel) return answer;
    const bool goOn = agreed_ || (CanAskOnTerminal() && AskOnTerminal("Continue? [y/N]"));
    return goOn ? MessageAnswer::Ok : MessageAnswer::Cancel;
}

}  // namespace vantrel::cli
