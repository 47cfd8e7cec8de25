#include "support/places.h"

namespace vantrel::testing {

std::string AssetsFolder() {
    return VANTREL_ASSETS;
}

std::string HelpFolder() {
    return VANTREL_HELP;
}

}  // namespace vantrel::testing
