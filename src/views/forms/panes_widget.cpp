#include "views/forms/panes_widget.h"

#include <QHBoxLayout>
#include <QToolButton>

namespace vantrel {

PanesWidget::PanesWidget(ResultPanes& panes, const LocaleFormats& locale, const ResultIcons& icons,
                         QWidget* parent)
    : AlignedPanesWidget(panes, {.viewNames = {{"lvwSourceDirFiles", "lvwTargetDirFiles"}}}, locale, icons,
                         parent),
      panes_(panes) {
    toggles_ = new ViewToggles(icons, this);
    connect(toggles_, &ViewToggles::Toggled, this, [this](ResultType type) {
        panes_.ToggleView(type);
        ViewSelectionsChanged();  // also where nothing changed: the button has moved already
    });
    row_->insertWidget(1, toggles_);
    setTabOrder(&View(Side::Left), toggles_->imgViews(ResultType::Newer));
    setTabOrder(toggles_->imgViews(ResultType::OrphanFolder), &View(Side::Right));
    ViewSelectionsChanged();
}

void PanesWidget::ViewSelectionsChanged() {
    toggles_->DisplayViewSelections(panes_.ViewSelections());
}

void PanesWidget::ShowBusy(bool busy) {
    toggles_->setEnabled(!busy);
}

}  // namespace vantrel
