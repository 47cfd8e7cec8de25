#include "animations.h"

#include <QPainter>
#include <QPainterPath>
#include <cmath>
#include <functional>
#include <numbers>

namespace {

// Drawn three times as large as shown and without smoothing: flat colours pack well, and scaling down
// smooths the edges on any background.
constexpr int kWidth = 160;
constexpr int kHeight = 56;
constexpr int kScale = 3;
constexpr int kFrames = 28;

// Legible on light and on dark windows.
enum Colour { Nothing, Ink, Paper, Line, Blue, Green, Amber, Folder, Shade, Glass };
const QList<QRgb> kColours = {0xFF010203, 0xFF6B7A90, 0xFFFFFFFF, 0xFFB9C3D1, 0xFF2F7FD6,
                              0xFF2F9E5A, 0xFFE08A1E, 0xFFF4C860, 0xFFDCE6F2, 0xFFBFE0FF};

class Canvas {
  public:
    Canvas() : image_(kWidth * kScale, kHeight * kScale, QImage::Format_RGB32) {
        image_.fill(kColours[Nothing]);
        painter_.begin(&image_);
        painter_.scale(kScale, kScale);
    }

    void Path(const QPainterPath& path, Colour fill, Colour outline, double width = 2) {
        painter_.setBrush(QColor(kColours[fill]));
        painter_.setPen(outline == Nothing ? QPen(Qt::NoPen)
                                           : QPen(QColor(kColours[outline]), width, Qt::SolidLine,
                                                  Qt::RoundCap, Qt::RoundJoin));
        painter_.drawPath(path);
    }
    void Box(QRectF box, double radius, Colour fill, Colour outline, double width = 2) {
        QPainterPath path;
        path.addRoundedRect(box, radius, radius);
        Path(path, fill, outline, width);
    }
    void Disc(QPointF centre, double radius, Colour fill, Colour outline, double width = 2) {
        QPainterPath path;
        path.addEllipse(centre, radius, radius);
        Path(path, fill, outline, width);
    }
    void Stroke(QPointF from, QPointF to, Colour colour, double width = 2) {
        painter_.setPen(QPen(QColor(kColours[colour]), width, Qt::SolidLine, Qt::RoundCap));
        painter_.drawLine(from, to);
    }
    void FolderAt(QPointF corner, QSizeF size) {
        const double x = corner.x(), y = corner.y(), w = size.width(), h = size.height();
        QPainterPath path(QPointF(x, y));
        for (const QPointF point : {QPointF(x + w * 0.38, y), QPointF(x + w * 0.5, y + h * 0.18),
                                    QPointF(x + w, y + h * 0.18), QPointF(x + w, y + h), QPointF(x, y + h)})
            path.lineTo(point);
        path.closeSubpath();
        Path(path, Folder, Ink);
    }
    void PageAt(QPointF corner, QSizeF size) {
        const double x = corner.x(), y = corner.y(), w = size.width(), h = size.height(), fold = w * 0.28;
        QPainterPath path(QPointF(x, y));
        for (const QPointF point :
             {QPointF(x + w - fold, y), QPointF(x + w, y + fold), QPointF(x + w, y + h), QPointF(x, y + h)})
            path.lineTo(point);
        path.closeSubpath();
        Path(path, Paper, Ink);
    }

    QImage Take() {
        painter_.end();
        return image_.convertToFormat(QImage::Format_Indexed8, kColours, Qt::ThresholdDither);
    }

  private:
    QImage image_;
    QPainter painter_;
};

QList<QImage> Frames(const std::function<void(Canvas&, int)>& draw) {
    QList<QImage> frames;
    for (int frame = 0; frame < kFrames; ++frame) {
        Canvas canvas;
        draw(canvas, frame);
        frames += canvas.Take();
    }
    return frames;
}

}  // namespace

QList<QImage> ScanFilesFrames() {
    return Frames([](Canvas& canvas, int frame) {
        constexpr int kLines = 6;
        constexpr int kDifferent = 3;
        const double progress = std::min(1.0, frame / (kFrames - 7.0));
        const double bar = 7 + progress * 42;
        const int read = static_cast<int>((bar - 11) / 6.2 + 1);
        const bool differs = read == kDifferent + 1;
        for (const double x : {26.0, 98.0}) {
            canvas.PageAt({x, 4}, {36, 48});
            for (int line = 0; line < kLines; ++line) {
                const Colour colour = line >= read ? Line : line == kDifferent ? Amber : Green;
                const double length = line == kDifferent && x > 50 ? 12 : 16 + 5 * (line % 3);
                canvas.Stroke({x + 7, 15 + 6.2 * line}, {x + 7 + (line == 0 ? 12 : length), 15 + 6.2 * line},
                              colour, 2.4);
            }
            if (progress < 1) canvas.Stroke({x - 4, bar}, {x + 40, bar}, Blue, 2);
        }
        canvas.Disc({80, 28}, 9, differs ? Amber : Blue, Nothing);
        canvas.Stroke({76, 26}, {84, 26}, Paper);
        canvas.Stroke({76, 30.5}, {84, 30.5}, Paper);
        if (differs) canvas.Stroke({82.5, 22.5}, {77.5, 34}, Paper);
    });
}

QList<QImage> FileTreeListFrames() {
    return Frames([](Canvas& canvas, int frame) {
        canvas.FolderAt({22, 15}, {36, 28});
        for (int row = 0; row < 3; ++row) {
            const int begins = 2 + 6 * row;
            if (frame < begins || frame >= kFrames - 2) continue;
            const double y = 10 + 18 * row;
            canvas.Stroke({62, 28}, {72, 28}, Ink);
            canvas.Stroke({72, 28}, {72, y}, Ink);
            canvas.Stroke({72, y}, {80, y}, Ink);
            if (row == 1)
                canvas.FolderAt({84, y - 6}, {15, 12});
            else
                canvas.PageAt({86, y - 7}, {11, 14});
            const double length = std::min(5, frame - begins) * (row == 2 ? 5.0 : 6.4);
            canvas.Stroke({104, y}, {104 + length, y}, frame - begins < 5 ? Blue : Line, 3);
        }
    });
}

QList<QImage> FindComputerFrames() {
    return Frames([](Canvas& canvas, int frame) {
        canvas.Box({46, 3, 68, 40}, 3, Shade, Ink);
        canvas.Stroke({80, 43}, {80, 51}, Ink, 6);
        canvas.Stroke({66, 52.5}, {94, 52.5}, Ink, 3);
        for (int row = 0; row < 3; ++row)
            for (int column = 0; column < 3; ++column) {
                const QPointF at(54 + 20 * column, 9.5 + 11 * row);
                const bool twin = (row == 0 && column == 2) || (row == 2 && column == 0);
                canvas.Box({at, QSizeF(12, 7)}, 1, twin ? Amber : Paper, Line, 1);
            }
        const double turn = 2 * std::numbers::pi * frame / kFrames;
        const QPointF centre(80 + 26 * std::cos(turn), 22 + 11 * std::sin(turn));
        canvas.Stroke(centre + QPointF(6.5, 6.5), centre + QPointF(14, 14), Ink, 4.5);
        canvas.Disc(centre, 9.5, Glass, Blue, 3);
        canvas.Box({centre - QPointF(4, 2.8), QSizeF(8, 5.6)}, 1, Paper, Ink, 1.2);
    });
}
