#include "support/places.h"

namespace vantrel::testing {

std::string AssetsFolder() {
    return VANTREL_ASSETS;
}

std::string HelpFolder() {
    return VANTREL_HELP;
}

std::string SourceFolder() {
    return VANTREL_SOURCES;
}

}  // namespace vantrel::testing
