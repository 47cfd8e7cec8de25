#pragma once

#include <QLatin1String>

namespace vantrel {

// Gives a control its object name, which tests and style sheets find it by.
template <typename Control>
Control* Named(Control* control, const char* name) {
    control->setObjectName(QLatin1String(name));
    return control;
}

// A control with its caption and its object name, for a layout that becomes its owner.
template <typename Control>
Control* MakeNamed(const char* caption, const char* name) {
    return Named(new Control(QLatin1String(caption)), name);
}

}  // namespace vantrel
