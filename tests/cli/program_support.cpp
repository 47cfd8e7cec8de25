#include "program_support.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QByteArray>
#include <QJsonDocument>
#include <array>
#include <sstream>
#include <stdexcept>

extern char** environ;

namespace vantrel::testing {

namespace {

// Opened before any test gives up its rights: it may lie where only root can look.
const std::string kProgramFile = "/proc/self/fd/" + std::to_string(open(VANTREL_CLI, O_PATH | O_CLOEXEC));

struct Pipe {
    Pipe() {
        if (pipe(ends.data()) != 0) throw std::runtime_error("no pipe");
    }
    ~Pipe() {
        for (const int end : ends)
            if (end >= 0) close(end);
    }
    void CloseWriting() {
        close(ends[1]);
        ends[1] = -1;
    }
    std::array<int, 2> ends{};
};

// Both at once, so that neither can fill its pipe while nobody reads it.
void ReadBoth(const Pipe& first, std::string& a, const Pipe& second, std::string& b) {
    std::array<pollfd, 2> waiting{{{first.ends[0], POLLIN, 0}, {second.ends[0], POLLIN, 0}}};
    const std::array<std::string*, 2> texts{&a, &b};
    std::array<char, 65536> buffer{};
    for (std::size_t open = 2; open > 0;) {
        poll(waiting.data(), waiting.size(), -1);
        for (std::size_t index = 0; index < 2; ++index) {
            if (waiting[index].fd < 0 || waiting[index].revents == 0) continue;
            const ssize_t got = read(waiting[index].fd, buffer.data(), buffer.size());
            if (got > 0) {
                texts[index]->append(buffer.data(), static_cast<std::size_t>(got));
            } else {
                waiting[index].fd = -1;
                --open;
            }
        }
    }
}

}  // namespace

std::string ConsoleProgram() {
    return VANTREL_CLI;
}

ProgramRun RunProgram(const std::vector<std::string>& arguments,
                      const std::function<void(pid_t)>& whileRunning) {
    std::vector<std::string> words = {ConsoleProgram()};
    words.insert(words.end(), arguments.begin(), arguments.end());
    std::vector<char*> pointers;
    pointers.reserve(words.size() + 1);
    for (std::string& word : words) pointers.push_back(word.data());
    pointers.push_back(nullptr);

    Pipe out, err;
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_adddup2(&actions, out.ends[1], STDOUT_FILENO);
    posix_spawn_file_actions_adddup2(&actions, err.ends[1], STDERR_FILENO);
    for (const int end : {out.ends[0], out.ends[1], err.ends[0], err.ends[1]})
        posix_spawn_file_actions_addclose(&actions, end);
    pid_t process = 0;
    const int failure =
        posix_spawn(&process, kProgramFile.c_str(), &actions, nullptr, pointers.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    if (failure != 0) throw std::runtime_error("the program cannot be started");
    out.CloseWriting();
    err.CloseWriting();

    if (whileRunning) whileRunning(process);
    ProgramRun run;
    ReadBoth(out, run.out, err, run.err);
    int status = 0;
    waitpid(process, &status, 0);
    run.status = WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
    return run;
}

std::vector<QJsonObject> Objects(const std::string& text) {
    std::vector<QJsonObject> objects;
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) {
        QJsonParseError error;
        const QJsonDocument document = QJsonDocument::fromJson(QByteArray::fromStdString(line), &error);
        EXPECT_EQ(QJsonParseError::NoError, error.error) << line;
        objects.push_back(document.object());
    }
    return objects;
}

}  // namespace vantrel::testing
