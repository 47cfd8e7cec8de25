#pragma once

#include <QDialog>
#include <optional>
#include <string>

#include "sync/single_file_sync.h"

class QLabel;
class QPushButton;
class QRadioButton;

namespace vantrel {

class PathLabel;

// "File Synchronization Method": asks which of two files is to become the same as the other, and does it.
class frmFileSync : public QDialog {
    Q_OBJECT

  public:
    // Looks at the files: what is replaced is what stood there now. `tools` and `shell` must outlive the
    // window.
    frmFileSync(const Toolbox& tools, ShellWrappers& shell, const PerSide<std::string>& paths,
                QWidget* parent = nullptr);

    // Shows the window until it is closed. What was made the same; nothing where both stayed as they were.
    std::optional<SyncedPair> ShowForm();

    PerSide<PathLabel*> lblFile;
    PerSide<QLabel*> pctFileSmallIcon;
    QRadioButton* optFileTwoSameAsFileOne;
    QRadioButton* optFileOneSameAsFileTwo;
    QPushButton* OKButton;
    QPushButton* CancelButton;

  public Q_SLOTS:
    void done(int result) override;

  private:
    void LayOut();
    void OKButton_Click();

    const Toolbox& tools_;
    SingleFileSync sync_;
    std::optional<SyncedPair> synced_;
    bool running_ = false;
};

}  // namespace vantrel
