#pragma once

#include <QDialog>
#include <cstdint>
#include <string>

#include "diagnostics/error_reporter.h"
#include "platform/files/file_system.h"

class QPlainTextEdit;
class QPushButton;

namespace vantrel {

// Shows a text file, and empties it on demand. Captioned "Error Log"; whoever shows another file sets another
// caption first.
class frmErrorLog : public QDialog {
    Q_OBJECT
  public:
    // Of a larger file only the end is shown, under a line that says so.
    static constexpr std::uint64_t kMostBytes = std::uint64_t{4} << 20;

    frmErrorLog(const FileSystem& files, ErrorReporter& reporter, QWidget* parent = nullptr);

    // Reads the file, which is made when it is missing; exec() then shows the window. An error is reported
    // under "frmErrorLog.DisplayFile".
    void DisplayFile(const std::string& path);

    QPlainTextEdit* txtMsg;
    QPushButton* cmdClear;
    QPushButton* OKButton;

  private:
    void Clear();

    const FileSystem& files_;
    ErrorReporter& reporter_;
    std::string path_;
};

}  // namespace vantrel
