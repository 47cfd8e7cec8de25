#pragma once

#include <algorithm>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <exception>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <utility>

#include "platform/files/disk_reads.h"

namespace vantrel {

// Asked by a job while it works: whether its result is still wanted. Any thread may ask and request. Copies
// share one state.
class StopFlag {
  public:
    StopFlag() : requested_(std::make_shared<std::atomic<bool>>(false)) {}
    bool IsRequested() const { return requested_->load(std::memory_order_relaxed); }
    void Request() { requested_->store(true, std::memory_order_relaxed); }

  private:
    std::shared_ptr<std::atomic<bool>> requested_;
};

// The processors that this process may use, at least 1.
std::size_t ProcessorCount();

// The threads for so many jobs at a time as the user asked for: 0 means as many as there are processors, and
// 1 that the one thread does all itself.
std::size_t WorkerCount(std::int32_t jobs);
// The same where somebody keeps what the user asked for; null: none.
std::size_t WorkerCount(const std::int32_t* jobs);
// The threads where the user has not said how many and a server or a disk is waited for, and not the
// processor.
inline constexpr std::size_t kJobsInWait = 16;

// A few threads below the one that all else runs in. What runs in them is handed in by PendingJob below: jobs
// that are functions over values, touch nothing but files, and own all that they need for as long as they
// may run. Made, used and destroyed by the one thread. Signals are left to that thread.
class Workers {
  public:
    // Beyond this many, more threads gain nothing on any storage there is.
    static constexpr std::size_t kMost = 64;
    static constexpr std::chrono::milliseconds kPatience{2'000};

    // With `count` 0 there is no thread: each job runs where its result is taken.
    explicit Workers(std::size_t count);
    // Ends the threads and waits for them, but no longer than kPatience in all: one that hangs in the system,
    // as on a mount whose server is gone, is left behind.
    ~Workers();
    Workers(const Workers&) = delete;
    Workers& operator=(const Workers&) = delete;

    std::size_t Count() const { return count_; }
    // Adds threads until there are `count`, or kMost. There are never fewer for it, and none after End.
    void Grow(std::size_t count);
    // While jobs wait for a disk, up to `most` threads run them, which are made when that is found out; the
    // others rest again soon after nothing comes from a disk any more. For disks that answer many questions
    // in the time of one. `bytesRead` tells, within a job, what disks have read for its thread so far.
    void WidenForDisk(std::size_t most, std::uint64_t (*bytesRead)() = BytesReadFromDisk);
    // The threads that can ever run jobs at the same time.
    std::size_t Most() const { return std::max(count_, most_); }
    // As the destructor does, and gives the number of threads left behind. While there are any, what they may
    // still touch (SystemCalls) must not be destroyed: the process ends without its destructors. Jobs that
    // were not begun, and those handed in afterwards, run where they are taken.
    std::size_t End(std::chrono::milliseconds patience = kPatience);
    // Threads of this process that were left behind and have not ended since. Any thread may ask.
    static std::size_t LeftBehind();
    // At the very end of main: where there are any the process ends here, without taking down anything that
    // they could touch when they come back.
    static void EndProcessIfLeftBehind(int status);

  private:
    template <typename Result>
    friend class PendingJob;
    struct State;

    // A job from its handing in to its result.
    class Task {
      public:
        Task() = default;
        Task(const Task&) = delete;
        Task& operator=(const Task&) = delete;
        virtual ~Task() = default;

        // Runs it, unless somebody has begun it. Any thread may.
        void RunOnce();
        bool IsDone() const { return done_.load(std::memory_order_acquire); }

        StopFlag stop;
        bool isHandedIn = false;  // the one thread's

      private:
        virtual void Run() = 0;  // never throws

        std::atomic<bool> begun_{false}, done_{false};
    };

    // False where no thread will take it.
    bool Add(std::shared_ptr<Task> task);
    // Whether there are any that have not been told to end.
    static bool HasThreads(State& state);
    // By the one thread: until the job is done, or so long. It may sleep on for the rest of that time while
    // the threads have plenty to do: to be woken for each of many small jobs costs more than to run them.
    static bool WaitFor(State& state, const Task& task, std::chrono::milliseconds time);
    // False where there are so many already, or the system has no more.
    static bool AddThread(const std::shared_ptr<State>& state, std::size_t most);
    static void Loop(const std::shared_ptr<State>& state, std::size_t number);
    static void Widen(const std::shared_ptr<State>& state);

    std::size_t count_ = 0, most_ = 0;
    std::shared_ptr<State> state_;
};

// One job and its result. All of it is called by the one thread. A handle that goes drops its job: it is not
// begun any more, or asked to stop and not waited for.
template <typename Result>
class PendingJob {
  public:
    using Job = std::function<Result(const StopFlag&)>;

