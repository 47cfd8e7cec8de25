#pragma once

#include <QObject>
#include <QPointer>
#include <QWidget>
#include <optional>

#include "core/side.h"

namespace vantrel {

class Application;

// A command that changes objects, for as long as it runs: the main window is in the busy state, its path
// boxes take no input, and ESC asks the job to end. Whatever comes out of the command, at its end the menus
// and the ordinary pointer are back, and the focus and CurrentListview are those of before.
class RunningCommand : public QObject {
  public:
    explicit RunningCommand(Application& application);
    ~RunningCommand() override;

    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    Application& application_;
    std::optional<Side> currentListview_;
    QPointer<QWidget> focus_;
};

// The silent comparison within such a command. It gives the menus back at its end, which is too early here.
void CompareWithinCommand(Application& application);

}  // namespace vantrel
