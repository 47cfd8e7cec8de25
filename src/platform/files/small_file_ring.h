#pragma once

#include <array>
#include <cstddef>
#include <memory>

#include "platform/files/system_calls.h"

struct io_uring;

namespace vantrel {

// Reads small files through a queue that is shared with the kernel (io_uring): opening, reading and closing
// of several files cost two calls in all, and no descriptors. Of the thread that asked for it.
class SmallFileRing {
  public:
    // Null where the system has none (Linux before 6.1), or lets this process have none, as in many
    // containers.
    static SmallFileRing* OfThisThread();

    ~SmallFileRing();
    SmallFileRing(const SmallFileRing&) = delete;
    SmallFileRing& operator=(const SmallFileRing&) = delete;

    // As SystemCalls::ReadSmallFiles, of at most SmallFile::kMost.
    bool Read(SmallFile* files, std::size_t count);

  private:
    using Answers = std::array<int, SmallFile::kMost>;  // a count, or minus the errno value
    struct Release {
        void operator()(char* bytes) const;
    };
    SmallFileRing();
    bool Begin();
    bool Await(unsigned count, Answers& answers);
    bool CheckEnds(Answers& sizes, std::size_t count);
    bool CloseAll(std::size_t count);
    void GiveUp();

    std::unique_ptr<io_uring> ring_;  // null where there is none (any more)
    std::unique_ptr<char, Release> bytes_;
};

}  // namespace vantrel
