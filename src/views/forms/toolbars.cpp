#include "views/forms/toolbars.h"

#include <QAction>
#include <QContextMenuEvent>
#include <QMenu>
#include <QStyleOptionToolButton>
#include <QStylePainter>

#include "platform/forms/icons.h"
#include "platform/forms/qt_text.h"
#include "views/forms/commands.h"

namespace vantrel {

CommandButton::CommandButton(QAction* action, const QString& caption, const QString& tip, QWidget* parent)
    : QToolButton(parent), action_(action) {
    setText(caption);
    setToolTip(tip);
    setAccessibleName(caption);
    setAccessibleDescription(tip);
    setAutoRaise(true);
    setFocusPolicy(Qt::TabFocus);
    connect(this, &QToolButton::clicked, action, &QAction::trigger);
    connect(action, &QAction::changed, this, &CommandButton::Follow);
    Follow();
}

void CommandButton::Follow() {
    setEnabled(action_->isEnabled() && !busy_);
}

void CommandButton::ShowBusy(bool busy) {
    busy_ = busy;
    Follow();
}

void CommandButton::paintEvent(QPaintEvent*) {
    QStylePainter painter(this);
    QStyleOptionToolButton option;
    initStyleOption(&option);
    if (isDown()) option.rect.translate(1, 1);
    painter.drawComplexControl(QStyle::CC_ToolButton, option);
}

CommandStrip::CommandStrip(ToolbarStyle style, std::span<const ToolbarEntry> entries, Commands& commands,
                           QWidget* parent)
    : QToolBar(parent), commands_(commands) {
    const bool large = style == ToolbarStyle::Coolbar;
    const int size = large ? 32 : 16;
    setObjectName(large ? QStringLiteral("CoolBar") : QStringLiteral("VTToolbar"));
    setWindowTitle(QStringLiteral("Toolbar"));
    setMovable(false);
    setFloatable(false);
    setIconSize(QSize(size, size));
    // The toolkit's own button, with which those that have no room are opened.
    if (auto* more = findChild<QToolButton*>(QStringLiteral("qt_toolbar_ext_button"))) {
        more->setAccessibleName(QStringLiteral("More Buttons"));
        more->setToolTip(more->accessibleName());
    }
    for (const ToolbarEntry& entry : entries) {
        const QString caption = ToQString(large ? entry.coolbarCaption : entry.toolbarCaption);
        auto* button = new CommandButton(commands.Action(entry.command), caption, ToQString(entry.tip), this);
        button->setObjectName(ToQString(entry.command));
        button->setIcon(
            CommandIcon(QLatin1String(entry.icon.data(), static_cast<qsizetype>(entry.icon.size()))));
        button->setIconSize(iconSize());
        button->setToolButtonStyle(large ? Qt::ToolButtonTextUnderIcon : Qt::ToolButtonTextBesideIcon);
        connect(&commands, &Commands::BusyShown, button, &CommandButton::ShowBusy);
        addWidget(button);
    }
}

CommandButton* CommandStrip::Button(std::string_view command) const {
    return findChild<CommandButton*>(ToQString(command));
}

void CommandStrip::contextMenuEvent(QContextMenuEvent* event) {
    if (commands_.IsBusy()) return;
    commands_.RefreshChecks();
    commands_.Menu("mnuOptionsToolbar")->popup(event->globalPos());
}

}  // namespace vantrel
