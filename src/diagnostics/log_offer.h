#pragma once

#include "platform/ports.h"

namespace vantrel {

// Tells the user that a comparison met errors, which went to the log. True where they want to see it now.
bool OfferErrorLog(MessagePort& messages);

}  // namespace vantrel
