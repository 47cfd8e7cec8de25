#pragma once

#include <QHash>
#include <QObject>
#include <functional>
#include <string>
#include <string_view>

#include "diagnostics/error_reporter.h"
#include "platform/busy_state.h"
#include "views/forms/command_entry.h"

class QAction;
class QMenu;
class QMenuBar;

namespace vantrel {

// Every command of a window as one QAction that bears the item's name; menus, pop-ups, tool bars and
// keys share it. An item of a pop-up that stands for a command has an action of its own, with its own
// caption, which follows and runs that command.
class Commands : public QObject, private BusyObserver {
    Q_OBJECT

  public:
    // Errors of the handlers go to `reporter`. Both must outlive the object.
    Commands(BusyState& busy, ErrorReporter& reporter, QObject* parent = nullptr);
    ~Commands() override;

    // Makes all menus, those of the menu bar in `bar`. The tables must outlive the object.
    void Build(QMenuBar* bar, const CommandTables& tables);

    // Of an item or a menu; the name must be one of the tables.
    QAction* Action(std::string_view name) const;
    QMenu* Menu(std::string_view name) const;

    // What the command does. A command without a handler is disabled. However it is started, the handler runs
    // inside a guard: what comes out of it is reported under the routine's name, and a cancel ends it.
    void SetHandler(std::string_view name, std::function<void()> handler);
    // The same where it is `wanted`, and no handler elsewhere. Costs nothing where that stands already.
    void SetHandlerWhere(bool wanted, std::string_view name, std::function<void()> handler);
    bool IsEnabled(std::string_view name) const;
    // The text name of the routine that runs for the command: "<window>.<item>_Click", of an array's element
    // without its index, unless the tables have another one.
    std::string RoutineName(std::string_view name) const;
    // The state that the check mark shows; read whenever the menus may be looked at.
    void BindCheck(std::string_view name, std::function<bool()> isChecked);
    void RefreshChecks();

    // Runs a command as its menu item does: not while a job runs, and not while it is disabled.
    void Run(std::string_view name);

    // While a job runs all busyMenus of the tables are disabled together, and no command runs by whatever way
    // it is called.
    bool IsBusy() const { return busy_.IsBusy(); }

  Q_SIGNALS:
    void BusyShown(bool busy);  // the menus look so now; strips follow
    void Ran();                 // a command came to its end, whatever became of it

  private:
    struct Item {
        QAction* action = nullptr;
        QMenu* menu = nullptr;
        QString sameAs{};
        std::function<void()> handler{};
        std::function<bool()> isChecked{};
    };
    void Add(const CommandEntry& entry, QMenuBar* bar);
    void AddSeparate(std::string_view name);
    Item& Find(std::string_view name);
    const Item& Find(std::string_view name) const;
    // Whose handler runs: the item itself, or the command that it stands for.
    const Item& Acting(const Item& item) const;
    void Start(const QString& name);
    void ShowEnabled();
    void BusyChanged(bool busy) override;

    BusyState& busy_;
    ErrorReporter& reporter_;
    QHash<QString, Item> items_;
    std::span<const std::string_view> busyMenus_;
    std::string_view window_;
    std::span<const OddRoutine> oddRoutines_;
    QWidget* owner_ = nullptr;
};

}  // namespace vantrel
