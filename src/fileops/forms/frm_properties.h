#pragma once

#include <QDialog>
#include <array>
#include <string>

#include "fileops/object_properties.h"
#include "fileops/shell_calls.h"
#include "platform/forms/desktop.h"

class QCheckBox;
class QFormLayout;
class QLabel;
class QLineEdit;
class QPushButton;

namespace vantrel {

// The property page of one object. The size of a folder is counted while the page is shown, and closing it
// ends the count. Permissions are changed by Apply and OK.
class frmProperties : public QDialog {
    Q_OBJECT
  public:
    explicit frmProperties(const Toolbox& tools, QWidget* parent = nullptr);

    // Shows the page modally; an object that cannot be looked at is reported instead.
    void ShowForm(const std::string& path);

    QLineEdit* txtName;
    QLabel* lblType;
    QLabel* lblLocation;
    QLabel* lblSize;
    std::array<QCheckBox*, 9> chkPermissions;  // owner, group, others: read, write, execute
    QPushButton* cmdOK;
    QPushButton* cmdCancel;
    QPushButton* cmdApply;

  public Q_SLOTS:
    void done(int result) override;

  private:
    void LayOut();
    void Fill();
    void CountSize();
    bool Apply();
    std::uint32_t ModeShown() const;

    const Toolbox& tools_;
    ObjectProperties properties_;
    QFormLayout* times_;
    bool stopCounting_ = false;
};

// The desktop's part of opening and of the property page.
class QtShellCalls : public ShellCallsPort {
  public:
    QtShellCalls(const Toolbox& tools, Desktop& desktop) : tools_(tools), desktop_(desktop) {}
    bool Open(const std::string& path) override { return desktop_.OpenFile(path); }
    void OpenWithChosenProgram(const std::string& path) override;
    void ShowPropertyPage(const std::string& path) override;

  private:
    const Toolbox& tools_;
    Desktop& desktop_;
};

}  // namespace vantrel
