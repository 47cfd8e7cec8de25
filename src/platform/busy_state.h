#pragma once

#include <vector>

namespace vantrel {

// Hears whether a job runs. What shows commands looks disabled from true to false.
class BusyObserver {
  public:
    virtual ~BusyObserver() = default;
    virtual void BusyChanged(bool busy) = 0;
};

// Hears when the user has to wait: what the pointer shows.
class WaitObserver {
  public:
    virtual ~WaitObserver() = default;
    virtual void WaitChanged(bool waiting) = 0;
};

// The one place that knows whether a job of the program runs. There is one for all windows, modal or not:
// while it is busy none of them starts a command. Jobs nest, and only the end of the outermost one makes it
// free again. For the one thread alone.
class BusyState {
  public:
    BusyState() = default;
    BusyState(const BusyState&) = delete;
    BusyState& operator=(const BusyState&) = delete;

    bool IsBusy() const { return jobs_ > 0; }
    bool IsWaiting() const { return waits_ > 0; }

    // A job, from the object's making to its end or to End(). The state must outlive it.
    class Job {
      public:
        explicit Job(BusyState& state) : state_(&state) { state.CountJobs(1); }
        ~Job() { End(); }
        Job(const Job&) = delete;
        Job& operator=(const Job&) = delete;
        void End() {
            if (state_) state_->CountJobs(-1);
            state_ = nullptr;
        }

      private:
        BusyState* state_;
    };

    // The part of a job that shows the wait pointer: not where the user is asked something first.
    class Wait {
      public:
        explicit Wait(BusyState& state) : state_(state) { state.CountWaits(1); }
        ~Wait() { state_.CountWaits(-1); }
        Wait(const Wait&) = delete;
        Wait& operator=(const Wait&) = delete;

      private:
        BusyState& state_;
    };

    // An observer must be removed before it ends. The beginning is told in the order in which they were
    // added, the end in the reverse order: what an observer found at the beginning is whole again when it
    // hears of the end. It may add and remove none meanwhile.
    void AddObserver(BusyObserver* observer) { observers_.push_back(observer); }
    void RemoveObserver(BusyObserver* observer) { std::erase(observers_, observer); }
    void SetWaitObserver(WaitObserver* observer) { waitObserver_ = observer; }

  private:
    void CountJobs(int change);
    void CountWaits(int change);

    int jobs_ = 0;
    int waits_ = 0;
    std::vector<BusyObserver*> observers_;
    WaitObserver* waitObserver_ = nullptr;
};

}  // namespace vantrel
