#include "main/running_command.h"

#include <QCoreApplication>
#include <QKeyEvent>

#include "main/application.h"

namespace vantrel {

RunningCommand::RunningCommand(Application& application, const std::string& what)
    : RunningCommand(application, what, application.Window()) {
}

RunningCommand::RunningCommand(Application& application, const std::string& what, QWidget& window)
    : application_(application),
      window_(window),
      runs_(application.whatRuns, what),
      currentListview_(application.panes.CurrentListview()),
      focus_(window.focusWidget()) {
    application.around.loop.ResetCancel();
    job_.emplace(application.busy);
    QCoreApplication::instance()->installEventFilter(this);
}

RunningCommand::~RunningCommand() {
    application_.panes.SetCurrentListview(currentListview_);
    // First: what is disabled takes no focus.
    job_.reset();
    if (focus_ && window_.focusWidget() != focus_) focus_->setFocus();
}

bool RunningCommand::eventFilter(QObject* watched, QEvent* event) {
    const bool isKey = event->type() == QEvent::KeyPress;
    const bool isInput = isKey || event->type() == QEvent::MouseButtonPress ||
                         event->type() == QEvent::MouseButtonDblClick || event->type() == QEvent::Wheel ||
                         event->type() == QEvent::InputMethod;
    const auto* widget = qobject_cast<QWidget*>(watched);
    if (!isInput || !widget) return false;
    if (isKey && widget->window() == &window_ && static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape) {
        application_.around.events.RequestCancel();
        return true;
    }
    // A path changed now would make the comparison that follows one of other folders.
    for (const Side side : kBothSides)
        if (application_.Window().Box(side).isAncestorOf(widget)) return true;
    return false;
}

}  // namespace vantrel
