#pragma once

#include <QAbstractScrollArea>
#include <string>
#include <vector>

#include "filetools/forms/diff_colours.h"
#include "filetools/forms/line_painter.h"

namespace vantrel {

// rtfLineDiff(0) and (1): one of the two lines that the user looks at, wrapped, with the characters that
// differ. It paints what is seen of the line, however long that is.
class LineBox : public QAbstractScrollArea {
    Q_OBJECT

  public:
    explicit LineBox(int index, QWidget* parent = nullptr);

    // `marks` are shown as differing. Blanks among them are underlined where `underlineBlanks` says so.
    void SetLine(std::string text, std::vector<TextRange> marks = {}, bool underlineBlanks = false);
    const std::string& Text() const { return text_; }
    const std::vector<TextRange>& Marks() const { return marks_; }
    bool UnderlinesBlanks() const { return underlineBlanks_; }
    void SetBoxFont(const QFont& font);

    QSize sizeHint() const override;

  Q_SIGNALS:
    void ZoomRequested(int steps);

  protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void changeEvent(QEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;

  private:
    std::int64_t WrapWidth() const;  // columns
    void FitScrollBar();

    std::string text_;
    TextColumns columns_;  // of text_
    std::vector<TextRange> marks_;
    bool underlineBlanks_ = false;
    LinePainter lines_;
    DiffColours colours_;
};

}  // namespace vantrel
