#pragma once

#include "views/forms/aligned_panes_widget.h"
#include "views/forms/view_toggles.h"
#include "views/result_panes.h"

namespace vantrel {

// The two result panes of the main window, with the strip of toggles between them. The View menu is the
// window's.
class PanesWidget : public AlignedPanesWidget {
    Q_OBJECT
  public:
    // All must outlive the widget.
    PanesWidget(ResultPanes& panes, const LocaleFormats& locale, const ResultIcons& icons,
                QWidget* parent = nullptr);

    ViewToggles& Toggles() const { return *toggles_; }
    // The toggles look disabled while a job runs.
    void ShowBusy(bool busy);

  private:
    void ViewSelectionsChanged() override;

    ResultPanes& panes_;
    ViewToggles* toggles_ = nullptr;
};

}  // namespace vantrel
