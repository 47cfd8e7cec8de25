#pragma once

#include <QLineEdit>
#include <string>

#include "core/side.h"
#include "views/auto_complete_path.h"

namespace vantrel {

// txtFileOne or txtFileTwo: the path of a file. While a path is typed its folders are proposed; a text that
// is dropped replaces the path, and of dropped files the first one does.
class FilePathBox : public QLineEdit, private AutoCompleteBox {
    Q_OBJECT

  public:
    // All must outlive the box. Folders are proposed while `autoComplete` is true.
    FilePathBox(Side side, const FileSystem& files, EventLoopPort& loop, const bool& autoComplete,
                QWidget* parent = nullptr);

    // The text without blanks at its ends, in the engine's form; empty where there is none.
    std::string Path() const;
    void SetPath(std::string_view path);

  Q_SIGNALS:
    void PathDropped();

  protected:
    void keyPressEvent(QKeyEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dropEvent(QDropEvent* event) override;

  private:
    bool Accepts(QDropEvent* event) const;
    std::string Text() const override;
    void SetTextWithProposal(const std::string& text, std::size_t selectFrom) override;

    AutoCompletePath autoComplete_;
    const bool& completes_;
};

}  // namespace vantrel
