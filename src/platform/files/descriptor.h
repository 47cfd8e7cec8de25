#pragma once

#include <utility>

#include "platform/files/system_calls.h"

namespace vantrel {

// An open descriptor, closed at the end of its life. A negative number, as a failed call gives it, is none.
class Descriptor {
  public:
    Descriptor() = default;
    Descriptor(SystemCalls& calls, int fd) : calls_(&calls), fd_(fd) {}
    Descriptor(Descriptor&& other) noexcept : calls_(other.calls_), fd_(std::exchange(other.fd_, -1)) {}
    Descriptor& operator=(Descriptor&& other) noexcept {
        Close();
        calls_ = other.calls_;
        fd_ = std::exchange(other.fd_, -1);
        return *this;
    }
    ~Descriptor() { Close(); }

    int Get() const { return fd_; }
    bool IsOpen() const { return fd_ >= 0; }
    // 0 or minus the errno value. Some file systems tell only here that the data could not be stored.
    int Close() { return fd_ < 0 ? 0 : calls_->Close(std::exchange(fd_, -1)); }

  private:
    SystemCalls* calls_ = nullptr;
    int fd_ = -1;
};

}  // namespace vantrel
