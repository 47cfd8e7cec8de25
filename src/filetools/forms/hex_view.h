#pragma once

#include <QAbstractScrollArea>
#include <QString>
#include <optional>
#include <string>
#include <vector>

#include "filetools/forms/diff_colours.h"
#include "filetools/forms/line_painter.h"
#include "filetools/hex_contents.h"
#include "filetools/scroll_scale.h"

namespace vantrel {

// rtfHexDump: the dump of one file. It makes the lines that are seen when they are painted, out of the
// contents, which it shares with the view of the file beside it, and holds none. What the user does it only
// tells: what follows is the window's.
class HexView : public QAbstractScrollArea {
    Q_OBJECT

  public:
    // The contents must outlive the view.
    HexView(Side side, HexContents& contents, QWidget* parent = nullptr);

    // Shown while there is no file.
    void SetPrompt(const QString& prompt);
    const QString& Prompt() const { return prompt_; }
    void SetViewFont(const QFont& font);
    // Files or their sizes are others now. The top line stays where it is possible.
    void ContentsChanged();

    std::uint64_t Top() const { return top_; }
    void SetTop(std::uint64_t line);
    int LinesSeen() const;  // whole ones
    bool IsSeen(std::uint64_t offset) const;
    // The byte whose digits or character stand at a point of the viewport, or are the nearest of its line.
    std::optional<std::uint64_t> OffsetAt(const QPoint& point) const;
    QRect DigitsRect(std::uint64_t offset) const;  // in the viewport
    QRect CharacterRect(std::uint64_t offset) const;
    int DumpWidth() const;  // of a line with its margins, in pixels

  Q_SIGNALS:
    void OffsetChosen(std::uint64_t offset, SelectionStep step);  // by the mouse or a key
    void TopChanged(std::uint64_t line);
    void FilesDropped(const std::vector<std::string>& paths);
    void Focused();
    void MenuRequested(const QPoint& globalPosition);
    void ZoomRequested(int steps);

  protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void changeEvent(QEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void FitScrollBars();
    void OnBarAction(int action);
    void OnBarMoved(int position);
    void ScrollBy(std::int64_t lines);
    bool ScrollsByKey(const QKeyEvent& event);
    std::optional<std::uint64_t> GoalOfKey(const QKeyEvent& event) const;
    double LeftOfColumn(std::size_t column) const;
    QRect RectOfColumns(std::uint64_t line, std::size_t first, std::size_t end) const;
    // Calls `paint` with the rectangles of the digits and of the characters of bytes of one line.
    template <typename Paint>
    void ForBytes(std::uint64_t line, std::size_t first, std::size_t end, const Paint& paint) const;
    void PaintLine(QPainter& painter, std::uint64_t number);
    void PaintMarks(QPainter& painter, std::uint64_t number, const HexLine& line);
    void PaintSelection(QPainter& painter, std::uint64_t number, const std::string& text);
    void PaintText(QPainter& painter, std::uint64_t number, const std::string& text, std::size_t from,
                   const QColor& colour);
    QColor HighlightColour(QPalette::ColorRole role) const;

    Side side_;
    HexContents& contents_;
    QString prompt_;
    LinePainter lines_;
    DiffColours colours_;
    ScrollScale scale_;
    std::uint64_t top_ = 0;  // the line there
    int wheelRest_ = 0;      // of a turn, in eighths of a degree times the lines of a notch
};

}  // namespace vantrel
