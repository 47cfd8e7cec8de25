#pragma once

#include <cstddef>
#include <string>

#include "dupes/cls_dupe_settings.h"

namespace vantrel {

// The folders of the list, which bear a mark where no rule may mark a file below them. Each writes the
// settings.

bool IsProtectedFolder(const clsDupeSettings& settings, const std::string& folder);
void SetProtectedFolder(clsDupeSettings& settings, const std::string& folder, bool on);

// Takes the folder of this number out of the list, and its mark with it.
void RemoveSearchFolder(clsDupeSettings& settings, std::size_t number);
// A folder of the list has another path now: the mark moves with it.
void MoveProtection(clsDupeSettings& settings, const std::string& from, const std::string& to);

}  // namespace vantrel
