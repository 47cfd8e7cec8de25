#pragma once

#include <functional>
#include <string>
#include <vector>

namespace vantrel::bench {

// What stands in one line of a result: a command, or work of this program, done in a process of its own.
struct Contender {
    std::string name;
    std::vector<std::string> command;  // empty: `work`
    std::function<void()> work;
    double limit = 0;  // the first contender is to take at most so many times this one's time; 0: no limit
};

struct Timing {
    std::vector<double> seconds;
    long peakKilobytes = 0;  // of resident memory, the most of all runs

    double Median() const;
    double Least() const;
    double Most() const;
};

// Runs the contenders in turn, `rounds` times, so that what else the machine does meets all alike; standard
// output goes to /dev/null. One run before the rounds is not counted. `before` is called before each run.
std::vector<Timing> Measure(const std::vector<Contender>& contenders, int rounds,
                            const std::function<void()>& before = {});

// Measures and prints the times, and the first contender's ratio to each of the others.
void Report(const std::string& title, const std::vector<Contender>& contenders, int rounds,
            const std::function<void()>& before = {});

}  // namespace vantrel::bench
