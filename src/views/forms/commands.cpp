#include "views/forms/commands.h"

#include <QAction>
#include <QActionGroup>
#include <QKeySequence>
#include <QMenu>
#include <QMenuBar>
#include <stdexcept>
#include <string>
#include <utility>

#include "platform/forms/icons.h"
#include "platform/forms/qt_text.h"

namespace vantrel {
namespace {

// The items of one menu that exclude each other form one group.
QActionGroup* GroupOf(QMenu* menu) {
    const QString name = menu->objectName() + QStringLiteral(".group");
    auto* group = menu->findChild<QActionGroup*>(name, Qt::FindDirectChildrenOnly);
    if (!group) {
        group = new QActionGroup(menu);
        group->setObjectName(name);
    }
    return group;
}

}  // namespace

Commands::Commands(BusyState& busy, ErrorReporter& reporter, QObject* parent)
    : QObject(parent), busy_(busy), reporter_(reporter) {
}

Commands::~Commands() {
    busy_.RemoveObserver(this);
}

void Commands::Build(QMenuBar* bar, const CommandTables& tables) {
    owner_ = bar->window();
    busyMenus_ = tables.busyMenus;
    window_ = tables.window;
    oddRoutines_ = tables.oddRoutines;
    for (const CommandEntry& entry : tables.menuBar) Add(entry, bar);
    for (const CommandEntry& entry : tables.popups) Add(entry, nullptr);
    for (const std::string_view name : tables.separate) AddSeparate(name);
    for (const std::string_view name : tables.windowKeys)
        Action(name)->setShortcutContext(Qt::WindowShortcut);
    ShowEnabled();
    busy_.AddObserver(this);
    BusyChanged(busy_.IsBusy());
}

void Commands::Add(const CommandEntry& entry, QMenuBar* bar) {
    const QString name = ToQString(entry.name);
    QMenu* parent = entry.parent.empty() ? nullptr : Find(entry.parent).menu;
    if (parent == nullptr && entry.kind != CommandKind::Menu)
        throw std::logic_error("no menu for " + std::string(entry.name));
    if (entry.kind == CommandKind::Separator) {
        QAction* line = parent->addSeparator();
        line->setObjectName(name);
        if (!name.isEmpty()) items_.insert(name, {.action = line});
        return;
    }

    Item item;
    if (entry.kind == CommandKind::Menu) {
        item.menu = new QMenu(ToQString(entry.caption), owner_);
        item.menu->setObjectName(name);
        item.action = item.menu->menuAction();
        if (parent)
            parent->addMenu(item.menu);
        else if (bar)
            bar->addMenu(item.menu);
        connect(item.menu, &QMenu::aboutToShow, this, &Commands::RefreshChecks);
    } else {
        item.action = new QAction(ToQString(entry.caption), this);
        item.action->setCheckable(entry.kind != CommandKind::Command);
        if (entry.kind == CommandKind::Exclusive) GroupOf(parent)->addAction(item.action);
        if (!entry.key.empty()) {
            item.action->setShortcut(QKeySequence(ToQString(entry.key)));
            item.action->setShortcutContext(Qt::WidgetShortcut);
        }
        item.sameAs = ToQString(entry.sameAs);
        parent->addAction(item.action);
        connect(item.action, &QAction::triggered, this, [this, name] { Start(name); });
    }
    item.action->setObjectName(name);
    if (!entry.icon.empty())
        item.action->setIcon(
            CommandIcon(QLatin1String(entry.icon.data(), static_cast<qsizetype>(entry.icon.size()))));
    items_.insert(name, item);
}

void Commands::AddSeparate(std::string_view name) {
    const QString key = ToQString(name);
    auto* action = new QAction(this);
    action->setObjectName(key);
    connect(action, &QAction::triggered, this, [this, key] { Start(key); });
    items_.insert(key, {.action = action});
}

Commands::Item& Commands::Find(std::string_view name) {
    const auto found = items_.find(ToQString(name));
    if (found == items_.end()) throw std::logic_error("no command " + std::string(name));
    return *found;
}

const Commands::Item& Commands::Find(std::string_view name) const {
    return const_cast<Commands*>(this)->Find(name);
}

const Commands::Item& Commands::Acting(const Item& item) const {
    const Item* acting = &item;
    while (!acting->handler && !acting->sameAs.isEmpty()) acting = &*items_.constFind(acting->sameAs);
    return *acting;
}

QAction* Commands::Action(std::string_view name) const {
    return Find(name).action;
}

QMenu* Commands::Menu(std::string_view name) const {
    return Find(name).menu;
}

void Commands::SetHandler(std::string_view name, std::function<void()> handler) {
    Find(name).handler = std::move(handler);
    ShowEnabled();
}

void Commands::SetHandlerWhere(bool wanted, std::string_view name, std::function<void()> handler) {
    if (IsEnabled(name) != wanted) SetHandler(name, wanted ? std::move(handler) : nullptr);
}

bool Commands::IsEnabled(std::string_view name) const {
    return static_cast<bool>(Acting(Find(name)).handler);
}

void Commands::ShowEnabled() {
    for (auto item = items_.begin(); item != items_.end(); ++item)
        if (!item->menu && !item->action->isSeparator())
            item->action->setEnabled(IsEnabled(FromQString(item.key())));
}

void Commands::BindCheck(std::string_view name, std::function<bool()> isChecked) {
    Find(name).isChecked = std::move(isChecked);
}

void Commands::RefreshChecks() {
    for (const Item& item : std::as_const(items_))
        if (item.isChecked) item.action->setChecked(item.isChecked());
}

void Commands::Run(std::string_view name) {
    Find(name);
    Start(ToQString(name));
}

std::string Commands::RoutineName(std::string_view name) const {
    const std::string item = FromQString(Acting(Find(name)).action->objectName());
    for (const OddRoutine& odd : oddRoutines_)
        if (odd.command == item) return std::string(odd.routine);
    return std::string(window_) + "." + item.substr(0, item.find('(')) + "_Click";
}

void Commands::Start(const QString& name) {
    const std::string command = FromQString(name);
    // A handler may put another one in its place: keep it alive while it runs.
    if (!IsBusy() && IsEnabled(command))
        if (const auto handler = Acting(Find(command)).handler)
            reporter_.GuardRun(RoutineName(command), handler);
    RefreshChecks();
    Q_EMIT Ran();
}

void Commands::BusyChanged(bool busy) {
    for (const std::string_view name : busyMenus_) Action(name)->setEnabled(!busy);
    Q_EMIT BusyShown(busy);
}

}  // namespace vantrel
