#include "platform/error.h"

#include <cerrno>
#include <cstring>

namespace vantrel {

namespace {

struct Translation {
    int code;
    ErrorNumber number;
};

constexpr Translation kTranslations[] = {
    {ENOENT, ErrorNumber::FileNotFound},
    {ENOTDIR, ErrorNumber::PathNotFound},
    {ELOOP, ErrorNumber::PathNotFound},
    {EACCES, ErrorNumber::PermissionDenied},
    {EPERM, ErrorNumber::PermissionDenied},
    {EROFS, ErrorNumber::PermissionDenied},
    {ETXTBSY, ErrorNumber::PermissionDenied},
    {EEXIST, ErrorNumber::FileAlreadyExists},
    {EBUSY, ErrorNumber::FileAlreadyOpen},
    {EAGAIN, ErrorNumber::FileAlreadyOpen},
    {EISDIR, ErrorNumber::PathFileAccess},
    {ENOTEMPTY, ErrorNumber::PathFileAccess},
    {ENOSPC, ErrorNumber::DiskFull},
    {EDQUOT, ErrorNumber::DiskFull},
    {EFBIG, ErrorNumber::DiskFull},
    {EXDEV, ErrorNumber::RenameAcrossDisks},
    {EMFILE, ErrorNumber::TooManyFiles},
    {ENFILE, ErrorNumber::TooManyFiles},
    {ENAMETOOLONG, ErrorNumber::BadFileNameOrNumber},
    {EINVAL, ErrorNumber::BadFileNameOrNumber},
    {EILSEQ, ErrorNumber::BadFileNameOrNumber},
    {EBADF, ErrorNumber::BadFileNameOrNumber},
    {ENOMEM, ErrorNumber::OutOfStringSpace},
    {ENOTSUP, ErrorNumber::DeviceUnavailable},
    {ENODEV, ErrorNumber::DeviceUnavailable},
    {ENXIO, ErrorNumber::DeviceUnavailable},
    {ENOSYS, ErrorNumber::DeviceUnavailable},
    {ENOTCONN, ErrorNumber::DiskNotReady},
    {EHOSTDOWN, ErrorNumber::DiskNotReady},
    {EHOSTUNREACH, ErrorNumber::DiskNotReady},
    {ETIMEDOUT, ErrorNumber::DiskNotReady},
    {ESTALE, ErrorNumber::DiskNotReady},
    {ENOMEDIUM, ErrorNumber::DiskNotReady},
};

// All that is not in the table happened between the system and its device.
constexpr ErrorNumber kOtherwise = ErrorNumber::DeviceIo;

constexpr struct {
    ErrorNumber number;
    const char* text;
} kTexts[] = {
    {ErrorNumber::OutOfStringSpace, "Out of memory"},
    {ErrorNumber::BadFileNameOrNumber, "Bad file name or number"},
    {ErrorNumber::FileNotFound, "File not found"},
    {ErrorNumber::FileAlreadyOpen, "File already open"},
    {ErrorNumber::DeviceIo, "Device I/O error"},
    {ErrorNumber::FileAlreadyExists, "File already exists"},
    {ErrorNumber::DiskFull, "Disk full"},
    {ErrorNumber::TooManyFiles, "Too many files"},
    {ErrorNumber::DeviceUnavailable, "Device unavailable"},
    {ErrorNumber::PermissionDenied, "Permission denied"},
    {ErrorNumber::DiskNotReady, "Disk not ready"},
    {ErrorNumber::RenameAcrossDisks, "Can't rename with different drive"},
    {ErrorNumber::PathFileAccess, "Path/File access error"},
    {ErrorNumber::PathNotFound, "Path not found"},
};

ErrorNumber NumberOf(int code) {
    for (const auto& entry : kTranslations)
        if (entry.code == code) return entry.number;
    return kOtherwise;
}

std::string Describe(ErrorNumber number, std::string_view about) {
    std::string text;
    for (const auto& entry : kTexts)
        if (entry.number == number) text = entry.text;
    if (!about.empty()) text.append(" \"").append(about).append("\"");
    return text;
}

}  // namespace

Error Error::FromErrno(int code, std::string_view about) {
    if (code == 0) return {};
    const ErrorNumber number = NumberOf(code);
    Error error(number, Describe(number, about));
    error.systemNumber_ = code;
    return error;
}

Error Error::FromErrnoOfFolder(int code, std::string_view about) {
    Error error = FromErrno(code, about);
    if (error.number_ == ErrorNumber::FileNotFound) {
        error.number_ = ErrorNumber::PathNotFound;
        error.description_ = Describe(error.number_, about);
    }
    return error;
}

std::string GetErrorText(int code) {
    const char* text = strerrordesc_np(code);
    return text != nullptr ? text : "Error (" + std::to_string(code) + ") not defined.";
}

}  // namespace vantrel
