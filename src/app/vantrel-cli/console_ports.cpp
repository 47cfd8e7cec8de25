#include "console_ports.h"

#include <sys/ioctl.h>
#include <unistd.h>
#include <csignal>

#include <array>
#include <cstdio>
#include <ctime>

#include "display_width.h"
#include "platform/names/names.h"

namespace vantrel::cli {

namespace {

volatile sig_atomic_t cancelRequested = 0;

constexpr std::array kCancelSignals = {SIGINT, SIGTERM, SIGHUP};
constexpr std::int64_t kPaintInterval = 100;  // milliseconds

extern "C" void RequestCancel(int) {
    cancelRequested = 1;
}

void SetHandlers(void (*handler)(int)) {
    struct sigaction action {};
    action.sa_handler = handler;
    action.sa_flags = static_cast<int>(SA_RESETHAND);
    for (const int number : kCancelSignals) {
        struct sigaction old {};
        sigaction(number, nullptr, &old);
        // A signal that the caller wants ignored, as under nohup, stays so.
        if (old.sa_handler != SIG_IGN) sigaction(number, &action, nullptr);
    }
}

std::int64_t CoarseMilliseconds() {
    timespec now{};
    clock_gettime(CLOCK_MONOTONIC_COARSE, &now);
    return std::int64_t{now.tv_sec} * 1000 + now.tv_nsec / 1'000'000;
}

int TerminalWidth() {
    winsize size{};
    return ioctl(STDERR_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0 ? size.ws_col : 80;
}

// Without the line ends of message boxes and without blank lines.
std::string AsLines(std::string_view text, std::string_view indent) {
    std::string lines;
    while (!text.empty()) {
        const std::size_t end = text.find('\n');
        std::string_view line = text.substr(0, end);
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
        while (!line.empty() && (line.back() == '\r' || line.back() == ' ')) line.remove_suffix(1);
        if (line.empty()) continue;
        if (!lines.empty()) lines.append("\n").append(indent);
        lines.append(line);
    }
    return lines;
}

MessageAnswer HarmlessAnswer(MessageButtons buttons) {
    switch (buttons) {
        case MessageButtons::Ok:
            return MessageAnswer::Ok;
        case MessageButtons::YesNo:
        case MessageButtons::YesNoCancel:
            return MessageAnswer::No;
        case MessageButtons::OkCancel:
        case MessageButtons::RetryCancel:
            break;
    }
    return MessageAnswer::Cancel;
}

}  // namespace

ConsoleProgress::ConsoleProgress() : terminal_(isatty(STDERR_FILENO) != 0) {
}

void ConsoleProgress::SetMessage(std::string_view text) {
    message_ = text.substr(0, text.find("  Press ESC"));
    message_ = message_.substr(0, message_.find(". Press ESC"));
    while (message_.ends_with('.')) message_.pop_back();
}

void ConsoleProgress::Unload() {
    Erase();
    shown_ = false;
}

void ConsoleProgress::PaintWhenDue() {
    if (!terminal_ || !shown_) return;
    const std::int64_t now = CoarseMilliseconds();
    if (now < nextPaint_) return;
    nextPaint_ = now + kPaintInterval;
    std::string line = message_;
    if (maximum_ > 0) line += " " + std::to_string(value_ * 100 / maximum_) + "%";
    if (!fileName_.empty()) line += "  " + DisplayName(fileName_);
    std::fprintf(stderr, "\r\033[K%s",
                 CutToWidth(line, static_cast<std::size_t>(TerminalWidth() - 1)).c_str());
    painted_ = true;
}

void ConsoleProgress::Erase() {
    if (!painted_) return;
    std::fputs("\r\033[K", stderr);
    painted_ = false;
}

void ConsoleMessages::Say(std::string_view text) {
    progress_.Erase();
    std::fprintf(stderr, "vantrel-cli: %s\n", AsLines(DisplayLines(text), "  ").c_str());
}

MessageAnswer ConsoleMessages::Ask(const Message& message) {
    Say(message.title + ": " + message.text);
    return HarmlessAnswer(message.buttons);
}

void ConsoleMessages::ShowInformationMessage(const std::string& title, const std::string& text) {
    Say(title + ": " + text);
}

MessageAnswer ConsoleMessages::Confirm(const Confirmation& confirmation) {
    Say(confirmation.title + ": " + confirmation.question);
    return MessageAnswer::Cancel;
}

std::optional<std::string> ConsoleMessages::AskForText(const std::string&, const std::string&,
                                                       const std::string&) {
    return std::nullopt;
}

std::optional<std::string> ConsoleMessages::AskForFile(const FileDialog&) {
    return std::nullopt;
}

std::optional<std::string> ConsoleMessages::PickDirectory(const std::string&, const std::string&,
                                                          const std::string&) {
    return std::nullopt;
}

bool ConsoleLoop::CancelRequested() const {
    return cancelRequested != 0;
}

void ConsoleLoop::CatchSignals() {
    SetHandlers(RequestCancel);
}

void ConsoleLoop::LeaveSignals() {
    SetHandlers(SIG_DFL);
}

}  // namespace vantrel::cli
