#pragma once

#include <QTimer>
#include <functional>

#include "platform/busy_state.h"
#include "views/result_panes.h"

namespace vantrel {

class Commands;

// Sees to it that the settings file knows of a change soon after it was made: after each command, after each
// change of the view and behind each job `keep` is called once, from the event loop.
class SettingsKeeper : private BusyObserver, private ResultPanesObserver {
  public:
    // All must outlive the object. `keep` writes what has changed; it is never called while a job runs.
    SettingsKeeper(BusyState& busy, ResultPanes& panes, Commands& commands, std::function<void()> keep);
    ~SettingsKeeper() override;
    SettingsKeeper(const SettingsKeeper&) = delete;
    SettingsKeeper& operator=(const SettingsKeeper&) = delete;

  private:
    void BusyChanged(bool busy) override;
    void ViewSelectionsChanged() override { soon_.start(); }
    void Keep();

    BusyState& busy_;
    ResultPanes& panes_;
    std::function<void()> keep_;
    QTimer soon_;
};

}  // namespace vantrel
