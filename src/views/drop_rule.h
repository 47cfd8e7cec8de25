#pragma once

#include <string>
#include <vector>

#include "core/toolbox.h"

namespace vantrel {

enum class DropAction { None, Copy, Move };

struct DropKeys {
    bool control = false;
    bool shift = false;
};

// Control copies and wins over Shift, which moves; with neither a drop moves within a drive and copies across
// drives.
constexpr DropAction DropActionFor(DropKeys keys, bool onSameDrive) {
    if (keys.control) return DropAction::Copy;
    if (keys.shift) return DropAction::Move;
    return onSameDrive ? DropAction::Move : DropAction::Copy;
}

// What is to be done with `paths` that were dropped on `targetFolder`. None without paths, and where the
// first of them does not exist, of which the user is told.
DropAction ProcessOLEDragDrop(const Toolbox& tools, const std::vector<std::string>& paths,
                              const std::string& targetFolder, DropKeys keys);

}  // namespace vantrel
