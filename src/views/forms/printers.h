#pragma once

#include <QPageLayout>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "platform/files/file_system.h"
#include "views/printed_pages.h"

class QPrinter;

namespace vantrel {

// The entry of the list of printers that stands for a PDF file.
inline constexpr std::string_view kPrintToPdf = "Print to File (PDF)";

// The printers of this computer. Tests have others.
class Printers {
  public:
    virtual ~Printers() = default;
    // As the list shows them; kPrintToPdf is one of them.
    virtual std::vector<std::string> Names() const = 0;
    // One of the names.
    virtual std::string DefaultName() const = 0;
    virtual QPageLayout::Orientation OrientationOf(const std::string& name) const = 0;
    // Of kPrintToPdf it is good for a preview only.
    virtual std::unique_ptr<QPrinter> Open(const std::string& name,
                                           QPageLayout::Orientation orientation) const = 0;
};

// Those that the system has set up, and the PDF file, which is always there.
Printers& SystemPrinters();

// What becomes of a job that is printed page by page.
struct PrintJob {
    // Prints all of it on the paper. False where it failed, which was then reported. May throw.
    std::function<bool(Paper& paper)> print;
    std::function<void(std::size_t page, std::size_t pages)> onPage;  // before each page; may throw
};

// Runs the job on a printer. False where the job did; throws ErrorException where the printer fails. What
// ends early is taken back as far as the printer lets us.
bool PrintOnPrinter(QPrinter& printer, const PrintJob& job);

// Into a PDF file, which is replaced as a whole; what ends early leaves the old one.
bool PrintToPdf(const FileSystem& files, const std::string& path, QPageLayout::Orientation orientation,
                const PrintJob& job);

}  // namespace vantrel
