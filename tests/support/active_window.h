#pragma once

#include <QApplication>
#include <QTest>
#include <QWidget>

namespace vantrel::testing {

// Makes `window` the one that hears keys; false where it does not become so. A window of its own that has
// just gone counts as part of it until the events behind that have passed, which the toolkit's own wait
// overlooks.
inline bool Activate(QWidget& window) {
    window.activateWindow();
    return QTest::qWaitFor([&window] { return QApplication::activeWindow() == &window; });
}

}  // namespace vantrel::testing
