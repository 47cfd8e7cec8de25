#pragma once

#include <QObject>
#include <functional>
#include <string_view>

class QWidget;

namespace vantrel {

// The page of the help that tells of a window, by the window's object name; empty for a window that has none
// of its own.
std::string_view HelpPageOf(std::string_view window);

// F1 in every window of the program: shows the page of the window in which it was pressed, or of the nearest
// window below that one which has a page. A window that has a use of its own for the key keeps it.
class HelpKey : public QObject {
    Q_OBJECT

  public:
    // `show` brings up a page over a window.
    using Show = std::function<void(std::string_view page, QWidget* over)>;
    explicit HelpKey(Show show);

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    Show show_;
};

}  // namespace vantrel
