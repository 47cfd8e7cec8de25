#include "fileops/drive_warning.h"

namespace vantrel {

MessageAnswer AskToDeleteForGood(MessagePort& messages, DriveKind kind) {
    const bool removable = kind == DriveKind::Removable;
    if (!removable && kind != DriveKind::Remote) return MessageAnswer::Yes;
    return messages.Ask({removable ? "Delete from Removeable Drive" : "Delete from Network Drive",
                         std::string(removable ? "Files on removeable drives are not sent to the Recycle Bin."
                                               : "Files on network drives are not sent to the Recycle Bin.") +
                             "\r\n\r\nThey are permanently deleted.\r\n\r\nDo you still wish to continue?",
                         MessageIcon::Question,
                         MessageButtons::YesNo,
                         {}});
}

}  // namespace vantrel
