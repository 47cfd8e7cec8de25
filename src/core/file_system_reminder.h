#pragma once

#include <string>

#include "core/ccompare.h"
#include "core/side.h"
#include "core/toolbox.h"

namespace vantrel {

// An ending of a completed comparison: tells, once in a run of the program, of the times of files where one
// of `folders` is on FAT and the other on NTFS, and an option that deals with them is off.
void RemindAboutFileSystems(const Toolbox& tools, CCompare& compare, const PerSide<std::string>& folders);

}  // namespace vantrel
