#pragma once

#include <stdexcept>
#include <string>
#include <string_view>

namespace vantrel {

// The program's own error numbers, which reports and logs show. The operating system's errors are translated
// to them once, in FromErrno; all else tests these.
enum class ErrorNumber : unsigned {
    None = 0,
    Overflow = 6,
    OutOfStringSpace = 14,
    BadFileNameOrNumber = 52,
    FileNotFound = 53,
    FileAlreadyOpen = 55,
    DeviceIo = 57,
    FileAlreadyExists = 58,
    DiskFull = 61,
    TooManyFiles = 67,
    DeviceUnavailable = 68,
    PermissionDenied = 70,
    DiskNotReady = 71,
    RenameAcrossDisks = 74,
    PathFileAccess = 75,
    PathNotFound = 76,
    InvalidPropertyValue = 380,
    Raised = 0x80040000,  // raised by the program itself towards its own handlers
};

// What went wrong, as a value. An Error that IsOk() is no error.
class [[nodiscard]] Error {
  public:
    Error() = default;
    Error(ErrorNumber number, std::string description)
        : number_(number), description_(std::move(description)) {}

    // Translates `code`, an errno value. `about` names the object, usually a path in the engine's form; it
    // may be empty.
    static Error FromErrno(int code, std::string_view about = {});
    // The same for a folder: where one is missing, it is a path that was not found.
    static Error FromErrnoOfFolder(int code, std::string_view about);

    bool IsOk() const { return number_ == ErrorNumber::None; }
    ErrorNumber Number() const { return number_; }
    unsigned long NumberAsValue() const { return static_cast<unsigned long>(number_); }
    // What the user reads: the number's own text, then the object in quotes where there is one.
    const std::string& Description() const { return description_; }
    // The operating system's own number (errno), 0 where the system was not asked.
    int SystemNumber() const { return systemNumber_; }
    // The same error with another text for the user; number and system number stay.
    Error WithDescription(std::string description) const {
        Error error = *this;
        error.description_ = std::move(description);
        return error;
    }

  private:
    ErrorNumber number_ = ErrorNumber::None;
    int systemNumber_ = 0;
    std::string description_;
};

// An Error on its way to the border of the routine that will report it.
class ErrorException : public std::runtime_error {
  public:
    explicit ErrorException(Error error)
        : std::runtime_error(error.Description()), error_(std::move(error)) {}
    const Error& Get() const { return error_; }

  private:
    Error error_;
};

// Thrown to end a run that the user cancelled. It is no error: it passes through every guard on its way,
// unreported, to the run that it ends. What is cancelled may derive from it, to say what it was.
struct Cancelled {};

inline void ThrowIfFailed(Error error) {
    if (!error.IsOk()) throw ErrorException(std::move(error));
}

// Text of an operating system error; "Error (<code>) not defined." where the system has none.
std::string GetErrorText(int code);

}  // namespace vantrel
