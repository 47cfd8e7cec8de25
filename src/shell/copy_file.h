#pragma once

#include <functional>

#include "shell/shell_run.h"

namespace vantrel::shell {

// How one file is copied; the engine that walks the folders stands above.
struct CopyFileOptions {
    bool replace = false;  // whether something stands at the target that may go
    bool verify = false;   // compare the copy with the source before it is given its name
    // Called after every slice with the bytes copied since the last call; false cancels: -ECANCELED.
    std::function<bool(std::uint64_t)> onSlice;
    std::function<void()> onRestart;  // the file changed meanwhile: the bytes told of count for nothing
};

struct CopiedFile {
    Statx source;  // as it was when copied
    FileId target;
};

// Copies the regular file `from` to `to`, by a temporary file that is renamed when it is whole: content,
// owner, mode, extended attributes, times. Fails with -EEXIST's error when something appears at `to` that was
// not there. A source that goes on changing is an error. Cancelled: the error's SystemNumber is ECANCELED.
Error CopyRegularFile(Shared& shared, const Place& from, const Place& to, const CopyFileOptions& options,
                      CopiedFile& copied);
Error CopyLink(Shared& shared, const Place& from, const Place& to, bool replace, CopiedFile& copied);

// Owner, mode, extended attributes and times from one open file or folder to another. What the target's file
// system cannot hold is left out without an error.
int CopyAttributes(SystemCalls& calls, int from, const Statx& fromStat, int to, const Statx& toStat,
                   bool targetInheritsAcl);

}  // namespace vantrel::shell
