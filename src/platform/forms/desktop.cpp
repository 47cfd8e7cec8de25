#include "platform/forms/desktop.h"

#include <QByteArray>
#include <QDesktopServices>
#include <QProcess>
#include <QUrl>

#include "platform/forms/text_editor.h"
#include "platform/names/uri_list.h"

namespace vantrel {
namespace {

// From encoded bytes: a name that is no valid text reaches the other program as it stands on the disk.
bool OpenEncoded(const std::string& uri) {
    return QDesktopServices::openUrl(QUrl::fromEncoded(QByteArray::fromStdString(uri), QUrl::StrictMode));
}

}  // namespace

bool QtDesktop::OpenFile(const std::string& path) {
    return OpenEncoded(FileUri(path));
}

bool QtDesktop::OpenInTextEditor(const std::string& path) {
    const QStringList command = TextEditorCommand(DesktopFolders::OfThisUser(), path);
    return !command.isEmpty() && QProcess::startDetached(command.first(), command.mid(1));
}

bool QtDesktop::Explore(const std::string& folder) {
    return OpenEncoded(FileUri(folder));
}

bool QtDesktop::OpenAddress(const std::string& address) {
    return OpenEncoded(address);
}

}  // namespace vantrel
