#pragma once

#include <string>
#include <string_view>

#include "platform/files/system_calls.h"

namespace vantrel {

// A path in the system's bytes, brought into the reach of one call: a path that is too long for that is
// walked in steps, each relative to the folder before. For the sources of the file system only.
class LocatedPath {
  public:
    // `path` is in the engine's form; "/" at its end is dropped.
    LocatedPath(SystemCalls& calls, std::string_view path);
    // `bytes` is a path relative to the open folder `base`, which stays the caller's.
    LocatedPath(SystemCalls& calls, int base, std::string bytes);
    ~LocatedPath();
    LocatedPath(const LocatedPath&) = delete;
    LocatedPath& operator=(const LocatedPath&) = delete;

    // 0, or minus the errno value of the step that failed; then nothing else has a meaning.
    int Failure() const { return failure_; }
    // The arguments of a call with "at" in its name.
    int Folder() const { return folder_; }
    const char* Rest() const { return bytes_.c_str() + rest_; }

    // An open descriptor of the folder that holds the last part, which the caller closes, or minus the errno
    // value. It can be read and synchronised where the user may list that folder.
    int OpenParent(std::string& lastPart) const;

  private:
    void WalkWhileTooLong();
    int OpenStep(int folder, const std::string& step) const;

    SystemCalls& calls_;
    std::string bytes_;
    std::size_t rest_ = 0;
    int folder_;
    int owned_ = -1;
    int failure_ = 0;
};

}  // namespace vantrel
