#pragma once

#include <QLabel>
#include <QPainter>

namespace vantrel {

// A label of one line that never asks for more width than there is: what is too long ends in an ellipsis.
// Its owner puts the whole into the tip.
class ElidedLabel : public QLabel {
  public:
    using QLabel::QLabel;
    QSize minimumSizeHint() const override { return {0, QLabel::minimumSizeHint().height()}; }

  protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        painter.setPen(palette().color(foregroundRole()));
        painter.drawText(contentsRect(), Qt::AlignVCenter | Qt::AlignLeft,
                         fontMetrics().elidedText(text(), Qt::ElideRight, contentsRect().width()));
    }
};

}  // namespace vantrel
