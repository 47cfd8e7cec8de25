#pragma once

#include <span>
#include <string_view>

#include "core/side.h"
#include "views/forms/command_entry.h"

namespace vantrel {

// All that the commands of frmFileDiffs are made from.
CommandTables FileDiffTables();

// A button of Toolbar1. Between buttons whose indices do not follow each other stands a separator.
struct DiffToolbarEntry {
    int index;
    std::string_view command;
    std::string_view icon;
    std::string_view tip;
};
std::span<const DiffToolbarEntry> FileDiffToolbar();

// The item that has a side's file read in an encoding: 0 is the one that is found by itself, the others are
// those of OfferedEncodings, from 1.
std::string_view EncodingItem(Side side, std::size_t number);

}  // namespace vantrel
