#pragma once

#include <deque>
#include <functional>
#include <string>
#include <vector>

#include "platform/clock.h"
#include "platform/ports.h"

namespace vantrel::testing {

// Plays answers and records every text in the order shown. Without a scripted answer a question gets its
// default button.
class ScriptedMessages : public MessagePort {
  public:
    std::vector<Message> shown;  // all of them: Ask, ShowInformationMessage and Confirm
    std::vector<Confirmation> confirmations;
    std::deque<MessageAnswer> answers;  // for Ask and Confirm, first to last
    std::deque<std::optional<std::string>>
        texts;                              // for the three dialogs that give a text; nothing: cancelled
    std::vector<std::string> startFolders;  // of the folder dialogs
    std::function<void(const Message&)> onMessage;  // to look at the state while a message stands

    MessageAnswer Ask(const Message& message) override;
    void ShowInformationMessage(const std::string& title, const std::string& text) override;
    MessageAnswer Confirm(const Confirmation& confirmation) override;
    std::optional<std::string> AskForText(const std::string& title, const std::string& prompt,
                                          const std::string& proposal) override;
    std::optional<std::string> AskForFile(const FileDialog& dialog) override;
    std::optional<std::string> PickDirectory(const std::string& title, const std::string& prompt,
                                             const std::string& startFolder) override;

    // "title: text" of message `index`, with CR LF as it stands.
    std::string Line(std::size_t index) const { return shown.at(index).title + ": " + shown.at(index).text; }

  private:
    std::optional<std::string> NextText();
};

// Counts the yields; asks to cancel at one of them.
class ScriptedLoop : public EventLoopPort {
  public:
    void Yield() override {
        ++yields;
        if (cancelAt != 0 && yields == cancelAt) cancelled = true;
        if (onYield) onYield();
    }
    bool CancelRequested() const override { return cancelled; }
    void ResetCancel() override { cancelled = false; }

    std::size_t yields = 0;
    std::size_t cancelAt = 0;  // number of the yield, from 1; 0: never
    bool cancelled = false;
    std::function<void()> onYield;
};

// A clock that moves when it is told to, and by `step` milliseconds at each look.
class FakeClock : public Clock {
  public:
    std::uint32_t GetTickCount() override { return ticks += step; }
    FileTime Now() override { return now; }
    void Sleep(std::uint32_t milliseconds) override {
        slept += milliseconds;
        ticks += milliseconds;
    }

    std::uint32_t ticks = 0;
    std::uint32_t step = 0;
    std::uint32_t slept = 0;
    FileTime now = FileTime::FromUnix(1'600'000'000, 0);
};

}  // namespace vantrel::testing
