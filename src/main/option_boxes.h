#pragma once

#include <cstdint>
#include <span>
#include <string_view>

#include "settings/option_table.h"

namespace vantrel {

// The tabs of the options window, by number.
enum class OptionTab : std::uint8_t {
    General = 1,
    Compare,
    IncludeExclude,
    Synchronize,
    Sounds,
    Appearance,
    ViewFileDiffs,
    FindDupes,
    Extras,
};
inline constexpr int kOptionTabs = 9;

// Its caption, and the place of the help that tells of all of it.
struct OptionTabInfo {
    OptionTab tab;
    std::string_view caption;
    std::string_view help;  // file and anchor below docs/help
};
std::span<const OptionTabInfo> OptionTabs();

// Where an option stands in the options window.
struct OptionBox {
    std::string_view key;  // of the option table
    OptionTab tab;
    std::string_view control;  // name of the control; several options may share one
    std::string_view caption;  // as the window and the help name it, with the mark of its access key
    std::string_view help;     // file and anchor below docs/help, where the caption stands
    std::string_view tip;      // what it does, in a plain sentence
};

// In the order of their tabs. A toggle of the menu has here the caption and the place of its line in the
// option table. Of the options that are not here, each keeps a state that another window shows and changes.
std::span<const OptionBox> OptionBoxes();
const OptionBox& BoxOf(std::string_view key);
// Nothing where the option stands in no box.
const OptionBox* FindBox(std::string_view key);

}  // namespace vantrel
