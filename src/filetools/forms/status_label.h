#pragma once

#include <QLabel>
#include <QLatin1String>

namespace vantrel {

// A label of a status line. Names of files are shown as they are, never as markup.
inline QLabel* StatusLabel(const char* name) {
    auto* label = new QLabel;
    label->setObjectName(QLatin1String(name));
    label->setTextFormat(Qt::PlainText);
    return label;
}

}  // namespace vantrel
