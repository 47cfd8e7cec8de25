#pragma once

#include <QWidget>
#include <optional>
#include <vector>

#include "filetools/diffs_bar.h"
#include "filetools/forms/diff_colours.h"

namespace vantrel {

// pctDiffsBar: the differences of the whole file in a narrow picture. Empty, with the colour of buttons,
// while there is no result. A click, or a drag, is only told.
class DiffsBarView : public QWidget {
    Q_OBJECT

  public:
    explicit DiffsBarView(QWidget* parent = nullptr);

    void Clear();
    // `rows` must outlive the picture, until the next call or Clear().
    void Draw(const AlignedRows& rows);
    const std::vector<BarMark>& Marks() const { return marks_; }

    QSize sizeHint() const override;

  Q_SIGNALS:
    void Clicked(int y);
    void Resized();

  protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void changeEvent(QEvent* event) override;

  private:
    void Measure();

    const AlignedRows* rows_ = nullptr;
    std::vector<BarMark> marks_;
    DiffColours colours_;
};

// pctContainer: the strip beside the bar that holds the line of the current row.
class BarMarkerView : public QWidget {
  public:
    explicit BarMarkerView(QWidget* parent = nullptr);

    void Clear() { SetLine(std::nullopt); }
    void SetLine(std::optional<int> y);
    std::optional<int> Line() const { return line_; }

    QSize sizeHint() const override;

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    std::optional<int> line_;
};

}  // namespace vantrel
