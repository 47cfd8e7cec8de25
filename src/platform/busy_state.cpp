#include "platform/busy_state.h"

namespace vantrel {

void BusyState::CountJobs(int change) {
    const bool before = IsBusy();
    jobs_ += change;
    if (IsBusy() == before) return;
    if (IsBusy())
        for (BusyObserver* observer : observers_) observer->BusyChanged(true);
    else
        for (auto observer = observers_.rbegin(); observer != observers_.rend(); ++observer)
            (*observer)->BusyChanged(false);
}

void BusyState::CountWaits(int change) {
    const bool before = IsWaiting();
    waits_ += change;
    if (IsWaiting() != before && waitObserver_) waitObserver_->WaitChanged(IsWaiting());
}

}  // namespace vantrel
