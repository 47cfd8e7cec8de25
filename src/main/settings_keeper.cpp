#include "main/settings_keeper.h"

#include <utility>

#include "views/forms/commands.h"

namespace vantrel {

SettingsKeeper::SettingsKeeper(BusyState& busy, ResultPanes& panes, Commands& commands,
                               std::function<void()> keep)
    : busy_(busy), panes_(panes), keep_(std::move(keep)) {
    soon_.setSingleShot(true);
    QObject::connect(&soon_, &QTimer::timeout, &soon_, [this] { Keep(); });
    QObject::connect(&commands, &Commands::Ran, &soon_, [this] { soon_.start(); });
    busy_.AddObserver(this);
    panes_.AddObserver(this);
}

SettingsKeeper::~SettingsKeeper() {
    panes_.RemoveObserver(this);
    busy_.RemoveObserver(this);
}

void SettingsKeeper::BusyChanged(bool busy) {
    if (!busy) soon_.start();
}

// The end of a job comes back to this.
void SettingsKeeper::Keep() {
    if (!busy_.IsBusy()) keep_();
}

}  // namespace vantrel
