#pragma once

#include <sys/types.h>

#include <QJsonObject>
#include <functional>
#include <string>
#include <vector>

namespace vantrel::testing {

struct ProgramRun {
    int status = -1;  // of exit; minus the number of the signal that ended it
    std::string out, err;
};

// The full path of vantrel-cli.
std::string ConsoleProgram();

// Runs vantrel-cli to its end, with nobody at its standard input. `whileRunning` is called with its process
// id right after the start.
ProgramRun RunProgram(const std::vector<std::string>& arguments,
                      const std::function<void(pid_t)>& whileRunning = {});

// Each line of an output as a JSON object of its own; one that is none fails the test.
std::vector<QJsonObject> Objects(const std::string& text);

}  // namespace vantrel::testing
