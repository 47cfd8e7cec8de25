#include "views/forms/view_toggles.h"

#include <QToolButton>
#include <QVBoxLayout>

#include "platform/forms/qt_text.h"

namespace vantrel {
namespace {

constexpr int kIconSize = 16;

}  // namespace

ViewToggles::ViewToggles(const ResultIcons& icons, QWidget* parent) : QWidget(parent) {
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(4);
    column->addStretch();
    for (std::size_t i = 0; i < buttons_.size(); ++i) {
        const auto type = static_cast<ResultType>(i + 1);
        if (icons) {
            colour_[i] = icons(type, true);
            gray_[i] = icons(type, false);
        }
        auto* button = new QToolButton(this);
        button->setObjectName(QStringLiteral("imgViews%1").arg(i + 1));
        button->setCheckable(true);
        button->setAutoRaise(true);
        button->setFocusPolicy(Qt::StrongFocus);
        button->setIconSize({kIconSize, kIconSize});
        const QString tip = ToQString(ViewToggleTip(type));
        button->setToolTip(tip);
        button->setAccessibleName(tip);
        connect(button, &QToolButton::clicked, this, [this, type] { Q_EMIT Toggled(type); });
        column->addWidget(button, 0, Qt::AlignHCenter);
        buttons_[i] = button;
    }
    column->addStretch();
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Preferred);
}

void ViewToggles::DisplayViewSelections(const CViewSelections& selections) {
    for (std::size_t i = 0; i < buttons_.size(); ++i) {
        const bool shown = selections.Shows(static_cast<ResultType>(i + 1));
        buttons_[i]->setChecked(shown);
        buttons_[i]->setIcon(shown ? colour_[i] : gray_[i]);
    }
}

}  // namespace vantrel
