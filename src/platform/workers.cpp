#include "platform/workers.h"

#include <sched.h>
#include <csignal>
#include <ctime>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <system_error>
#include <thread>

namespace vantrel {

// Held by every thread as well, so that one that is left behind finds it still there.
struct Workers::State {
    using Clock = std::chrono::steady_clock;

    std::mutex mutex;
    std::condition_variable wanted;  // there is work, or the end was asked for
    std::condition_variable ready;   // the one thread can go on
    std::condition_variable ended;
    std::deque<std::shared_ptr<Task>> work;
    const Task* awaited = nullptr;  // while the one thread waits for it
    std::size_t made = 0;           // threads, numbered from 0
    std::size_t usual = 0;          // that take jobs at any time
    std::size_t most = 0;           // that take jobs while these wait for a disk
    std::uint64_t (*bytesRead)() = nullptr;
    Clock::time_point wideUntil;       // they do until then
    std::condition_variable narrowed;  // where those beyond `usual` rest
    bool ending = false;
    bool leftBehind = false;  // those that run were given up
    std::size_t running = 0;  // threads that have not ended

    bool IsWide() const { return usual < most && Clock::now() < wideUntil; }
    // With no more than this many jobs left the one thread is woken as soon as it can go on, so that it hands
    // in more before the threads run dry. About what they do in the time that this takes, where jobs are as
    // small as the listing of a folder of ten files (15 microseconds).
    std::size_t Few() const { return 8 + 4 * (IsWide() ? most : usual); }
};

namespace {

std::atomic<std::size_t> leftBehind{0};

// Whether the jobs of one thread wait for a disk: something came from one, and for a good part of the time
// the thread did not run. More threads than processors gain about as much as jobs wait (B. Goetz et al., Java
// Concurrency in Practice, 8.2).
class DiskWatch {
    using Clock = std::chrono::steady_clock;

  public:
    void Begin() { begun_ = Clock::now(); }
    // At the end of a job; true once in a while, where they do.
    bool EndAndTell(std::uint64_t (*bytesRead)()) {
        constexpr std::chrono::milliseconds kSpan{5};
        constexpr int kPart = 4;
        working_ += Clock::now() - begun_;
        if (working_ < kSpan) return false;
        const std::uint64_t bytes = bytesRead();
        const std::chrono::nanoseconds ran = TimeRun();
        const bool waits = bytes != bytes_ && (working_ - (ran - ran_)) * kPart > working_;
        bytes_ = bytes;
        ran_ = ran;
        working_ = {};
        return waits;
    }

  private:
    static std::chrono::nanoseconds TimeRun() {
        timespec time{};
        clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
        return std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec);
    }

    Clock::time_point begun_;
    std::chrono::nanoseconds working_{0}, ran_{0};
    std::uint64_t bytes_ = 0;
};

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

Workers::Workers(std::size_t count) : state_(std::make_shared<State>()) {
    Grow(count);
}

void Workers::Grow(std::size_t count) {
    count = std::min(count, kMost);
    if (count <= count_) return;
    {
        // Beforehand, so that the new ones do not rest.
        const std::lock_guard lock(state_->mutex);
        if (state_->ending) return;
        state_->usual = count;
        state_->narrowed.notify_all();
    }
    while (AddThread(state_, count)) continue;
    const std::lock_guard lock(state_->mutex);
    count_ = state_->usual = std::min(count, state_->made);
}

void Workers::WidenForDisk(std::size_t most, std::uint64_t (*bytesRead)()) {
    if (count_ == 0) return;
    most_ = std::min(most, kMost);
    const std::lock_guard lock(state_->mutex);
    state_->most = most_;
    state_->bytesRead = bytesRead;
}

bool Workers::AddThread(const std::shared_ptr<State>& state, std::size_t most) {
    std::size_t number = 0;
    {
        const std::lock_guard lock(state->mutex);
        if (state->ending || state->made >= most) return false;
        number = state->made++;
        ++state->running;
    }
    const NoSignals noSignals;
    try {
        std::thread([state, number] { Loop(state, number); }).detach();
        return true;
    } catch (const std::system_error&) {
        // Fewer threads do the same work.
        const std::lock_guard lock(state->mutex);
        --state->made;
        --state->running;
        return false;
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
    state_->narrowed.notify_all();
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

void Workers::Widen(const std::shared_ptr<State>& state) {
    constexpr std::chrono::milliseconds kWhile{50};
    std::size_t most = 0;
    {
        const std::lock_guard lock(state->mutex);
        state->wideUntil = State::Clock::now() + kWhile;
        most = state->most;
        state->narrowed.notify_all();
    }
    while (AddThread(state, most)) continue;
}

void Workers::Loop(const std::shared_ptr<State>& state, std::size_t number) {
    DiskWatch watch;
    std::unique_lock lock(state->mutex);
    while (!state->ending) {
        if (number >= state->usual && !state->IsWide()) {
            // What it was woken for is another's.
            if (!state->work.empty()) state->wanted.notify_one();
            state->narrowed.wait(lock);
            continue;
        }
        if (state->work.empty()) {
            state->wanted.wait(lock);
            continue;
        }
        std::shared_ptr<Task> task = std::move(state->work.front());
        state->work.pop_front();
        const auto bytesRead = state->usual < state->most ? state->bytesRead : nullptr;
        lock.unlock();
        if (bytesRead) watch.Begin();
        task->RunOnce();
        task = nullptr;
        if (bytesRead && watch.EndAndTell(bytesRead)) Widen(state);
        lock.lock();
        if (state->awaited && state->awaited->IsDone() && state->work.size() <= state->Few())
            state->ready.notify_one();
    }
    --state->running;
    if (state->leftBehind) --leftBehind;
    state->ended.notify_all();
}

}  // namespace vantrel
