#pragma once

#include <QListWidget>
#include <optional>
#include <string>
#include <vector>

namespace vantrel {

// lstFolders: the folders that are searched. Folders can be dropped on it.
class SearchFolderList : public QListWidget {
    Q_OBJECT
  public:
    explicit SearchFolderList(QWidget* parent = nullptr);

    struct Folder {
        std::string path;
        bool isProtected = false;
    };
    // The selection stays with the number of its row.
    void SetFolders(const std::vector<Folder>& folders);
    std::optional<std::size_t> SelectedFolder() const;

  Q_SIGNALS:
    void PathsDropped(const std::vector<std::string>& paths);

  protected:
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    QSize sizeHint() const override;
};

}  // namespace vantrel
