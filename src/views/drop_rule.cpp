#include "views/drop_rule.h"

namespace vantrel {

DropAction ProcessOLEDragDrop(const Toolbox& tools, const std::vector<std::string>& paths,
                              const std::string& targetFolder, DropKeys keys) {
    if (paths.empty()) return DropAction::None;
    const std::string& first = paths.front();
    if (!tools.files.Exists(first)) {
        tools.messages.Ask({.title = "Drag and Drop",
                            .text = "The path " + first + " was not found.",
                            .icon = MessageIcon::Warning,
                            .defaultAnswer = {}});
        return DropAction::None;
    }
    return DropActionFor(keys, tools.volumes.OnSameDrive(first, targetFolder));
}

}  // namespace vantrel
