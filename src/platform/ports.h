#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vantrel {

// The narrow ports through which the engine reaches the user. They are made once at start and handed down.
// Each has an implementation with windows, one for the console, and one for tests that plays answers and
// records every text.

enum class MessageIcon { None, Information, Warning, Stop, Question };
enum class MessageButtons { Ok, OkCancel, YesNo, YesNoCancel, RetryCancel };
// With the usual numbers of the buttons.
enum class MessageAnswer { Ok = 1, Cancel = 2, Retry = 4, Yes = 6, No = 7 };

struct Message {
    std::string title;
    std::string text;  // lines end in CR LF
    MessageIcon icon = MessageIcon::None;
    MessageButtons buttons = MessageButtons::Ok;
    std::optional<MessageAnswer> defaultAnswer = std::nullopt;  // the first button where there is none
};

// The shared confirmation dialog of file operations, with its details of one line for each name.
struct Confirmation {
    std::string title;
    std::string question;
    std::string operation;           // "Copy", "Move" or "Delete"
    std::vector<std::string> names;  // full paths
    std::string source;              // folder
    std::string target;              // folder; empty for "Delete"
};

struct FileDialog {
    std::string title;
    std::string filter;  // as in "Filter List Files (*.lst)|*.lst"
    bool save = false;
    std::string startFolder;
};

class MessagePort {
  public:
    virtual ~MessagePort() = default;
    virtual MessageAnswer Ask(const Message& message) = 0;
    virtual void ShowInformationMessage(const std::string& title, const std::string& text) = 0;
    virtual MessageAnswer Confirm(const Confirmation& confirmation) = 0;
    // Nothing where the user cancelled.
    virtual std::optional<std::string> AskForText(const std::string& title, const std::string& prompt,
                                                  const std::string& proposal) = 0;
    virtual std::optional<std::string> AskForFile(const FileDialog& dialog) = 0;
    virtual std::optional<std::string> PickDirectory(const std::string& title, const std::string& prompt,
                                                     const std::string& startFolder) = 0;
};

class EventLoopPort {
  public:
    virtual ~EventLoopPort() = default;
    // May be called for every file and every chunk: lets events through at most every 15 milliseconds and
    // costs nothing in between.
    virtual void Yield() = 0;
    // Whether the user asked to cancel the running job. Stays set until ResetCancel.
    virtual bool CancelRequested() const = 0;
    virtual void ResetCancel() = 0;
};

}  // namespace vantrel
