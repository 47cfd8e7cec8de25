#pragma once

#include <QPlainTextEdit>
#include <QPushButton>
#include <QString>
#include <string>

#include "core/toolbox.h"
#include "diagnostics/forms/frm_error_log.h"
#include "platform/forms/qt_text.h"

namespace vantrel {

// Shows a text that stands in no file, until the user closes its window.
inline void ShowText(const Toolbox& tools, const QString& caption, const std::string& text, QWidget* parent) {
    frmErrorLog viewer(tools.files, tools.reporter, parent);
    viewer.setWindowTitle(caption);
    viewer.txtMsg->setPlainText(MessageQString(text));
    // There is no file behind this text that could be emptied.
    viewer.cmdClear->hide();
    viewer.exec();
}

}  // namespace vantrel
