#pragma once

#include <QWidget>

#include <array>

#include "views/cview_selections.h"
#include "views/forms/result_icons.h"

class QToolButton;

namespace vantrel {

// The strip of the eight toggles of the result types (imgViews): a colour picture where the type is shown, a
// gray one where it is hidden.
class ViewToggles : public QWidget {
    Q_OBJECT
  public:
    explicit ViewToggles(const ResultIcons& icons, QWidget* parent = nullptr);

    // Until it is called the buttons have no pictures.
    void DisplayViewSelections(const CViewSelections& selections);
    QToolButton* imgViews(ResultType type) const { return buttons_[static_cast<std::size_t>(type) - 1]; }

  Q_SIGNALS:
    void Toggled(ResultType type);

  private:
    std::array<QToolButton*, kResultTypeCount> buttons_{};
    std::array<QIcon, kResultTypeCount> colour_, gray_;
};

}  // namespace vantrel
