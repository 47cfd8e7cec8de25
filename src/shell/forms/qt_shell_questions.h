#pragma once

#include <QPointer>
#include <QWidget>

#include "platform/locale/locale_formats.h"
#include "shell/shell_operations.h"

namespace vantrel {

// The questions of the shell operations as message boxes: before overwriting Yes, Yes to All, No, No to All
// and Cancel; after an error Retry, Skip, Skip All and Cancel. ESC is Cancel.
class QtShellQuestions : public ShellQuestions {
  public:
    explicit QtShellQuestions(const LocaleFormats& locale) : locale_(locale) {}
    void SetParentWindow(QWidget* window) { parent_ = window; }

    OverwriteAnswer AskOverwrite(const Overwrite& question) override;
    ErrorAnswer AskAboutError(const Trouble& trouble) override;

  private:
    QWidget* Owner() const;
    const LocaleFormats& locale_;
    QPointer<QWidget> parent_;
};

}  // namespace vantrel
