#include "modal_support.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QPushButton>
#include <QTest>
#include <algorithm>

namespace vantrel::testing {

ModalScript::ModalScript() {
    QObject::connect(&timer_, &QTimer::timeout, &timer_, [this] { Look(); });
    timer_.start(0);
}

ModalScript::~ModalScript() {
    for (; next_ < steps_.size(); ++next_) ADD_FAILURE() << steps_[next_].name << " did not come";
}

ModalScript& ModalScript::Await(const char* name, Act act) {
    steps_.push_back({name, std::move(act)});
    return *this;
}

void ModalScript::Look() {
    QWidget* window = QApplication::activeModalWidget();
    if (!window || std::find(seen_.begin(), seen_.end(), window) != seen_.end()) return;
    const std::string name = window->objectName().toStdString();
    if (name == "frmCompareProgress" || name == "frmShellProgress") return;
    seen_.emplace_back(window);
    if (next_ < steps_.size() && steps_[next_].name == name) {
        // It may open the next window, which this object then has to see: a timer is not heard again before
        // what it called has returned, so that the step is called by another one.
        QTimer::singleShot(0, window, [act = steps_[next_++].act, window] { act(*window); });
        return;
    }
    ADD_FAILURE() << "unexpected window " << name << " " << window->windowTitle().toStdString();
    QTest::keyClick(window, Qt::Key_Escape);
}

void PressChild(QWidget& window, const char* name) {
    auto* child = window.findChild<QWidget*>(QString::fromLatin1(name));
    ASSERT_NE(child, nullptr) << name;
    QTest::keyClick(child, Qt::Key_Space);
}

void PressButton(QWidget& window, const char* text) {
    for (QPushButton* button : window.findChildren<QPushButton*>())
        if (button->text().remove(QLatin1Char('&')) == QString::fromLatin1(text))
            return QTest::keyClick(button, Qt::Key_Space);
    ADD_FAILURE() << "no button " << text;
}

}  // namespace vantrel::testing
