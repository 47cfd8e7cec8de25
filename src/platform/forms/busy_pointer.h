#pragma once

#include <QCursor>
#include <QGuiApplication>
#include <optional>

#include "platform/busy_state.h"

namespace vantrel {

// The wait pointer, in every window of the program, for as long as the object lives.
class BusyPointer {
  public:
    BusyPointer() { QGuiApplication::setOverrideCursor(Qt::WaitCursor); }
    ~BusyPointer() { QGuiApplication::restoreOverrideCursor(); }
    BusyPointer(const BusyPointer&) = delete;
    BusyPointer& operator=(const BusyPointer&) = delete;
};

// Shows the wait pointer while `state` waits; one for the program.
class BusyPointerOf : public WaitObserver {
  public:
    explicit BusyPointerOf(BusyState& state) : state_(state) { state.SetWaitObserver(this); }
    ~BusyPointerOf() override { state_.SetWaitObserver(nullptr); }
    BusyPointerOf(const BusyPointerOf&) = delete;
    BusyPointerOf& operator=(const BusyPointerOf&) = delete;

    void WaitChanged(bool waiting) override {
        if (waiting)
            pointer_.emplace();
        else
            pointer_.reset();
    }

  private:
    BusyState& state_;
    std::optional<BusyPointer> pointer_;
};

}  // namespace vantrel
