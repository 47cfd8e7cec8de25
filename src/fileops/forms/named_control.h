#pragma once

#include <QLatin1String>

namespace vantrel {

// A control with its caption and its object name, for a layout that becomes its owner.
template <typename Control>
Control* MakeNamed(const char* text, const char* name) {
    auto* control = new Control(QLatin1String(text));
    control->setObjectName(QLatin1String(name));
    return control;
}

}  // namespace vantrel
