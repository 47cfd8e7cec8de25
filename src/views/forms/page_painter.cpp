#include "views/forms/page_painter.h"

#include <QPageLayout>
#include <algorithm>
#include <utility>

#include "platform/error.h"
#include "platform/forms/qt_text.h"

namespace vantrel {

namespace {

constexpr double kTwipsOfPoint = 20, kTwipsOfInch = 1440;
constexpr int kPoints = 8;

[[noreturn]] void ThrowUnavailable() {
    throw ErrorException(Error(ErrorNumber::DeviceUnavailable, "The printer is not available."));
}

}  // namespace

QFont PageFont() {
    QFont font(QStringLiteral("Courier New"));
    font.setStyleHint(QFont::Monospace);
    font.setHintingPreference(QFont::PreferNoHinting);
    font.setPixelSize(kPoints * static_cast<int>(kTwipsOfPoint));
    return font;
}

double PageFontMeasure::TextWidth(std::string_view text) const {
    return metrics_.horizontalAdvance(ToQString(text));
}

double PageFontMeasure::LineHeight() const {
    return metrics_.height();
}

DevicePaper::DevicePaper(QPagedPaintDevice& device, Hooks hooks, std::size_t mostPages)
    : device_(device), hooks_(std::move(hooks)), mostPages_(mostPages) {
}

DevicePaper::~DevicePaper() {
    if (isFinished_ || !painter_.isActive()) return;
    if (hooks_.abort) hooks_.abort();
    painter_.end();
}

PageSize DevicePaper::Size() const {
    const QSizeF points = device_.pageLayout().paintRect(QPageLayout::Point).size();
    return {points.width() * kTwipsOfPoint, points.height() * kTwipsOfPoint};
}

void DevicePaper::Begin() {
    if (!painter_.begin(&device_)) ThrowUnavailable();
    painter_.scale(device_.logicalDpiX() / kTwipsOfInch, device_.logicalDpiY() / kTwipsOfInch);
}

void DevicePaper::Print(const PrintedPages& pages) {
    const std::size_t count = pages.Count();
    for (std::size_t number = 1; number <= count; ++number) {
        if (painted_ == mostPages_) {
            isCut_ = true;
            return;
        }
        if (hooks_.onPage) hooks_.onPage(number, count);
        if (!painter_.isActive())
            Begin();
        else if (!device_.newPage())
            ThrowUnavailable();
        PaintPage(pages.Page(number));
        ++painted_;
        if (hooks_.check) hooks_.check();
    }
}

void DevicePaper::PaintPage(const PrintedPage& page) {
    const QFont plain = PageFont();
    QFont bold = plain;
    bold.setBold(true);
    const double ascent = QFontMetricsF(plain).ascent();
    painter_.setPen(Qt::black);
    for (const PrintedText& text : page) {
        painter_.setFont(text.isBold ? bold : plain);
        painter_.drawText(QPointF(text.x, text.y + ascent), ToQString(text.text));
    }
}

void DevicePaper::Finish() {
    isFinished_ = true;
    if (painter_.isActive() && !painter_.end()) ThrowUnavailable();
    if (hooks_.check) hooks_.check();
}

}  // namespace vantrel
