#include "core/cdir.h"
#include "main/application.h"
#include "main/commands/handlers.h"
#include "platform/names/paths.h"

namespace vantrel {
namespace {

// Both path boxes to their parents, then a comparison. A box at a root stays there.
void CompareParents(Application& application) {
    frmMain& window = application.Window();
    PerSide<std::string> paths;
    for (const Side side : kBothSides) {
        paths[side] = window.PathText(side);
        if (paths[side].empty()) return;
    }
    for (const Side side : kBothSides) window.SetPathText(side, CDir::GetParentDir(paths[side]));
    application.GetCommands().Run("mnuFileCompareDirectories");
}

}  // namespace

void InstallCompareCommands(Application& application) {
    Commands& commands = application.GetCommands();
    commands.SetHandler("mnuFileCompareDirectories",
                        [&application] { application.CompareDirs(CompareEnding::Announced); });
    commands.SetHandler("mnuFileCompareParents", [&application] { CompareParents(application); });
    commands.SetHandler("mnuFileExit", [&application] { application.Window().close(); });
}

}  // namespace vantrel
