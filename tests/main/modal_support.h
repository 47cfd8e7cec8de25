#pragma once

#include <QPointer>
#include <QTimer>
#include <QWidget>
#include <functional>
#include <string>
#include <vector>

namespace vantrel::testing {

// Acts in modal windows as a person would, in the order in which they are awaited. A window that nobody
// awaits is closed and counts as a failure, and so does a step whose window never came. One that is on top
// again after another one has closed is left as it is.
class ModalScript {
  public:
    using Act = std::function<void(QWidget&)>;

    ModalScript();
    ~ModalScript();
    // `name` is the window's object name.
    ModalScript& Await(const char* name, Act act);

  private:
    void Look();

    struct Step {
        std::string name;
        Act act;
    };
    std::vector<Step> steps_;
    std::size_t next_ = 0;
    std::vector<QPointer<QWidget>> seen_;
    QTimer timer_;
};

// Presses a button or the like by the blank.
void PressChild(QWidget& window, const char* name);
// The button of this text, with or without its marker of the key.
void PressButton(QWidget& window, const char* text);

}  // namespace vantrel::testing
