#pragma once

#include <QDialog>

#include "platform/ports.h"

class QLabel;
class QPlainTextEdit;
class QPushButton;

namespace vantrel {

// The confirmation dialog of file operations, with a list of what is about to be done on demand. ESC is No;
// Enter is Yes, except before a deletion.
class frmConfirmation : public QDialog {
    Q_OBJECT
  public:
    explicit frmConfirmation(QWidget* parent = nullptr);

    // Shows the form modally. The answer stays in Answer() after it.
    MessageAnswer ShowForm(const Confirmation& confirmation);
    MessageAnswer Answer() const { return answer_; }

    QLabel* imgIcon;
    QLabel* lblMsg;
    QPushButton* cmdYes;
    QPushButton* cmdNo;
    QPushButton* cmdDetails;
    QPlainTextEdit* txtDetails;

  private:
    void LayOut();
    void Stretch(int row);
    void Finish(MessageAnswer answer);
    void ToggleDetails();
    void HideDetails();

    Confirmation confirmation_;
    MessageAnswer answer_ = MessageAnswer::No;
};

// Fits QtMessages::showConfirmation.
MessageAnswer ShowConfirmation(const Confirmation& confirmation);

}  // namespace vantrel
