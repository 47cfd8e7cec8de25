#pragma once

#include <QListWidget>
#include <functional>
#include <string>
#include <vector>

namespace vantrel {

// The list of file types in the Select Wizard. An entry is shown so that it is safe to read, and kept as it
// is.
class FileTypeList : public QListWidget {
  public:
    explicit FileTypeList(QWidget* parent = nullptr);

    // The user has chosen the current entry: with a click, or with a key that went to it.
    std::function<void()> Chosen;

    void Fill(const std::vector<std::string>& entries);
    std::string CurrentEntry() const;  // empty where none is selected
    void SetCurrentEntry(const std::string& entry);

  protected:
    void keyPressEvent(QKeyEvent* event) override;

  private:
    static void Show(QListWidgetItem& item, const std::string& entry);
};

}  // namespace vantrel
