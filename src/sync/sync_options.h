#pragma once

#include "settings/options.h"
#include "sync/csync_settings.h"

namespace vantrel {

// Between the settings file and the action table. The stored cells are taken as they stand, whatever the
// method: nothing forces them to be those of the method in a file that was edited by hand.
void ApplyOptions(const Options& options, CSyncSettings& settings);
void CollectOptions(const CSyncSettings& settings, Options& options);

}  // namespace vantrel
