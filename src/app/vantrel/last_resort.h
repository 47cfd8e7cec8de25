#pragma once

#include <QApplication>
#include <functional>

namespace vantrel {

// Runs the program from its construction to its end and gives its exit status. What comes out of it is told
// on standard error, and in a message box where there is an application to show one; the status is then
// EXIT_FAILURE.
int RunGuarded(const std::function<int()>& program) noexcept;

// What comes out of the handling of an event past every guard of the windows is told in the same way, and the
// program goes on: behind it stands only the end of the process.
class GuardedApplication : public QApplication {
  public:
    using QApplication::QApplication;
    bool notify(QObject* receiver, QEvent* event) override;
};

}  // namespace vantrel
