#include "platform/forms/other_pane_key.h"

#include <QApplication>
#include <QShortcut>
#include <QWidget>

namespace vantrel {

void GoBetweenByF6(QWidget& window, std::array<QWidget*, 2> panes) {
    const auto* key = new QShortcut(QKeySequence(Qt::Key_F6), &window);
    QObject::connect(key, &QShortcut::activated, &window, [panes] {
        const bool inFirst = panes[0]->hasFocus() || panes[0]->isAncestorOf(QApplication::focusWidget());
        QWidget* goal = panes[inFirst ? 1 : 0];
        if (goal->isEnabled() && goal->isVisible()) goal->setFocus(Qt::ShortcutFocusReason);
    });
}

}  // namespace vantrel
