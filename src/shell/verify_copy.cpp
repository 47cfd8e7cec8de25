#include "shell/verify_copy.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <vector>

#include "platform/error.h"
#include "platform/workers.h"

namespace vantrel::shell {
namespace {

constexpr std::size_t kBlock = std::size_t{256} << 10;  // two of them stay in the cache
constexpr std::uint64_t kStretch = kReadAtOnce;         // what one job reads of each file

int ReadBlock(SystemCalls& calls, int fd, std::uint64_t at, std::size_t wanted, std::vector<char>& block) {
    for (std::size_t got = 0; got < wanted;) {
        const ssize_t read = calls.PRead(fd, block.data() + got, wanted - got, static_cast<off_t>(at + got));
        if (read < 0) return static_cast<int>(read);
        if (read == 0) return 1;
        got += static_cast<std::size_t>(read);
    }
    return 0;
}

// From `at` to before `end`. `goOn` is asked for each block.
template <typename GoOn>
int CompareStretch(SystemCalls& calls, const OpenPair& pair, std::uint64_t at, std::uint64_t end,
                   const GoOn& goOn) {
    const std::size_t room = std::min<std::uint64_t>(end - at, kBlock);
    std::vector<char> source(room), copy(room);
    while (at < end) {
        if (!goOn()) return -ECANCELED;
        const std::size_t wanted = std::min<std::uint64_t>(end - at, room);
        if (const int failed = ReadBlock(calls, pair.source, at, wanted, source); failed != 0) return failed;
        if (const int failed = ReadBlock(calls, pair.copy, at, wanted, copy); failed != 0) return failed;
        if (std::memcmp(source.data(), copy.data(), wanted) != 0) return 1;
        at += wanted;
    }
    return 0;
}

int CompareSideBySide(SystemCalls& calls, const OpenPair& pair, std::size_t threads,
                      const std::function<bool()>& goOn) {
    Workers workers(threads);
    JobQueue<int> stretches(workers, {.jobs = 2 * workers.Count() + 1});
    const auto check = [&goOn] {
        if (!goOn()) throw Cancelled();
    };
    try {
        for (std::uint64_t next = 0; next < pair.size || !stretches.IsEmpty();) {
            for (; next < pair.size && stretches.HasRoom(); next += kStretch) {
                stretches.Add([&calls, pair, at = next,
                               end = std::min(next + kStretch, pair.size)](const StopFlag& stop) {
                    return CompareStretch(calls, pair, at, end, [&stop] { return !stop.IsRequested(); });
                });
            }
            if (const int different = stretches.TakeNext(check); different != 0) return different;
            check();
        }
    } catch (const Cancelled&) {
        return -ECANCELED;
    }
    return 0;
}

}  // namespace

int VerifyCopy(SystemCalls& calls, const OpenPair& pair, std::size_t threads,
               const std::function<bool()>& goOn) {
    if (threads == 0 || pair.size <= kReadAtOnce) return CompareStretch(calls, pair, 0, pair.size, goOn);
    return CompareSideBySide(calls, pair, threads, goOn);
}

}  // namespace vantrel::shell
