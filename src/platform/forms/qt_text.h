#pragma once

#include <QString>
#include <string>
#include <string_view>

namespace vantrel {

// The engine's texts are UTF-8; nothing is lost on the way to a window and back.
inline QString ToQString(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}
inline std::string FromQString(const QString& text) {
    return text.toStdString();
}

// A name or path of the engine as a label shows it: what would disturb a line is replaced by stand-ins.
QString DisplayQString(std::string_view name);

// A message of the engine as a widget shows it: CR LF become the widget's own line ends.
QString MessageQString(std::string_view text);

// A path without a blank would push a label's window over the edge of the screen: a long run of characters
// gets places where the line may break. Texts without such a run stay as they are.
QString WithLineBreaks(const QString& text);

// Paths as Qt's file dialogs take and give them. Qt cannot hold a name that is not valid UTF-8: the path of
// such an object goes out with replacement characters, and cannot be chosen in a dialog.
QString DialogPath(std::string_view path);
std::string FromDialogPath(const QString& path);

}  // namespace vantrel
