#pragma once

#include "core/ccompare.h"
#include "settings/options.h"

namespace vantrel {

// The options of a comparison as the settings file holds them. Without SHA-1 on this machine that method
// falls back to size and date.
void ApplyOptions(const Options& options, CCompare& compare, bool sha1Available = true);
void CollectOptions(const CCompare& compare, Options& options);

}  // namespace vantrel
