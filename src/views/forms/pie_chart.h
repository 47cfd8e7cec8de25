#pragma once

#include <QWidget>

#include "views/result_summary.h"

namespace vantrel {

// The counts of one side as a pie with a shadow. A dark line parts neighbouring slices, so that they are told
// apart without their colours; the tool tip of a slice names its type.
class PieChart : public QWidget {
    Q_OBJECT
  public:
    explicit PieChart(QWidget* parent = nullptr);

    // `name` is what a screen reader calls the chart; the counts are its description.
    void Show(const FileTypeCounts& counts, const QString& name);
    // The type whose slice is there; None beside the pie.
    ResultType TypeAt(QPointF position) const;

    QSize sizeHint() const override;

  protected:
    void paintEvent(QPaintEvent* event) override;
    bool event(QEvent* event) override;

  private:
    void DrawPie(QPainter& picture) const;
    void DrawPieChart(QPainter& picture, const std::vector<PieSlice>& slices) const;

    FileTypeCounts counts_;
};

// A slice's colour as a small square, for a list that names the types.
QPixmap SliceSwatch(ResultType type, const QWidget& of);

}  // namespace vantrel
