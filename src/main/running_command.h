#pragma once

#include <QObject>
#include <QPointer>
#include <QScopedValueRollback>
#include <QWidget>
#include <optional>
#include <string>

#include "core/side.h"
#include "platform/busy_state.h"

namespace vantrel {

class Application;

// A command that changes objects, for as long as it runs: the program is busy, the path boxes of the
// main window take no input, and ESC in its window asks the job to end. Whatever comes out of the command, at
// its end the menus are back, and the focus and the main window's CurrentListview are those of before.
class RunningCommand : public QObject {
  public:
    // `what` runs, for the question whether it shall be stopped; empty: it asks nothing. Of the main window.
    RunningCommand(Application& application, const std::string& what);
    RunningCommand(Application& application, const std::string& what, QWidget& window);
    ~RunningCommand() override;

    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    Application& application_;
    QWidget& window_;
    const QScopedValueRollback<std::string> runs_;
    std::optional<BusyState::Job> job_;
    std::optional<Side> currentListview_;
    QPointer<QWidget> focus_;
};

}  // namespace vantrel
