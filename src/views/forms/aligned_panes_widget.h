#pragma once

#include <QWidget>

#include <memory>
#include <optional>

#include "views/aligned_panes.h"
#include "views/forms/find_line.h"
#include "views/forms/pane_scrolling.h"
#include "views/forms/pane_view.h"
#include "views/row_search.h"

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
    };
    // All must outlive the widget.
    AlignedPanesWidget(AlignedPanes& panes, const Setting& setting, const LocaleFormats& locale,
                       const ResultIcons& icons, QWidget* parent = nullptr);
    ~AlignedPanesWidget() override;

    PaneView& View(Side side) const { return *views_[side]; }
    PaneScrolling& Scrolling() const { return *scrolling_; }

    void SetLooks(const PaneLooks& looks);  // of both panes
    // Whether the columns of the pane follow its contents, font and width, until the user changes one of
    // them. Otherwise they are as wide as PaneView::SetColumnWidths makes them.
    void SetColumnsFitted(Side side, bool fitted);

    // The find line under the panes: shows it and goes there. F3 and Shift+F3 go on in the same window, and
    // open it where nothing is searched for yet.
    void OpenFind();
    FindLine& Find() const { return *findLine_; }

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
    void MakeView(Side side, const Setting& setting, const LocaleFormats& locale, const ResultIcons& icons);
    void MakeFindLine();
    void AlignHorizontalBars();
    void FitColumns();
    // In the find line.
    PerSide<const PaneList*> Lists() const;
    std::size_t StartOfSearch() const;
    void Search(FindLine::Step step);
    void GoOn(FindLine::Step step);
    void ShowMarks();
    void EndSearch();

    AlignedPanes& panes_;
    PerSide<std::unique_ptr<Selector>> selectors_;
    PerSide<PaneView*> views_;
    PaneScrolling* scrolling_ = nullptr;
    FindLine* findLine_ = nullptr;
    RowSearch search_;
    std::optional<std::size_t> found_;
};

}  // namespace vantrel
