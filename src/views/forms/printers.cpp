#include "views/forms/printers.h"

#include <QIODevice>
#include <QLocale>
#include <QPdfWriter>
#include <QPrinter>
#include <QPrinterInfo>
#include <optional>

#include "platform/files/replace_file.h"
#include "platform/forms/qt_text.h"
#include "views/forms/page_painter.h"

namespace vantrel {

namespace {

constexpr double kMargin = 12;  // millimetres, of a PDF file

QPageLayout PdfLayout(QPageLayout::Orientation orientation) {
    const bool isImperial = QLocale().measurementSystem() == QLocale::ImperialUSSystem;
    return {QPageSize(isImperial ? QPageSize::Letter : QPageSize::A4), orientation,
            QMarginsF(kMargin, kMargin, kMargin, kMargin), QPageLayout::Millimeter};
}

class InstalledPrinters : public Printers {
  public:
    std::vector<std::string> Names() const override {
        std::vector<std::string> names;
        for (const QString& name : QPrinterInfo::availablePrinterNames()) names.push_back(FromQString(name));
        names.emplace_back(kPrintToPdf);
        return names;
    }
    std::string DefaultName() const override {
        const QString name = QPrinterInfo::defaultPrinterName();
        return name.isEmpty() ? std::string(kPrintToPdf) : FromQString(name);
    }
    QPageLayout::Orientation OrientationOf(const std::string& name) const override {
        if (name == kPrintToPdf) return QPageLayout::Portrait;
        return QPrinter(QPrinterInfo::printerInfo(ToQString(name))).pageLayout().orientation();
    }
    std::unique_ptr<QPrinter> Open(const std::string& name,
                                   QPageLayout::Orientation orientation) const override {
        auto printer = std::make_unique<QPrinter>(QPrinter::HighResolution);
        if (name == kPrintToPdf) {
            printer->setOutputFormat(QPrinter::PdfFormat);
            printer->setPageLayout(PdfLayout(orientation));
            return printer;
        }
        printer->setPrinterName(ToQString(name));
        // Qt falls back to a PDF file where a printer is gone.
        if (printer->outputFormat() != QPrinter::NativeFormat || !printer->isValid())
            throw ErrorException(
                Error(ErrorNumber::DeviceUnavailable, "The printer \"" + name + "\" is not available."));
        printer->setPageOrientation(orientation);
        printer->setDocName(QStringLiteral("Vantrel"));
        return printer;
    }
};

// Takes what Qt writes to a file that is replaced as a whole. Qt knows no exceptions: the first failure is
// kept until it is asked for, and what comes after it goes nowhere.
class SinkDevice : public QIODevice {
  public:
    explicit SinkDevice(const PieceSink& sink) : sink_(sink) { open(QIODevice::WriteOnly); }
    bool isSequential() const override { return true; }
    void ThrowIfFailed() const {
        if (failure_) throw ErrorException(*failure_);
    }
    void GiveUp() { isGivenUp_ = true; }

  protected:
    qint64 readData(char*, qint64) override { return -1; }
    qint64 writeData(const char* data, qint64 size) override {
        if (failure_ || isGivenUp_) return size;
        try {
            sink_({data, static_cast<std::size_t>(size)});
        } catch (const ErrorException& error) {
            failure_ = error.Get();
        }
        return size;
    }

  private:
    const PieceSink& sink_;
    std::optional<Error> failure_;
    bool isGivenUp_ = false;
};

// The job failed and said so: nothing of it is to be kept.
struct GivenUp {};

}  // namespace

Printers& SystemPrinters() {
    static InstalledPrinters printers;
    return printers;
}

bool PrintOnPrinter(QPrinter& printer, const PrintJob& job) {
    const auto check = [&printer] {
        if (printer.printerState() == QPrinter::Error || printer.printerState() == QPrinter::Aborted)
            throw ErrorException(
                Error(ErrorNumber::DeviceUnavailable, "The printer has broken the job off."));
    };
    DevicePaper paper(printer, {job.onPage, check, [&printer] { printer.abort(); }});
    if (!job.print(paper)) return false;
    paper.Finish();
    return true;
}

bool PrintToPdf(const FileSystem& files, const std::string& path, QPageLayout::Orientation orientation,
                const PrintJob& job) {
    try {
        ThrowIfFailed(ReplaceFileInPieces(files, path, [&](const PieceSink& sink) {
            SinkDevice device(sink);
            QPdfWriter writer(&device);
            writer.setPageLayout(PdfLayout(orientation));
            writer.setTitle(QStringLiteral("Vantrel"));
            writer.setCreator(QStringLiteral("Vantrel"));
            DevicePaper paper(
                writer, {job.onPage, [&device] { device.ThrowIfFailed(); }, [&device] { device.GiveUp(); }});
            if (!job.print(paper)) throw GivenUp();
            paper.Finish();
        }));
    } catch (const GivenUp&) {
        return false;
    }
    return true;
}

}  // namespace vantrel
