#include "core/file_system_reminder.h"

namespace vantrel {

void RemindAboutFileSystems(const Toolbox& tools, CCompare& compare, const PerSide<std::string>& folders) {
    if (!compare.RemindAboutFATNTFSIssue || compare.AlreadyNotifiedAboutFATNTFS) return;
    if (compare.IgnoreFAT_NTFS_DaylightSavings && compare.IgnoreFAT_NTFS_TwoSecDiff) return;
    PerSide<std::string> systems;
    for (const Side side : kBothSides)
        systems[side] = tools.volumes.GetFileSystemName(tools.volumes.GetDriveName(folders[side]));
    const std::string &left = systems[Side::Left], &right = systems[Side::Right];
    if (!(left == "FAT" && right == "NTFS") && !(left == "NTFS" && right == "FAT")) return;
    tools.messages.ShowInformationMessage(
        "File System Message",
        "Vantrel has detected that you are comparing files between FAT and NTFS drives.\r\n\r\n"
        "These File Systems handle timestamps differently.\r\n"
        "Vantrel provides options to deal with these differences.\r\n\r\n"
        "See the Help file section 'FAT vs NTFS file time' for details.\r\n\r\n"
        "This reminder can be turned off from the Compare tab on the Options window.");
    compare.AlreadyNotifiedAboutFATNTFS = true;
}

}  // namespace vantrel
