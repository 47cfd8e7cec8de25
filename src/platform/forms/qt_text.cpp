#include "platform/forms/qt_text.h"

#include <QFile>

#include "platform/names.h"

namespace vantrel {

QString DisplayQString(std::string_view name) {
    return ToQString(DisplayName(name));
}

QString MessageQString(std::string_view text) {
    QString shown = ToQString(text);
    shown.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    return shown;
}

QString DialogPath(std::string_view path) {
    return QFile::decodeName(QByteArray::fromStdString(NameToSystem(path)));
}

std::string FromDialogPath(const QString& path) {
    return NameFromSystem(QFile::encodeName(path).toStdString());
}

}  // namespace vantrel
