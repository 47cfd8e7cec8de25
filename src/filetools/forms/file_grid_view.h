#pragma once

#include <QAbstractScrollArea>
#include <QString>
#include <unordered_map>

#include "diagnostics/error_reporter.h"
#include "filetools/forms/diff_colours.h"
#include "filetools/forms/line_painter.h"
#include "filetools/grid_contents.h"

namespace vantrel {

// One grid of the difference viewer, grdFileOne or grdFileTwo. It paints the rows that are seen out of the
// contents, which it shares with the other one, and holds nothing of them. It only tells what the user did:
// what follows is the window's.
class FileGridView : public QAbstractScrollArea {
    Q_OBJECT

  public:
    // All must outlive the view.
    FileGridView(Side side, GridContents& contents, ErrorReporter& reporter, QWidget* parent = nullptr);

    // Shown in the first row while there is no result.
    void SetPrompt(const QString& prompt);
    const QString& Prompt() const { return prompt_; }

    // Rows, layout or widest line are others now. The top row stays where it is possible.
    void ContentsChanged();
    void SetGridFont(const QFont& font);

    std::int32_t TopRow() const;
    void SetTopRow(std::int32_t row);
    bool IsRowVisible(std::int32_t row) const;  // wholly, or from its top where it is higher than the grid
    int ColumnsSeen() const;                    // of text, whole ones
    int LinesSeen() const;                      // visual lines, whole ones
    // The row at a point of the viewport; 0 for none. Of a fold, the first row that it hides.
    std::int32_t RowAt(const QPoint& point) const;
    QRect RectOfRow(std::int32_t row) const;  // its first visual line, in the viewport

  Q_SIGNALS:
    void RowPressed(std::int32_t row);  // by the mouse or a key
    void RowDoubleClicked(std::int32_t row);
    void FoldOpened(std::int32_t row);
    void RowHovered(std::int32_t row);  // 0: none
    void MenuRequested(const QPoint& globalPosition);
    void ZoomRequested(int steps);
    void CopyRequested();
    void Resized();

  protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void changeEvent(QEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;

  private:
    class Budget;
    void FitScrollBars();
    int MarkerWidth() const;
    int GutterWidth() const;  // markers and line numbers
    std::int32_t GoalOfKey(int key) const;
    bool ScrollInsideRow(int key);
    std::int32_t NextFold() const;
    void PaintLine(QPainter& painter, std::int32_t line, int top, Budget& budget);
    void PaintFold(QPainter& painter, const FoldedRows::Fold& fold, const QRect& rect);
    void PaintGutter(QPainter& painter, std::int32_t row, int top);
    void PaintText(QPainter& painter, std::int32_t row, std::int32_t part, int top, Budget& budget);
    const LineDifferences* DifferencesOf(std::int32_t row, Budget& budget);
    TextColumns ColumnsOf(std::int32_t row);

    Side side_;
    GridContents& contents_;
    ErrorReporter& reporter_;
    QString prompt_;
    LinePainter lines_;
    DiffColours colours_;
    std::unordered_map<std::int32_t, TextColumns> longLines_;  // of those seen last
};

}  // namespace vantrel
