#include "support/plain_user.h"

#include <grp.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <exception>
#include <filesystem>
#include <stdexcept>
#include <string>

#include "support/child_process.h"

namespace vantrel::testing {
namespace {

constexpr uid_t kPlainUser = 65534;

void Give(const std::string& folder) {
    if (lchown(folder.c_str(), kPlainUser, kPlainUser) != 0)
        throw std::runtime_error("cannot give " + folder);
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder))
        if (lchown(entry.path().c_str(), kPlainUser, kPlainUser) != 0)
            throw std::runtime_error("cannot give " + entry.path().string());
}

bool DropRights() {
    return setgroups(0, nullptr) == 0 && setresgid(kPlainUser, kPlainUser, kPlainUser) == 0 &&
           setresuid(kPlainUser, kPlainUser, kPlainUser) == 0;
}

// The text of all that failed in it; empty where nothing did.
std::string FailuresOf(const std::function<void()>& body) {
    const ::testing::TestResult& result = *::testing::UnitTest::GetInstance()->current_test_info()->result();
    const int before = result.total_part_count();
    std::string failures;
    try {
        body();
    } catch (const std::exception& exception) {
        failures = std::string("exception: ") + exception.what() + "\n";
    }
    for (int index = before; index < result.total_part_count(); ++index) {
        const ::testing::TestPartResult& part = result.GetTestPartResult(index);
        if (part.passed()) continue;
        failures += std::string(part.file_name() ? part.file_name() : "") + ":" +
                    std::to_string(part.line_number()) + ": " + part.message() + "\n";
    }
    return failures;
}

[[noreturn]] void RunChild(int report, const std::function<void()>& body) {
    const std::string failures = DropRights() ? FailuresOf(body) : "cannot drop the rights\n";
    for (std::size_t done = 0; done < failures.size();) {
        const ssize_t written = write(report, failures.data() + done, failures.size() - done);
        if (written <= 0) break;
        done += static_cast<std::size_t>(written);
    }
    _exit(failures.empty() ? 0 : 1);
}

}  // namespace

void AsPlainUser(const TempFolder& folder, const std::function<void()>& body) {
    if (geteuid() != 0) return body();
    Give(folder.Path());
    std::array<int, 2> ends{};
    if (pipe(ends.data()) != 0) throw std::runtime_error("no pipe");
    const pid_t child = ForkAlone();
    if (child < 0) throw std::runtime_error("no child process");
    if (child == 0) RunChild(ends[1], body);

    close(ends[1]);
    std::string failures;
    std::array<char, 4096> buffer{};
    for (ssize_t got = 0; (got = read(ends[0], buffer.data(), buffer.size())) > 0;)
        failures.append(buffer.data(), static_cast<std::size_t>(got));
    close(ends[0]);
    int status = 0;
    waitpid(child, &status, 0);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0)
        << "as a plain user, status " << status << ":\n"
        << failures;
}

}  // namespace vantrel::testing
