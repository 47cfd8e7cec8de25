#pragma once

#include <sys/types.h>

namespace vantrel::testing {

// fork(2) for a child that goes on with the code of the test. Waits first, for some seconds at most, until no
// other thread of this process is left: one that is just ending may hold a lock of the allocator, which the
// child would then wait for without end. A child that hangs all the same is ended by SIGALRM after two
// minutes.
pid_t ForkAlone();

}  // namespace vantrel::testing
