#pragma once

#include <string>

#include "platform/ports.h"

namespace vantrel {

enum class StoreAccess { Get, Set };

// The checks that CIniFile and CRegistry make before each access. False after a message titled `title`.
bool IsStoreReady(MessagePort& messages, const std::string& title, StoreAccess access,
                  const std::string& name, const std::string& section, const std::string& key);

}  // namespace vantrel
