#include "platform/forms/accessible_role.h"

#include <QAccessibleWidget>
#include <QVariant>
#include <QWidget>

namespace vantrel {
namespace {

constexpr const char* kRole = "accessibleRole";

QAccessibleInterface* MakeInterface(const QString&, QObject* object) {
    if (object == nullptr || !object->isWidgetType()) return nullptr;
    const QVariant role = object->property(kRole);
    if (!role.isValid()) return nullptr;
    return new QAccessibleWidget(static_cast<QWidget*>(object), static_cast<QAccessible::Role>(role.toInt()));
}

}  // namespace

void SetAccessibleRole(QWidget& control, QAccessible::Role role) {
    static const bool installed = [] {
        QAccessible::installFactory(MakeInterface);
        return true;
    }();
    static_cast<void>(installed);
    control.setProperty(kRole, static_cast<int>(role));
    // One that was made before, as where the name was set first, is made anew when it is asked for.
    QAccessibleInterface* made = QAccessible::queryAccessibleInterface(&control);
    if (made != nullptr && made->role() != role)
        QAccessible::deleteAccessibleInterface(QAccessible::uniqueId(made));
}

}  // namespace vantrel
