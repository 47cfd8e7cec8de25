#pragma once

#include <QFont>
#include <QFontMetricsF>
#include <QPagedPaintDevice>
#include <QPainter>
#include <cstddef>
#include <functional>
#include <limits>

#include "views/printed_pages.h"

namespace vantrel {

// "Courier New" of 8 points, or what the system has in its place, to be painted in twips.
QFont PageFont();

// The measure of that font. It is the same for every device, so that a preview breaks as the paper does.
class PageFontMeasure : public FontMeasure {
  public:
    double TextWidth(std::string_view text) const override;
    double LineHeight() const override;

  private:
    QFontMetricsF metrics_{PageFont()};
};

// Pages on any device of Qt that has pages: printers, previews and PDF.
class DevicePaper : public Paper {
  public:
    struct Hooks {
        // Called before each page is painted, with its number and how many there are. May throw.
        std::function<void(std::size_t page, std::size_t pages)> onPage;
        // Throws where the device has failed since; asked after each page. May be empty.
        std::function<void()> check;
        // The job is given up; called before the painting ends. May be empty.
        std::function<void()> abort;
    };
    // No more than `mostPages` are painted in all. The device must outlive the paper.
    DevicePaper(QPagedPaintDevice& device, Hooks hooks,
                std::size_t mostPages = std::numeric_limits<std::size_t>::max());
    // Gives the job up where it was not finished.
    ~DevicePaper() override;

    PageSize Size() const override;
    const FontMeasure& Measure() const override { return measure_; }
    void Print(const PrintedPages& pages) override;
    // Ends the job. Throws ErrorException where the device failed.
    void Finish();
    // There were more pages than were painted.
    bool IsCut() const { return isCut_; }

  private:
    void Begin();
    void PaintPage(const PrintedPage& page);

    QPagedPaintDevice& device_;
    Hooks hooks_;
    std::size_t mostPages_;
    PageFontMeasure measure_;
    QPainter painter_;
    std::size_t painted_ = 0;
    bool isCut_ = false;
    bool isFinished_ = false;
};

}  // namespace vantrel
