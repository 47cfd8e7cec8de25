#pragma once

#include <exception>
#include <new>
#include <string>
#include <string_view>
#include <utility>

#include "platform/clock.h"
#include "platform/error.h"
#include "platform/files/file_system.h"
#include "platform/files/support_files.h"
#include "platform/locale/locale_formats.h"
#include "platform/ports.h"

namespace vantrel {

// What the reporter must know and do before it shows a message over a running comparison.
class RunningJob {
  public:
    virtual ~RunningJob() = default;
    virtual bool RunningCompare() const = 0;
    virtual void UnloadCompareProgress() = 0;
};

// The one error reporter. It never throws; an error inside it is swallowed.
class ErrorReporter {
  public:
    ErrorReporter(const FileSystem& files, const ProgramFolders& folders, Clock& clock,
                  const LocaleFormats& locale, MessagePort& messages, EventLoopPort& loop)
        : files_(files),
          folders_(folders),
          clock_(clock),
          locale_(locale),
          messages_(messages),
          loop_(loop) {}

    // `job` may be null and must outlive the reporter.
    void SetRunningJob(RunningJob* job) { job_ = job; }

    // Shows `error` under the routine's own text name, as in "frmMain.CompareDirs". A detail text also goes
    // to ERR_DETAIL.TXT.
    void ReportError(std::string_view routineName, const Error& error,
                     std::string_view detailText = {}) noexcept;

    // The border of a routine that can fail: runs `work`, and reports what comes out of it under
    // `routineName`. False when an error came out. A cancel (Cancelled) passes through.
    template <typename Work>
    bool Guard(std::string_view routineName, Work&& work) {
        try {
            work();
            return true;
        } catch (const ErrorException& error) {
            ReportError(routineName, error.Get());
        } catch (const std::bad_alloc&) {
            ReportError(routineName, Error(ErrorNumber::OutOfStringSpace, "Out of memory"));
        } catch (const std::exception& error) {
            ReportError(routineName, Error(ErrorNumber::Raised, error.what()));
        }
        return false;
    }

    // The border of a whole run, such as what follows a command of the user: the same, and a cancel ends
    // here. False when the work did not come to its own end. Nothing is thrown, so that this may stand where
    // Qt calls.
    template <typename Work>
    bool GuardRun(std::string_view routineName, Work&& work) noexcept {
        try {
            return Guard(routineName, std::forward<Work>(work));
        } catch (const Cancelled&) {
            return false;
        }
    }

  private:
    const FileSystem& files_;
    const ProgramFolders& folders_;
    Clock& clock_;
    const LocaleFormats& locale_;
    MessagePort& messages_;
    EventLoopPort& loop_;
    RunningJob* job_ = nullptr;
};

}  // namespace vantrel
