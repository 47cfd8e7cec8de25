#include "views/forms/dragged_paths.h"

#include <QDrag>
#include <QMimeData>
#include <QWidget>

#include "platform/names/uri_list.h"

namespace vantrel {

std::vector<std::string> DroppedPaths(const QList<QUrl>& uris) {
    std::vector<std::string> paths;
    // QUrl::toLocalFile() would lose the bytes of a name that is no valid text.
    for (const QUrl& uri : uris)
        if (std::string path = PathFromFileUri(uri.toEncoded().toStdString()); !path.empty())
            paths.push_back(std::move(path));
    return paths;
}

std::vector<std::string> DroppedPaths(const QMimeData& data) {
    return DroppedPaths(data.urls());
}

QMimeData* MimeDataOfPaths(const std::vector<std::string>& paths) {
    auto* data = new QMimeData;
    data->setData(QStringLiteral("text/uri-list"), QByteArray::fromStdString(UriListFromPaths(paths)));
    return data;
}

void DragPaths(QWidget* source, const std::vector<std::string>& paths) {
    if (paths.empty()) return;
    auto* drag = new QDrag(source);
    drag->setMimeData(MimeDataOfPaths(paths));
    drag->exec(Qt::CopyAction | Qt::MoveAction, Qt::CopyAction);
}

}  // namespace vantrel
