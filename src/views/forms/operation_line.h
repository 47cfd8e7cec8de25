#pragma once

#include <QWidget>
#include <functional>
#include <string>

class QToolButton;

namespace vantrel {

class ElidedLabel;

// A line below the panes that tells what the last operation did, with a button for the list of what was not
// done. Hidden until there is something to tell, and again when it is closed.
class OperationLine : public QWidget {
    Q_OBJECT
  public:
    explicit OperationLine(QWidget* parent = nullptr);
    ~OperationLine() override;

    // Where `notDone` is empty everything was done, and there is no button.
    void Tell(const std::string& text, const std::string& notDone);
    // What the last Tell gave to list.
    const std::string& NotDone() const { return notDone_; }

  Q_SIGNALS:
    void ListAsked();

  private:
    ElidedLabel* lblOperation_;
    QToolButton* cmdNotDone_;
    std::string notDone_;
};

}  // namespace vantrel
