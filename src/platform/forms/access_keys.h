#pragma once

#include <QSet>
#include <QWidget>

namespace vantrel {

// The letters that are marked as access keys in a window's labels and buttons, upper case.
QSet<QChar> AccessKeysOf(const QWidget& window);

// Marks a letter in the caption of each button, and of each label that stands for a control, below `window`
// that has none yet: the first letter of a word where one is free, no letter twice and none of `taken`. What
// finds no free letter stays without.
void GiveAccessKeys(QWidget& window, QSet<QChar> taken);

}  // namespace vantrel
