#pragma once

#include <QApplication>
#include <QTabWidget>

namespace vantrel::testing {

// What every window of the program keeps to, held against one that is shown. Each fault is a failure that
// names the control. Of a window with tabs every tab is looked at.
void ExpectNamesForScreenReaders(QWidget& window);
// Marked letters: of buttons, labels, groups and menus in view, and within each menu.
void ExpectAccessKeysWithoutClashes(QWidget& window);
// Tab leads to every control that takes the focus.
void ExpectReachableByTab(QWidget& window);
// The size below which the window does not go.
QSize LeastSize(const QWidget& window);
// On a screen of 800 by 500 there is room for it and its frame.
void ExpectFitsSmallScreen(QWidget& window);
// A list that has rows has a current one once it is reached, since screen readers ask for it. The panes are
// let off: theirs is the row that the user has selected, if any.
void ExpectCurrentRows(QWidget& window);
// Enter presses a button, and the same one again after another had the focus; a dialog that only shows how
// far something has come has none.
void ExpectDefaultButton(QWidget& window);

// Calls `look` for each tab of the window, which is then in view; once where there are no tabs.
template <typename Look>
void ForEachTab(QWidget& window, Look look) {
    auto* tabs = window.findChild<QTabWidget*>();
    if (tabs == nullptr) return look();
    const int before = tabs->currentIndex();
    for (int tab = 0; tab < tabs->count(); ++tab) {
        if (!tabs->isTabEnabled(tab)) continue;
        tabs->setCurrentIndex(tab);
        QApplication::processEvents();
        look();
    }
    tabs->setCurrentIndex(before);
}

}  // namespace vantrel::testing
