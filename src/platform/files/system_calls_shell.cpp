// The calls that only the shell operations make.
#include <fcntl.h>
#include <sys/file.h>
#include <sys/xattr.h>
#include <csignal>

#include <cerrno>
#include <initializer_list>

#include "platform/files/system_calls.h"

namespace vantrel {

int SystemCalls::RemoveXattr(int fd, const char* name) {
    return fremovexattr(fd, name) == 0 ? 0 : -errno;
}

int SystemCalls::Lock(int fd, int operation) {
    int result = 0;
    do {
        result = flock(fd, operation);
    } while (result != 0 && errno == EINTR);
    return result == 0 ? 0 : -errno;
}

int SystemCalls::StartWriting(int fd, off_t offset, off_t length) {
    return sync_file_range(fd, offset, length, SYNC_FILE_RANGE_WRITE) == 0 ? 0 : -errno;
}

int SystemCalls::ProcessExists(pid_t process) {
    return kill(process, 0) == 0 || errno == EPERM ? 0 : -errno;
}

namespace {

// Not SIG_IGN, which a started program would take over.
extern "C" void DoNothing(int) {
}

}  // namespace

void TakeWriteErrorsAsValues() {
    struct sigaction action {};
    action.sa_handler = DoNothing;
    action.sa_flags = SA_RESTART;
    for (const int number : {SIGPIPE, SIGXFSZ}) {
        struct sigaction old {};
        sigaction(number, nullptr, &old);
        if (old.sa_handler == SIG_DFL) sigaction(number, &action, nullptr);
    }
}

}  // namespace vantrel
