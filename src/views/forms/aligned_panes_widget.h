#pragma once

#include <QWidget>

#include <memory>

#include "views/aligned_panes.h"
#include "views/forms/pane_scrolling.h"
#include "views/forms/pane_view.h"

class QHBoxLayout;

namespace vantrel {

// Two panes beside each other that share the width equally. It shows what happens in `panes` and hands clicks
// and keys to it. What a window must add are the commands behind the signals of the two PaneViews
// (View(side).RowActivated, MenuRequested, DeleteRequested, DragRequested, UrisDropped) and the status bar;
// for that it observes `panes` itself.
class AlignedPanesWidget : public QWidget, protected ResultPanesObserver {
    Q_OBJECT
  public:
    struct Setting {
        PerSide<const char*> viewNames;  // of the two lists
        PaneModel::Content content = PaneModel::Content::Results;
        PaneScrolling::Follows follows = PaneScrolling::Follows::Bars;
    };
    // All must outlive the widget.
    AlignedPanesWidget(AlignedPanes& panes, const Setting& setting, const LocaleFormats& locale,
                       const ResultIcons& icons, QWidget* parent = nullptr);
    ~AlignedPanesWidget() override;

    PaneView& View(Side side) const { return *views_[side]; }
    PaneScrolling& Scrolling() const { return *scrolling_; }

    void SetLooks(const PaneLooks& looks);  // of both panes

  Q_SIGNALS:
    void PanesResized();  // also at first: status panels take the widths of the panes

  protected:
    void resizeEvent(QResizeEvent* event) override;
    void RowsReset() override;
    void SelectionChanged(Side side) override;
    void EnsureVisible(Side side, std::size_t row) override;

    QHBoxLayout* row_ = nullptr;  // the two panes

  private:
    class Selector;
    void AlignHorizontalBars();

    AlignedPanes& panes_;
    PerSide<std::unique_ptr<Selector>> selectors_;
    PerSide<PaneView*> views_;
    PaneScrolling* scrolling_ = nullptr;
};

}  // namespace vantrel
