#pragma once

#include <QWidget>

class QLabel;
class QLineEdit;
class QToolButton;

namespace vantrel {

// The line under two panes in which a name is searched for. It only tells what is wanted; what is found, the
// panes show.
class FindLine : public QWidget {
    Q_OBJECT

  public:
    enum class Step { Here, Next, Previous };

    explicit FindLine(QWidget* parent = nullptr);

    // Shows the line and takes the focus, its text selected.
    void Open();
    QString Text() const;
    void ShowAnswer(const QString& answer);

    QLineEdit* txtFind;
    QToolButton *cmdFindPrevious, *cmdFindNext, *cmdFindClose;
    QLabel* lblFound;

  Q_SIGNALS:
    void Wanted(FindLine::Step step);  // Here: the text is another one
    void Closed();                     // by the user; the line is hidden already

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    QToolButton* MakeButton(const char* name, const char* icon, const char* tip);
    bool TakeKey(const QEvent& event);
    void Close();
};

}  // namespace vantrel
