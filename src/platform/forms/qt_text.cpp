#include "platform/forms/qt_text.h"

#include <QFile>

#include "platform/names/names.h"

namespace vantrel {

QString DisplayQString(std::string_view name) {
    return ToQString(DisplayName(name));
}

QString MessageQString(std::string_view text) {
    QString shown = ToQString(text);
    shown.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    return shown;
}

QString WithLineBreaks(const QString& text) {
    constexpr qsizetype kLongestRun = 100;
    QString result;
    qsizetype run = 0;
    for (const QChar character : text) {
        run = character.isSpace() ? 0 : run + 1;
        result += character;
        if (run >= kLongestRun && !character.isHighSurrogate()) {
            result += QChar(0x200B);
            run = 0;
        }
    }
    return result;
}

QString DialogPath(std::string_view path) {
    return QFile::decodeName(QByteArray::fromStdString(NameToSystem(path)));
}

std::string FromDialogPath(const QString& path) {
    return NameFromSystem(QFile::encodeName(path).toStdString());
}

}  // namespace vantrel
