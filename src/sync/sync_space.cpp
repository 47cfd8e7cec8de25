#include "sync/sync_space.h"

#include "fileops/space_check.h"
#include "platform/names/paths.h"

namespace vantrel {

bool SpaceSufficesOrUserGoesOn(const Toolbox& tools, const SyncPlan& plan, std::string_view routineName) {
    constexpr const char* kTitle = "Synchronization";
    SyncSpaceAnswer answer;
    const SpaceAnswer drive =
        DecideOnSpace(tools, routineName, kTitle, std::string(kTargetTrouble), [&](SpaceAnswer&) {
            PerSide<std::string> drives;
            PerSide<Currency> available;
            for (Side side : kBothSides) {
                drives[side] = tools.volumes.GetDriveName(plan.folders[side]);
                // A drive that cannot be told stops nothing; one that is gone does.
                if (!drives[side].empty() && !tools.volumes.IsReady(drives[side]))
                    throw ErrorException(
                        Error(ErrorNumber::PathNotFound, "Path not found \"" + plan.folders[side] + "\""));
                available[side] = tools.volumes.GetAvailableDriveSpace(drives[side]);
            }
            answer = EnoughSpaceForSync(SpaceNeededBySync(plan), drives, available);
        });
    if (!drive.enough) return false;
    if (answer.enough) return true;
    const std::string text =
        "There may not be enough space available on drive " + answer.drive +
        ".\r\n\r\nSpace Required: " + ConvertBytesToCorrectByteTypeString(answer.required) +
        "\r\nSpace Available: " + ConvertBytesToCorrectByteTypeString(answer.available) +
        "\r\n\r\nPress OK to continue with the synchronization, or Cancel to abort.";
    return tools.messages.Ask(
               {"Low Disk Space", text, MessageIcon::Information, MessageButtons::OkCancel, {}}) !=
           MessageAnswer::Cancel;
}

}  // namespace vantrel
