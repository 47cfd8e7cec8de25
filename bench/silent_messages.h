#pragma once

#include <cstdio>
#include <optional>
#include <string>

#include "platform/ports.h"

namespace vantrel {

// Asks nobody. A question, which no benchmark should come to, is printed.
class SilentMessages : public MessagePort {
  public:
    MessageAnswer Ask(const Message& message) override {
        std::fprintf(stderr, "%s: %s\n", message.title.c_str(), message.text.c_str());
        return MessageAnswer::Ok;
    }
    void ShowInformationMessage(const std::string&, const std::string&) override {}
    MessageAnswer Confirm(const Confirmation&) override { return MessageAnswer::Yes; }
    std::optional<std::string> AskForText(const std::string&, const std::string&,
                                          const std::string&) override {
        return {};
    }
    std::optional<std::string> AskForFile(const FileDialog&) override { return {}; }
    std::optional<std::string> PickDirectory(const std::string&, const std::string&,
                                             const std::string&) override {
        return {};
    }
};

}  // namespace vantrel
