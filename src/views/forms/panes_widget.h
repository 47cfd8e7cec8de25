#pragma once

#include <QWidget>

#include <memory>

#include "views/forms/pane_scrolling.h"
#include "views/forms/pane_view.h"
#include "views/forms/view_toggles.h"
#include "views/result_panes.h"

namespace vantrel {

// The two result panes with the strip of toggles between them: the panes share the width equally. It shows
// what happens in `panes` and hands clicks and keys to it. What a window must add are the commands behind the
// signals of the two PaneViews (View(side).RowActivated, MenuRequested, DeleteRequested, DragRequested,
// UrisDropped), the status bar and the View menu; for those it observes `panes` itself.
class PanesWidget : public QWidget, private ResultPanesObserver {
    Q_OBJECT
  public:
    // All must outlive the widget.
    PanesWidget(ResultPanes& panes, const LocaleFormats& locale, const ResultIcons& icons,
                QWidget* parent = nullptr);
    ~PanesWidget() override;

    PaneView& View(Side side) const { return *views_[side]; }  // lvwSourceDirFiles, lvwTargetDirFiles
    ViewToggles& Toggles() const { return *toggles_; }
    PaneScrolling& Scrolling() const { return *scrolling_; }

    void SetLooks(const PaneLooks& looks);  // of both panes
    // The toggles look disabled while a job runs.
    void ShowBusy(bool busy);

  Q_SIGNALS:
    void PanesResized();  // also at first: status panels take the widths of the panes

  protected:
    void resizeEvent(QResizeEvent* event) override;

  private:
    class Selector;

    void RowsReset() override;
    void SelectionChanged(Side side) override;
    void EnsureVisible(Side side, std::size_t row) override;
    void ViewSelectionsChanged() override;
    void AlignHorizontalBars();

    ResultPanes& panes_;
    PerSide<std::unique_ptr<Selector>> selectors_;
    PerSide<PaneView*> views_;
    ViewToggles* toggles_ = nullptr;
    PaneScrolling* scrolling_ = nullptr;
};

}  // namespace vantrel
