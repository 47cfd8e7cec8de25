#include "filetools/forms/pane_splitter.h"

#include <QMouseEvent>
#include <QPainter>

namespace vantrel {

namespace {

constexpr int kTwipsToPixel = 15;
constexpr int kWidth = 25 / kTwipsToPixel + 1;  // 25 twips: what is seen
constexpr int kGrip = 9;                        // what the mouse can take hold of
constexpr QRgb kDragColour = 0xFF808080;

class Handle : public QSplitterHandle {
  public:
    explicit Handle(QSplitter* parent) : QSplitterHandle(Qt::Horizontal, parent) {}

  protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        painter.fillRect(QRect((width() - kWidth) / 2, 0, kWidth, height()),
                         dragged_ ? QColor(kDragColour) : palette().color(QPalette::Button));
    }
    void mousePressEvent(QMouseEvent* event) override {
        SetDragged(event->button() == Qt::LeftButton);
        QSplitterHandle::mousePressEvent(event);
    }
    void mouseReleaseEvent(QMouseEvent* event) override {
        SetDragged(false);
        QSplitterHandle::mouseReleaseEvent(event);
    }

  private:
    void SetDragged(bool dragged) {
        dragged_ = dragged;
        update();
    }
    bool dragged_ = false;
};

}  // namespace

PaneSplitter::PaneSplitter(QWidget* parent) : QSplitter(Qt::Horizontal, parent) {
    setObjectName(QStringLiteral("Splitter"));
    setChildrenCollapsible(false);
    setHandleWidth(kGrip);
}

QSplitterHandle* PaneSplitter::createHandle() {
    return new Handle(this);
}

}  // namespace vantrel
