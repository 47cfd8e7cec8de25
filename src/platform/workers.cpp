#include "platform/workers.h"

#include <sched.h>
#include <csignal>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <system_error>
#include <thread>

namespace vantrel {

// Held by every thread as well, so that one that is left behind finds it still there.
struct Workers::State {
    std::mutex mutex;
    std::condition_variable wanted;  // there is work, or the end was asked for
    std::condition_variable ready;   // the one thread can go on
    std::condition_variable ended;
    std::deque<std::shared_ptr<Task>> work;
    const Task* awaited = nullptr;  // while the one thread waits for it
    // With no more than this many jobs left the one thread is woken as soon as it can go on, so that it hands
    // in more before the threads run dry. About what they do in the time that this takes, where jobs are as
    // small as the listing of a folder of ten files (15 microseconds).
    std::size_t few = 0;
    bool ending = false;
    bool leftBehind = false;  // those that run were given up
    std::size_t running = 0;  // threads that have not ended
};

namespace {

std::atomic<std::size_t> leftBehind{0};

// A thread begins with the signal mask of the one that makes it. Those that tell of a fault of the thread
// itself stay as they are.
class NoSignals {
  public:
    NoSignals() {
        sigset_t all;
        sigfillset(&all);
        for (const int own : {SIGSEGV, SIGBUS, SIGFPE, SIGILL}) sigdelset(&all, own);
        pthread_sigmask(SIG_BLOCK, &all, &before_);
    }
    ~NoSignals() { pthread_sigmask(SIG_SETMASK, &before_, nullptr); }
    NoSignals(const NoSignals&) = delete;
    NoSignals& operator=(const NoSignals&) = delete;

  private:
    sigset_t before_{};
};

}  // namespace

std::size_t ProcessorCount() {
    cpu_set_t allowed;
    if (sched_getaffinity(0, sizeof allowed, &allowed) == 0)
        return static_cast<std::size_t>(std::max(1, CPU_COUNT(&allowed)));
    return std::max(1U, std::thread::hardware_concurrency());
}

std::size_t WorkerCount(std::int32_t jobs) {
    const std::size_t count = jobs > 0 ? static_cast<std::size_t>(jobs) : ProcessorCount();
    return count > 1 ? count : 0;
}

std::size_t WorkerCount(const std::int32_t* jobs) {
    return jobs == nullptr ? 0 : WorkerCount(*jobs);
}

Workers::Workers(std::size_t count) : count_(0), state_(std::make_shared<State>()) {
    Grow(count);
}

void Workers::Grow(std::size_t count) {
    for (count = std::min(count, kMost); count_ < count; ++count_) {
        {
            const std::lock_guard lock(state_->mutex);
            if (state_->ending) return;
            ++state_->running;
            state_->few = 8 + 4 * (count_ + 1);
        }
        const NoSignals noSignals;
        try {
            std::thread([state = state_] { Loop(state); }).detach();
        } catch (const std::system_error&) {
            // Fewer threads do the same work.
            const std::lock_guard lock(state_->mutex);
            --state_->running;
            return;
        }
    }
}

Workers::~Workers() {
    End();
}

std::size_t Workers::End(std::chrono::milliseconds patience) {
    std::unique_lock lock(state_->mutex);
    state_->ending = true;
    // A job that nobody has begun holds open files: they are closed here.
    std::deque<std::shared_ptr<Task>> dropped;
    dropped.swap(state_->work);
    state_->wanted.notify_all();
    if (!state_->leftBehind) {
        state_->ended.wait_for(lock, patience, [this] { return state_->running == 0; });
        leftBehind += state_->running;
        state_->leftBehind = true;
    }
    return state_->running;
}

std::size_t Workers::LeftBehind() {
    return leftBehind;
}

void Workers::EndProcessIfLeftBehind(int status) {
    if (LeftBehind() == 0) return;
    std::fflush(nullptr);
    std::_Exit(status);
}

void Workers::Task::RunOnce() {
    if (begun_.exchange(true)) return;
    Run();
    done_.store(true, std::memory_order_release);
}

bool Workers::Add(std::shared_ptr<Task> task) {
    {
        const std::lock_guard lock(state_->mutex);
        if (count_ == 0 || state_->ending) return false;
        state_->work.push_back(std::move(task));
    }
    state_->wanted.notify_one();
    return true;
}

bool Workers::HasThreads(State& state) {
    const std::lock_guard lock(state.mutex);
    return state.running != 0 && !state.ending;
}

bool Workers::WaitFor(State& state, const Task& task, std::chrono::milliseconds time) {
    if (task.IsDone()) return true;
    std::unique_lock lock(state.mutex);
    state.awaited = &task;
    const bool isDone = state.ready.wait_for(lock, time, [&] { return task.IsDone(); });
    state.awaited = nullptr;
    return isDone;
}

void Workers::Loop(const std::shared_ptr<State>& state) {
    std::unique_lock lock(state->mutex);
    while (!state->ending) {
        if (state->work.empty()) {
            state->wanted.wait(lock);
            continue;
        }
        std::shared_ptr<Task> task = std::move(state->work.front());
        state->work.pop_front();
        lock.unlock();
        task->RunOnce();
        task = nullptr;
        lock.lock();
        if (state->awaited && state->work.size() <= state->few && state->awaited->IsDone())
            state->ready.notify_one();
    }
    --state->running;
    if (state->leftBehind) --leftBehind;
    state->ended.notify_all();
}

}  // namespace vantrel
