#pragma once

#include <QList>
#include <QUrl>
#include <string>
#include <vector>

class QMimeData;
class QWidget;

namespace vantrel {

// The paths of files that other programs, or a pane, have dropped, in the engine's form; what is no file of
// this machine is left out.
std::vector<std::string> DroppedPaths(const QList<QUrl>& uris);
std::vector<std::string> DroppedPaths(const QMimeData& data);

// Starts a drag of these objects out of `source` and returns when it has ended.
void DragPaths(QWidget* source, const std::vector<std::string>& paths);
// What such a drag carries; the caller owns it.
QMimeData* MimeDataOfPaths(const std::vector<std::string>& paths);

}  // namespace vantrel
