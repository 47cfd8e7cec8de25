#pragma once

#include <QHash>
#include <QObject>
#include <functional>
#include <string_view>

#include "views/forms/command_table.h"

class QAction;
class QMenu;
class QMenuBar;

namespace vantrel {

// Every command of the main window as one QAction that bears the item's name; menus, pop-ups, tool bars and
// keys share it. An item of a pop-up that stands for a command has an action of its own, with its own
// caption, which follows and runs that command.
class Commands : public QObject {
    Q_OBJECT

  public:
    explicit Commands(QObject* parent = nullptr);
    ~Commands() override;

    // Makes all menus, those of the menu bar in `bar`.
    void Build(QMenuBar* bar);

    // Of an item or a menu; the name must be one of the tables.
    QAction* Action(std::string_view name) const;
    QMenu* Menu(std::string_view name) const;

    // What the command does. A command without a handler is disabled.
    void SetHandler(std::string_view name, std::function<void()> handler);
    // Takes a command that has a handler away for a time, or for this machine, and gives it back.
    void SetAvailable(std::string_view name, bool available);
    bool IsEnabled(std::string_view name) const;
    // The state that the check mark shows; read whenever the menus may be looked at.
    void BindCheck(std::string_view name, std::function<bool()> isChecked);
    void RefreshChecks();

    // Runs a command as its menu item does: not while a job runs, and not while it is disabled.
    void Run(std::string_view name);

    // The busy state: mnuFile, mnuOptions, mnuSelect, mnuView and mnuHelp together. While they are disabled
    // no command runs, by whatever way it is called.
    void SetMenusEnabled(bool enabled);
    bool MenusEnabled() const { return menusEnabled_; }

  Q_SIGNALS:
    void MenusEnabledChanged(bool enabled);
    // A command has run; what it changed in the options may have to be shown.
    void CommandDone();

  private:
    struct Item {
        QAction* action = nullptr;
        QMenu* menu = nullptr;
        QString sameAs{};
        std::function<void()> handler{};
        std::function<bool()> isChecked{};
        bool available = true;
    };
    void Add(const CommandEntry& entry, QMenuBar* bar);
    void AddSeparate(std::string_view name);
    Item& Find(std::string_view name);
    const Item& Find(std::string_view name) const;
    // Whose handler runs: the item itself, or the command that it stands for.
    const Item& Acting(const Item& item) const;
    void Start(const QString& name);
    void ShowEnabled();

    QHash<QString, Item> items_;
    QWidget* owner_ = nullptr;
    bool menusEnabled_ = true;
};

}  // namespace vantrel
