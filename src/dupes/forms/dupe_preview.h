#pragma once

#include <QImage>
#include <QWidget>
#include <string>

#include "platform/files/file_system.h"

class QLabel;
class QPlainTextEdit;
class QStackedWidget;

namespace vantrel {

// A small look at one file: the picture that it holds, or the beginning of its text. It reads little of a
// file, and of pictures only such of ordinary kinds and sizes.
class DupePreview : public QWidget {
    Q_OBJECT
  public:
    explicit DupePreview(const FileSystem& files, QWidget* parent = nullptr);

    // `about` stands below: what there is to say of the file.
    void ShowFile(const std::string& path, const QString& about);
    void ShowNothing();

    QLabel* lblPicture;
    QPlainTextEdit* txtText;
    QLabel* lblAbout;

  protected:
    void resizeEvent(QResizeEvent* event) override;
    QSize sizeHint() const override;

  private:
    bool ShowPicture(const std::string& content);
    void ShowText(const std::string& content, bool isWhole);
    void Say(const QString& text);
    void FitPicture();

    const FileSystem& files_;
    QStackedWidget* pages_;
    QImage picture_;
};

}  // namespace vantrel
