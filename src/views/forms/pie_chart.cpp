#include "views/forms/pie_chart.h"

#include <QHelpEvent>
#include <QPainter>
#include <QPainterPath>
#include <QToolTip>
#include <cmath>
#include <numbers>

#include "platform/forms/qt_text.h"

namespace vantrel {
namespace {

// Logical pixels.
constexpr QPointF kCentre(70, 70);
constexpr double kRadius = 68;
constexpr QPointF kShadowCentre(71, 73);
constexpr double kDrawWidth = 3;
constexpr double kDegreesPerPercent = 3.6;
constexpr int kSwatch = 10;

QColor QColourOf(ResultType type) {
    const SliceColour colour = ColourOf(type);
    return {colour.red, colour.green, colour.blue};
}

QRectF CircleRect() {
    return {kCentre.x() - kRadius, kCentre.y() - kRadius, 2 * kRadius, 2 * kRadius};
}

// From the first to the second percentage, against the clock, with both radii.
void DrawPiePiece(QPainter& picture, const QColor& colour, double startPercent, double endPercent) {
    QPainterPath sector(kCentre);
    sector.arcTo(CircleRect(), startPercent * kDegreesPerPercent,
                 (endPercent - startPercent) * kDegreesPerPercent);
    sector.closeSubpath();
    picture.setBrush(colour);
    picture.drawPath(sector);
}

void DrawPieWhole(QPainter& picture, const QColor& colour) {
    picture.setBrush(colour);
    picture.drawEllipse(kCentre, kRadius, kRadius);
}

void DrawPieShadow(QPainter& picture, const QColor& colour) {
    picture.setPen(Qt::NoPen);
    picture.setBrush(colour);
    picture.drawEllipse(kShadowCentre, kRadius, kRadius);
}

// An empty circle.
void DrawPieOutline(QPainter& picture, const QPalette& palette) {
    picture.setPen(palette.color(QPalette::WindowText));
    picture.setBrush(palette.color(QPalette::Window));
    picture.drawEllipse(kCentre, kRadius, kRadius);
}

}  // namespace

PieChart::PieChart(QWidget* parent) : QWidget(parent) {
    setObjectName(QStringLiteral("picPieChart"));
    setFixedSize(PieChart::sizeHint());
}

QSize PieChart::sizeHint() const {
    return {144, 144};
}

void PieChart::Show(const FileTypeCounts& counts, const QString& name) {
    counts_ = counts;
    setAccessibleName(name);
    setAccessibleDescription(ToQString(SpokenSummary(counts)));
    update();
}

ResultType PieChart::TypeAt(QPointF position) const {
    const QPointF offset = position - kCentre;
    if (std::hypot(offset.x(), offset.y()) > kRadius) return ResultType::None;
    // Against the clock from three o'clock, where y grows downwards.
    const double angle = std::atan2(-offset.y(), offset.x());
    const double percent = (angle < 0 ? angle / std::numbers::pi + 2 : angle / std::numbers::pi) * 50;
    const std::vector<PieSlice> slices = SlicesOf(counts_);
    for (const PieSlice& slice : slices)
        if (percent <= slice.end) return slice.type;
    return slices.empty() ? ResultType::None : slices.back().type;
}

void PieChart::DrawPie(QPainter& picture) const {
    DrawPieShadow(picture, palette().color(QPalette::Dark));
    const std::vector<PieSlice> slices = SlicesOf(counts_);
    if (slices.empty())
        DrawPieOutline(picture, palette());
    else
        DrawPieChart(picture, slices);
}

void PieChart::DrawPieChart(QPainter& picture, const std::vector<PieSlice>& slices) const {
    picture.setPen(
        QPen(palette().color(QPalette::WindowText), kDrawWidth, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    for (const PieSlice& slice : slices)
        if (slice.whole)
            DrawPieWhole(picture, QColourOf(slice.type));
        else
            DrawPiePiece(picture, QColourOf(slice.type), slice.start, slice.end);
}

void PieChart::paintEvent(QPaintEvent*) {
    QPainter picture(this);
    picture.setRenderHint(QPainter::Antialiasing);
    DrawPie(picture);
}

bool PieChart::event(QEvent* event) {
    if (event->type() != QEvent::ToolTip) return QWidget::event(event);
    const auto& help = static_cast<const QHelpEvent&>(*event);
    const ResultType type = TypeAt(help.pos());
    if (type == ResultType::None)
        QToolTip::hideText();
    else
        QToolTip::showText(help.globalPos(), ToQString(SliceText(counts_, type)), this);
    return true;
}

QPixmap SliceSwatch(ResultType type, const QWidget& of) {
    const double scale = of.devicePixelRatioF();
    QPixmap swatch(QSize(kSwatch, kSwatch) * scale);
    swatch.setDevicePixelRatio(scale);
    swatch.fill(of.palette().color(QPalette::WindowText));
    QPainter painter(&swatch);
    painter.fillRect(1, 1, kSwatch - 2, kSwatch - 2, QColourOf(type));
    return swatch;
}

}  // namespace vantrel
