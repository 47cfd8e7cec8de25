#include "timed_command.h"

#include <fcntl.h>
#include <malloc.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <stdexcept>

namespace vantrel::bench {

namespace {

[[noreturn]] void RunChild(const Contender& contender) {
    dup2(open("/dev/null", O_WRONLY), STDOUT_FILENO);
    if (contender.command.empty()) {
        contender.work();
        _exit(0);
    }
    std::vector<char*> words;
    for (const std::string& word : contender.command) words.push_back(const_cast<char*>(word.c_str()));
    words.push_back(nullptr);
    execvp(words[0], words.data());
    _exit(127);
}

void RunOnce(const Contender& contender, Timing* timing) {
    std::fflush(nullptr);
    const auto start = std::chrono::steady_clock::now();
    const pid_t child = fork();
    if (child == 0) RunChild(contender);
    int status = 0;
    rusage usage{};
    if (child < 0 || wait4(child, &status, 0, &usage) != child)
        throw std::runtime_error("cannot start a process");
    const std::chrono::duration<double> took = std::chrono::steady_clock::now() - start;
    // 1 is how a comparison says that there are differences.
    if (!WIFEXITED(status) || WEXITSTATUS(status) > 1) throw std::runtime_error(contender.name + " failed");
    if (timing == nullptr) return;
    timing->seconds.push_back(took.count());
    timing->peakKilobytes = std::max(timing->peakKilobytes, usage.ru_maxrss);
}

}  // namespace

double Timing::Median() const {
    std::vector<double> sorted = seconds;
    std::sort(sorted.begin(), sorted.end());
    return sorted[sorted.size() / 2];
}

double Timing::Least() const {
    return *std::min_element(seconds.begin(), seconds.end());
}

double Timing::Most() const {
    return *std::max_element(seconds.begin(), seconds.end());
}

std::vector<Timing> Measure(const std::vector<Contender>& contenders, int rounds,
                            const std::function<void()>& before) {
    std::vector<Timing> timings(contenders.size());
    // What the making of the corpora left to be written would disturb the first rounds; the memory that it
    // left would be copied, and counted, with every process started here.
    sync();
    malloc_trim(0);
    for (int round = before ? 0 : -1; round < rounds; ++round) {
        for (std::size_t index = 0; index < contenders.size(); ++index) {
            if (before) before();
            RunOnce(contenders[index], round < 0 ? nullptr : &timings[index]);
        }
    }
    return timings;
}

void Report(const std::string& title, const std::vector<Contender>& contenders, int rounds,
            const std::function<void()>& before) {
    const std::vector<Timing> timings = Measure(contenders, rounds, before);
    std::printf("\n%s\n", title.c_str());
    const double ours = timings[0].Median();
    for (std::size_t index = 0; index < contenders.size(); ++index) {
        const Timing& timing = timings[index];
        std::printf("  %-34s %8.3f s  (%.3f to %.3f)  %6.1f MiB", contenders[index].name.c_str(),
                    timing.Median(), timing.Least(), timing.Most(),
                    static_cast<double>(timing.peakKilobytes) / 1024);
        if (index > 0) std::printf("  ratio %.2f", ours / timing.Median());
        if (contenders[index].limit > 0)
            std::printf("  (at most %.2f: %s)", contenders[index].limit,
                        ours <= contenders[index].limit * timing.Median() ? "met" : "MISSED");
        std::printf("\n");
    }
    std::fflush(stdout);
}

}  // namespace vantrel::bench
