#include "platform/files/located_path.h"

#include <fcntl.h>

#include <cerrno>
#include <climits>
#include <utility>

#include "platform/names/names.h"

namespace vantrel {

namespace {

std::string WithoutSlashes(std::string bytes) {
    while (bytes.size() > 1 && bytes.back() == '/') bytes.pop_back();
    return bytes;
}

constexpr std::size_t kLongest = PATH_MAX - 1;

}  // namespace

LocatedPath::LocatedPath(SystemCalls& calls, std::string_view path)
    : LocatedPath(calls, AT_FDCWD, NameToSystem(path)) {
}

LocatedPath::LocatedPath(SystemCalls& calls, int base, std::string bytes)
    : calls_(calls), bytes_(WithoutSlashes(std::move(bytes))), folder_(base) {
    // A NUL would cut the path and so name another object.
    if (bytes_.find('\0') != std::string::npos)
        failure_ = -EINVAL;
    else
        WalkWhileTooLong();
}

LocatedPath::~LocatedPath() {
    if (owned_ >= 0) calls_.Close(owned_);
}

void LocatedPath::WalkWhileTooLong() {
    while (failure_ == 0 && bytes_.size() - rest_ > kLongest) {
        const std::size_t slash = bytes_.rfind('/', rest_ + kLongest);
        if (slash == std::string::npos || slash <= rest_) {
            failure_ = -ENAMETOOLONG;
            return;
        }
        const int next = calls_.OpenAt(folder_, bytes_.substr(rest_, slash - rest_).c_str(),
                                       O_PATH | O_DIRECTORY | O_CLOEXEC, 0);
        if (next < 0) {
            failure_ = next;
            return;
        }
        if (owned_ >= 0) calls_.Close(owned_);
        owned_ = folder_ = next;
        rest_ = bytes_.find_first_not_of('/', slash);
    }
}

int LocatedPath::OpenStep(int folder, const std::string& step) const {
    const int fd = calls_.OpenAt(folder, step.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC, 0);
    if (fd != -EACCES) return fd;
    return calls_.OpenAt(folder, step.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC, 0);
}

int LocatedPath::OpenParent(std::string& lastPart) const {
    if (failure_ != 0) return failure_;
    const std::string rest = Rest();
    if (rest.empty()) return -ENOENT;
    const std::size_t slash = rest.rfind('/');
    lastPart = rest.substr(slash + 1);  // npos + 1 is 0
    if (lastPart.empty()) lastPart = ".";
    if (slash == std::string::npos) return OpenStep(folder_, ".");
    return OpenStep(folder_, slash == 0 ? "/" : rest.substr(0, slash));
}

}  // namespace vantrel
