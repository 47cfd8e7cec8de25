#pragma once

#include "shell/shell_run.h"

namespace vantrel::shell {

// The user's own trash folders, by what they are and not by their names, take part in nothing: what an
// operation on a folder above them does leaves them, and the folders on the way to them, alone.

// `folder` is one of them: an error.
Error RefuseTrash(Shared& shared, const Folder& folder);
// The folder at `place`, which would go as a whole, is one of them or holds one.
Error RefuseTrashWithin(Shared& shared, const Place& place);

}  // namespace vantrel::shell
