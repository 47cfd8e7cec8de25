#include "views/forms/status_bar.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QResizeEvent>
#include <algorithm>

#include "platform/forms/qt_text.h"

namespace vantrel {

// A text that is too long is cut with an ellipsis and stands whole in the tip.
class MainStatusBar::Panel : public QLabel {
  public:
    using QLabel::QLabel;
    QSize minimumSizeHint() const override { return {0, QLabel::minimumSizeHint().height()}; }

  protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        const QRect place = contentsRect();
        painter.setPen(palette().color(foregroundRole()));
        painter.drawText(place, Qt::AlignVCenter | Qt::AlignLeft,
                         fontMetrics().elidedText(text(), Qt::ElideRight, place.width()));
    }
};

MainStatusBar::MainStatusBar(QWidget* parent) : QStatusBar(parent) {
    setObjectName(QStringLiteral("StatusBar1"));
    auto* place = new QWidget(this);
    auto* row = new QHBoxLayout(place);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(4);
    for (int i = 0; i < kPanelCount; ++i) {
        auto* panel = new Panel(place);
        panel->setObjectName(QStringLiteral("StatusBar1.Panels(%1)").arg(i + 1));
        panel->setTextFormat(Qt::PlainText);
        panel->setContentsMargins(6, 2, 6, 2);
        row->addWidget(panel, i == 1 ? 1 : 0);
        panels_[static_cast<std::size_t>(i)] = panel;
    }
    addWidget(place, 1);
}

void MainStatusBar::SetPanel(int number, std::string_view text) {
    Panel* panel = panels_.at(static_cast<std::size_t>(number - 1));
    panel->setText(DisplayQString(text));
    panel->setToolTip(panel->text());
    ShareRest();
}

QString MainStatusBar::PanelText(int number) const {
    return panels_.at(static_cast<std::size_t>(number - 1))->text();
}

void MainStatusBar::Reset() {
    for (int number = 1; number <= kPanelCount; ++number) SetPanel(number, {});
}

void MainStatusBar::FitToPanes(int rightStart) {
    rightStart_ = rightStart;
    panels_[0]->setFixedWidth(std::max(rightStart - 4, 0));
    ShareRest();
}

// Panel 2 keeps at least half of what stands below the right pane.
void MainStatusBar::ShareRest() {
    const int rest = std::max(width() - rightStart_, 0);
    int free = rest / 2;
    for (const std::size_t i : {std::size_t{3}, std::size_t{2}}) {
        const int wanted = panels_[i]->text().isEmpty() ? 0 : panels_[i]->sizeHint().width();
        const int given = std::min(wanted, free);
        panels_[i]->setFixedWidth(given);
        free -= given;
    }
}

}  // namespace vantrel
