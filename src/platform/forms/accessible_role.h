#pragma once

#include <QAccessible>

class QWidget;

namespace vantrel {

// Tells screen readers what a control is that paints itself; without that they take it for a mere area.
void SetAccessibleRole(QWidget& control, QAccessible::Role role);

}  // namespace vantrel
