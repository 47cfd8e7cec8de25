#include "platform/busy_state.h"

#include <gtest/gtest.h>

#include <string>

namespace vantrel {
namespace {

class Recorder : public BusyObserver, public WaitObserver {
  public:
    Recorder(std::string name, std::string& log) : name_(std::move(name)), log_(log) {}
    void BusyChanged(bool busy) override { log_ += name_ + (busy ? " busy " : " free "); }
    void WaitChanged(bool waiting) override { log_ += waiting ? "wait " : "ready "; }

  private:
    std::string name_;
    std::string& log_;
};

TEST(BusyState, NestedJobsCountAndTheEndIsToldTheOtherWayRound) {
    std::string log;
    BusyState state;
    Recorder first("1", log), second("2", log);
    state.AddObserver(&first);
    state.AddObserver(&second);
    {
        BusyState::Job outer(state);
        EXPECT_EQ(log, "1 busy 2 busy ");
        log.clear();
        BusyState::Job inner(state);
        // The inner job may outlast the outer one.
        outer.End();
        outer.End();
        EXPECT_TRUE(state.IsBusy());
        EXPECT_EQ(log, "");
    }
    EXPECT_EQ(log, "2 free 1 free ");
    EXPECT_FALSE(state.IsBusy());

    state.RemoveObserver(&second);
    log.clear();
    const BusyState::Job again(state);
    EXPECT_EQ(log, "1 busy ");
}

TEST(BusyState, WaitsNestAndStandBesideTheJobs) {
    std::string log;
    BusyState state;
    Recorder pointer("", log);
    state.SetWaitObserver(&pointer);
    {
        const BusyState::Wait outer(state);
        const BusyState::Wait inner(state);
        EXPECT_TRUE(state.IsWaiting());
        EXPECT_FALSE(state.IsBusy());
    }
    EXPECT_EQ(log, "wait ready ");
    state.SetWaitObserver(nullptr);
    const BusyState::Wait unseen(state);
    EXPECT_EQ(log, "wait ready ");
}

}  // namespace
}  // namespace vantrel
