#pragma once

#include "diagnostics/csound_settings.h"
#include "settings/options.h"

namespace vantrel {

void ApplyOptions(const Options& options, CSoundSettings& sounds);
void CollectOptions(const CSoundSettings& sounds, Options& options);

}  // namespace vantrel
