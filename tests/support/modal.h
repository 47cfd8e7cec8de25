#pragma once

#include <QApplication>
#include <QTimer>
#include <QWidget>
#include <functional>

namespace vantrel::testing {

// Runs `act` on the modal window once it stands.
inline void WhenModal(const std::function<void(QWidget*)>& act) {
    QTimer::singleShot(0, [act] {
        if (QWidget* window = QApplication::activeModalWidget()) {
            act(window);
        } else {
            WhenModal(act);
        }
    });
}

}  // namespace vantrel::testing
