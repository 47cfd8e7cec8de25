#include "support/places.h"

namespace vantrel::testing {

std::string AssetsFolder() {
    return VANTREL_ASSETS;
}

}  // namespace vantrel::testing
