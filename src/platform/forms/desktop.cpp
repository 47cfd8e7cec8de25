#include "platform/forms/desktop.h"

#include <QByteArray>
#include <QDesktopServices>
#include <QUrl>

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

bool QtDesktop::Explore(const std::string& folder) {
    return OpenEncoded(FileUri(folder));
}

bool QtDesktop::OpenAddress(const std::string& address) {
    return OpenEncoded(address);
}

}  // namespace vantrel
