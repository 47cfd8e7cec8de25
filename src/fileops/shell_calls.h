#pragma once

#include <string>

namespace vantrel {

// What the desktop, or the console in its place, does with one object on the user's command.
class ShellCallsPort {
  public:
    virtual ~ShellCallsPort() = default;
    // With its default program; false where there is none.
    virtual bool Open(const std::string& path) = 0;
    // With a program that the user picks.
    virtual void OpenWithChosenProgram(const std::string& path) = 0;
    virtual void ShowPropertyPage(const std::string& path) = 0;
};

// The property page of the object at `path`.
inline void ShowProperties(ShellCallsPort& shell, const std::string& path) {
    if (!path.empty()) shell.ShowPropertyPage(path);
}

// Opens the object with its default program; where there is none, the user picks one.
inline void OpenFile(ShellCallsPort& shell, const std::string& path) {
    if (!path.empty() && !shell.Open(path)) shell.OpenWithChosenProgram(path);
}

}  // namespace vantrel
