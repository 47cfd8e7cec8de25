#include "support/scripted_ports.h"

namespace vantrel::testing {
namespace {

MessageAnswer DefaultAnswer(const Message& message) {
    if (message.defaultAnswer) return *message.defaultAnswer;
    switch (message.buttons) {
        case MessageButtons::Ok:
        case MessageButtons::OkCancel:
            return MessageAnswer::Ok;
        case MessageButtons::YesNo:
        case MessageButtons::YesNoCancel:
            return MessageAnswer::Yes;
        case MessageButtons::RetryCancel:
            return MessageAnswer::Retry;
    }
    return MessageAnswer::Cancel;
}

}  // namespace

MessageAnswer ScriptedMessages::Ask(const Message& message) {
    shown.push_back(message);
    if (onMessage) onMessage(message);
    if (message.buttons == MessageButtons::Ok || answers.empty()) return DefaultAnswer(message);
    const MessageAnswer answer = answers.front();
    answers.pop_front();
    return answer;
}

void ScriptedMessages::ShowInformationMessage(const std::string& title, const std::string& text) {
    Ask({title, text, MessageIcon::Information, MessageButtons::Ok, {}});
}

MessageAnswer ScriptedMessages::Confirm(const Confirmation& confirmation) {
    confirmations.push_back(confirmation);
    return Ask({confirmation.title, confirmation.question, MessageIcon::Question, MessageButtons::YesNo, {}});
}

std::optional<std::string> ScriptedMessages::AskForText(const std::string& title, const std::string& prompt,
                                                        const std::string&) {
    shown.push_back({title, prompt, MessageIcon::None, MessageButtons::OkCancel, {}});
    return NextText();
}

std::optional<std::string> ScriptedMessages::AskForFile(const FileDialog& dialog) {
    shown.push_back({dialog.title, dialog.filter, MessageIcon::None, MessageButtons::OkCancel, {}});
    return NextText();
}

std::optional<std::string> ScriptedMessages::PickDirectory(const std::string& title,
                                                           const std::string& prompt,
                                                           const std::string& startFolder) {
    startFolders.push_back(startFolder);
    shown.push_back({title, prompt, MessageIcon::None, MessageButtons::OkCancel, {}});
    return NextText();
}

std::optional<std::string> ScriptedMessages::NextText() {
    if (texts.empty()) return std::nullopt;
    auto text = texts.front();
    texts.pop_front();
    return text;
}

}  // namespace vantrel::testing
