#pragma once

#include <QDialog>

#include "platform/ports.h"

class QLabel;
class QPlainTextEdit;
class QPushButton;

namespace vantrel {

class PathLabel;

// The confirmation dialog of file operations: the question, where the objects go, and on demand a list of
// what is about to be done. Before a deletion for good it bears a warning. ESC is No; Enter is Yes, except
// before a deletion.
class frmConfirmation : public QDialog {
    Q_OBJECT
  public:
    explicit frmConfirmation(QWidget* parent = nullptr);

    // Shows the form modally. The answer stays in Answer() after it.
    MessageAnswer ShowForm(const Confirmation& confirmation);
    MessageAnswer Answer() const { return answer_; }

    QLabel* imgIcon;
    QLabel* lblMsg;
    QLabel* lblTo;  // before the target
    PathLabel* lblTarget;
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
