#include "diagnostics/error_reporter.h"

#include <cstdint>

#include "diagnostics/error_detail.h"
#include "platform/line_end.h"

namespace vantrel {
namespace {

std::string ReportText(std::string_view routineName, const Error& error) {
    std::string text;
    const int systemNumber = error.SystemNumber();
    if (systemNumber != 0) text.append("DLL Error: ").append(GetErrorText(systemNumber)).append(kLineEnd);
    text.append("Error: ").append(error.Description()).append(kLineEnd);
    text.append("Source: ").append(routineName).append(kLineEnd);
    // Error numbers are signed 32-bit numbers where they are shown.
    const std::int32_t number =
        systemNumber != 0 ? systemNumber : static_cast<std::int32_t>(error.NumberAsValue());
    text.append("No: ").append(std::to_string(number)).append(kLineEnd);
    return text;
}

}  // namespace

Error AppendErrorDetail(const ErrorDetailPlace& place, std::string_view routineName, const Error& error,
                        std::string_view detailText) {
    std::string entry(kLineEnd);
    entry.append(place.locale.DateTime(FileTimeToLocalFileTime(place.clock.Now()))).append(kLineEnd);
    entry.append(ReportText(routineName, error)).append(kLineEnd);
    entry.append("- More Information - ").append(kLineEnd);
    entry.append(detailText).append(kLineEnd);
    return place.files.AppendToFile(place.folders.appPath + std::string(kErrorDetailFile), entry);
}

void ErrorReporter::ReportError(std::string_view routineName, const Error& error,
                                std::string_view detailText) noexcept {
    try {
        if (job_ && job_->RunningCompare()) {
            job_->UnloadCompareProgress();
            loop_.Yield();
        }
        if (error.Number() == ErrorNumber::InvalidPropertyValue) return;

        std::string report = ReportText(routineName, error);
        if (detailText.find_first_not_of(' ') != std::string_view::npos) {
            const ErrorDetailPlace place{files_, folders_, clock_, locale_};
            if (!AppendErrorDetail(place, routineName, error, detailText).IsOk()) return;
            report.append(kLineEnd).append("See the ERR_DETAIL.TXT file before proceeding.").append(kLineEnd);
        }
        report.append(kLineEnd)
            .append("* If this problem persists, please contact our technical support staff for assistance.")
            .append(kLineEnd)
            .append("  (Refer to the Troubleshooting section of the Help file for details.)");
        messages_.Ask({"Unexpected Error in " + std::string(routineName),
                       report,
                       MessageIcon::Warning,
                       MessageButtons::Ok,
                       {}});
    } catch (...) {
        // The reporter is the last resort: whoever called it goes on and ends in its own defined way.
    }
}

}  // namespace vantrel
