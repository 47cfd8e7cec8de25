#pragma once

#include "platform/files/volumes.h"
#include "platform/ports.h"

namespace vantrel {

// Removable and network drives have no Recycle Bin for the user: asks whether to delete for good instead. Yes
// at once for every other drive.
MessageAnswer AskToDeleteForGood(MessagePort& messages, DriveKind kind);

}  // namespace vantrel
