#pragma once

#include <QIcon>

#include <functional>
#include <string_view>

#include "core/result_row.h"

namespace vantrel {

// The small picture of a result type, in colour (img16IconColor) or gray (img16IconGray). May give a null
// icon, which leaves the place empty.
using ResultIcons = std::function<QIcon(ResultType, bool colour)>;

// The tip of the toggle of a result type, which also says what the type is.
std::string_view ViewToggleTip(ResultType type);

}  // namespace vantrel