    PendingJob() = default;
    PendingJob(Workers& workers, Job job)
        : state_(workers.state_), task_(std::make_shared<Task>(std::move(job))) {
        task_->isHandedIn = workers.Add(task_);
    }
    PendingJob(PendingJob&&) noexcept = default;
    PendingJob& operator=(PendingJob&& other) noexcept {
        Drop();
        state_ = std::move(other.state_);
        task_ = std::move(other.task_);
        return *this;
    }
    ~PendingJob() { Drop(); }

    // Whether there is a job whose result was not taken.
    bool IsThere() const { return task_ != nullptr; }
    // Whether its result can be taken without waiting.
    bool IsReady() const { return task_ && task_->IsDone(); }

    // The result of the job, which there must be. Until it is ready `whileWaiting` is called, at least every
    // 15 milliseconds; what it throws (a cancel) comes out and leaves the job where it is. Without workers
    // the job runs now. What the job threw comes out here, once.
    template <typename WhileWaiting>
    Result Take(WhileWaiting&& whileWaiting) {
        // Threads that came afterwards know nothing of a job that there was nobody for.
        if (!task_->isHandedIn || !Workers::HasThreads(*state_)) task_->RunOnce();
        while (!Workers::WaitFor(*state_, *task_, kPace)) whileWaiting();
        return TakeDone();
    }
    // The same of a job that no worker has begun: it runs now. One that was begun is waited for, so this is
    // for jobs that wait for nothing themselves. The workers may be gone.
    Result TakeHere() {
        task_->RunOnce();
        while (!Workers::WaitFor(*state_, *task_, kPace)) continue;
        return TakeDone();
    }

    void Drop() {
        if (task_) task_->stop.Request();
        task_ = nullptr;
    }

  private:
    Result TakeDone() {
        const std::shared_ptr<Task> task = std::move(task_);
        if (task->failure) std::rethrow_exception(std::exchange(task->failure, nullptr));
        return std::move(*task->result);
    }

    // Events are let through at this pace; a wait of one pace costs the system two calls.
    static constexpr std::chrono::milliseconds kPace{10};

    class Task : public Workers::Task {
      public:
        explicit Task(Job job) : job_(std::move(job)) {}

        std::optional<Result> result;
        std::exception_ptr failure;

      private:
        void Run() override {
            // A job that is no longer wanted is not begun; nobody takes its result.
            if (!stop.IsRequested()) {
                try {
                    result.emplace(job_(stop));
                } catch (...) {
                    failure = std::current_exception();
                }
            }
            job_ = nullptr;  // what it owns goes where it was used
        }

        Job job_;
    };

    std::shared_ptr<Workers::State> state_;
    std::shared_ptr<Task> task_;
};

// Jobs whose results are taken in the order in which they were handed in, however they came to be ready. All
// of it is called by the one thread; a queue that goes drops what was not taken.
template <typename Result>
class JobQueue {
  public:
    struct Limits {
        std::size_t jobs = 64;                           // handed in and not taken
        std::uint64_t bytes = std::uint64_t{256} << 20;  // that these hold in memory, by their own account
    };
    using Job = typename PendingJob<Result>::Job;

    JobQueue(Workers& workers, Limits limits) : workers_(workers), limits_(limits) {}
    JobQueue(const JobQueue&) = delete;
    JobQueue& operator=(const JobQueue&) = delete;

    bool IsEmpty() const { return waiting_.empty(); }
    std::size_t Size() const { return waiting_.size(); }
    // Whether a job of `bytes` may be handed in now; one alone always may.
    bool HasRoom(std::uint64_t bytes = 0) const {
        return waiting_.empty() || (waiting_.size() < limits_.jobs && bytes_ + bytes <= limits_.bytes);
    }
    // `bytes` is what its result may hold until it is taken.
    void Add(Job job, std::uint64_t bytes = 0) {
        waiting_.push_back({PendingJob<Result>(workers_, std::move(job)), bytes});
        bytes_ += bytes;
    }
    // Whether the oldest job's result is there to be taken without waiting.
    bool IsReady() const { return !waiting_.empty() && waiting_.front().job.IsReady(); }

    // The result of the oldest job, which there must be; PendingJob::Take tells the rest.
    template <typename WhileWaiting>
    Result TakeNext(WhileWaiting&& whileWaiting) {
        struct Leave {
            JobQueue& queue;
            ~Leave() {
                if (queue.waiting_.front().job.IsThere()) return;
                queue.bytes_ -= queue.waiting_.front().bytes;
                queue.waiting_.pop_front();
            }
        } const leave{*this};
        return waiting_.front().job.Take(whileWaiting);
    }

    // Drops what is not taken, as at the end.
    void Clear() {
        waiting_.clear();
        bytes_ = 0;
    }

  private:
    struct Waiting {
        PendingJob<Result> job;
        std::uint64_t bytes;
    };
    Workers& workers_;
    Limits limits_;
    std::deque<Waiting> waiting_;
    std::uint64_t bytes_ = 0;
};

}  // namespace vantrel
