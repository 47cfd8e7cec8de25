#include "views/forms/status_bar.h"

#include <QHBoxLayout>
#include <QResizeEvent>
#include <algorithm>

#include "platform/forms/elided_label.h"
#include "platform/forms/qt_text.h"

namespace vantrel {

MainStatusBar::MainStatusBar(QWidget* parent) : QStatusBar(parent) {
    setObjectName(QStringLiteral("StatusBar1"));
    auto* place = new QWidget(this);
    auto* row = new QHBoxLayout(place);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(0);
    for (int i = 0; i < kPanelCount; ++i) {
        ElidedLabel* panel = MakePanel(place, QStringLiteral("StatusBar1.Panels(%1)").arg(i + 1));
        row->addWidget(panel, i == 1 ? 1 : 0);
        panels_[static_cast<std::size_t>(i)] = panel;
    }
    hidden_ = MakePanel(place, QStringLiteral("StatusBar1.Hidden"));
    row->addWidget(hidden_);
    addWidget(place, 1);
}

ElidedLabel* MainStatusBar::MakePanel(QWidget* parent, const QString& name) {
    auto* panel = new ElidedLabel(parent);
    panel->setObjectName(name);
    panel->setTextFormat(Qt::PlainText);
    panel->setContentsMargins(5, 2, 5, 2);
    return panel;
}

void MainStatusBar::SetHiddenTypes(std::string_view text) {
    hiddenTypes_ = text;
    ShowHiddenTypes();
    ShareRest();
}

// Both panels are read as one: "Custom: older hidden".
void MainStatusBar::ShowHiddenTypes() {
    const bool follows = !hiddenTypes_.empty() && !PanelText(kPanelCount).isEmpty();
    const QString name = follows ? QString() : QStringLiteral("Custom");
    hidden_->setText(hiddenTypes_.empty() ? QString()
                                          : name + QStringLiteral(": ") + DisplayQString(hiddenTypes_));
    hidden_->setToolTip(hidden_->text());
    panels_[kPanelCount - 1]->setContentsMargins(5, 2, follows ? 0 : 5, 2);
    hidden_->setContentsMargins(follows ? 0 : 5, 2, 5, 2);
}

void MainStatusBar::SetPanel(int number, std::string_view text) {
    ElidedLabel* panel = panels_.at(static_cast<std::size_t>(number - 1));
    panel->setText(DisplayQString(text));
    panel->setToolTip(panel->text());
    if (number == kPanelCount) ShowHiddenTypes();
    ShareRest();
}

QString MainStatusBar::PanelText(int number) const {
    return panels_.at(static_cast<std::size_t>(number - 1))->text();
}

void MainStatusBar::Note(std::string_view text) {
    constexpr int kMilliseconds = 20'000;
    showMessage(DisplayQString(text), kMilliseconds);
}

void MainStatusBar::Reset() {
    for (int number = 1; number <= kPanelCount; ++number) SetPanel(number, {});
}

void MainStatusBar::FitToPanes(int rightStart) {
    rightStart_ = rightStart;
    panels_[0]->setFixedWidth(std::max(rightStart, 0));
    ShareRest();
}

// The view's name is short and comes first, then the text of the pane, then what the view hides; the filters
// take what is left.
void MainStatusBar::ShareRest() {
    const auto need = [](const ElidedLabel* panel) {
        return panel->text().isEmpty() ? 0 : panel->sizeHint().width();
    };
    const auto wanted = [this, need](std::size_t i) { return need(panels_[i]); };
    constexpr int kGrip = 20;
    int rest = std::max(width() - rightStart_ - kGrip, 0);
    panels_[3]->setFixedWidth(std::min(wanted(3), rest));
    rest -= panels_[3]->width() + wanted(1);
    hidden_->setFixedWidth(std::clamp(rest, 0, std::max(need(hidden_), 0)));
    rest -= hidden_->width();
    panels_[2]->setFixedWidth(std::clamp(rest, 0, wanted(2)));
}

}  // namespace vantrel
