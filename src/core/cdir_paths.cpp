// The path services of CDir: is a path valid, make a nested one, find the parent.
#include "core/cdir.h"
#include "platform/names/paths.h"

namespace vantrel {
namespace {

constexpr std::string_view kBlankLine = "\r\n\r\n";

std::string Quoted(std::string_view text) {
    return '"' + std::string(text) + '"';
}

std::string ErrorWhileProcessing(std::string_view path, std::string_view advice) {
    return "An error occurred while processing " + Quoted(path) + "." + std::string(kBlankLine) +
           std::string(advice);
}

bool IsAbsolute(std::string_view path) {
    return !path.empty() && path.front() == '/';
}

}  // namespace

bool CDir::FailCompare(std::string text) const {
    tools_.messages.Ask({"Compare Failed", std::move(text), MessageIcon::Warning, MessageButtons::Ok});
    return false;
}

// `pending` is what kept the system from answering; that there is no such thing is an answer.
bool CDir::IsFolder(const std::string& path, Error& pending) const {
    pending = Error();
    if (!IsAbsolute(path)) return false;
    FileInfo info;
    Error error = tools_.files.Stat(path, LinkPolicy::Follow, info);
    if (error.IsOk()) return info.kind == EntryKind::Folder;
    if (error.Number() != ErrorNumber::FileNotFound && error.Number() != ErrorNumber::PathNotFound)
        pending = std::move(error);
    return false;
}

CDir::DriveState CDir::StateOfDrive(const std::string& drive) const {
    if (drive.empty() || !tools_.volumes.DriveExists(drive)) return DriveState::Missing;
    return tools_.volumes.IsReady(drive) ? DriveState::Ready : DriveState::NotReady;
}

bool CDir::AccessIsAllowed(const std::string& path) const {
    bool allowed = false;
    tools_.reporter.Guard("CDir.IsValidPath", [&] {
        OpenFolder folder;
        Error error = tools_.files.Open(path, folder);
        // One entry tells whether the folder can be read; the scan sees to the rest.
        if (error.IsOk()) error = folder.ForEach([](const FolderEntry&) { return false; });
        if (error.Number() == ErrorNumber::PermissionDenied) {
            FailCompare(ErrorWhileProcessing(path,
                                             "You do not have permission to access this folder.  Please see "
                                             "your Network Administrator."));
            return;
        }
        ThrowIfFailed(std::move(error));
        allowed = true;
    });
    return allowed;
}

bool CDir::IsValidPath(std::string_view text) const {
    const std::string path(text);
    if (path.size() < 2 && path != "/") {
        tools_.messages.ShowInformationMessage(
            "Invalid Path", Quoted(path) + " is not a valid path." + std::string(kBlankLine) +
                                "Paths must contain at least two characters.\r\nex)  C:");
        return false;
    }
    Error pending;
    while (!IsFolder(path, pending)) {
        const std::string drive = IsAbsolute(path) ? tools_.volumes.GetDriveName(path) : std::string();
        switch (StateOfDrive(drive)) {
            case DriveState::Ready:
                return FailCompare(ErrorWhileProcessing(
                    path, "Make sure that the folder exists and that you have permission to access it."));
            case DriveState::NotReady:
                if (tools_.messages.Ask({"Compare Failed", "Drive " + Quoted(drive) + " is not ready.",
                                         MessageIcon::Warning, MessageButtons::RetryCancel}) ==
                    MessageAnswer::Retry)
                    continue;
                return false;
            case DriveState::Missing:
                if (!pending.IsOk())
                    return FailCompare("Error Number: " + std::to_string(pending.NumberAsValue()) +
                                       std::string(kBlankLine) +
                                       "An unexpected error occurred while accessing " + path);
                if (drive.empty())
                    return FailCompare(ErrorWhileProcessing(
                        path, "Make sure that the drive exists and that you have permission to access it."));
                return FailCompare("Drive " + Quoted(drive) + " was not found." + std::string(kBlankLine) +
                                   "Click the folder icon with three dots in it to select an existing path.");
        }
    }
    return AccessIsAllowed(path);
}

bool CDir::CreateNestedFoldersByPath(std::string_view path) const {
    const std::string full = NormalizePath(path);
    if (!IsAbsolute(full)) return false;
    // The drive is there already: the first piece to make stands behind it.
    const std::string drive = NormalizePath(tools_.volumes.GetDriveName(full));
    std::size_t made = full.starts_with(drive) && !drive.empty() ? drive.size() : 1;
    while (true) {
        const std::size_t slash = full.find('/', made);
        if (slash == std::string::npos) break;
        (void)tools_.files.CreateFolder(full.substr(0, slash));
        made = slash + 1;
    }
    return tools_.files.FolderExists(full);
}

std::string CDir::GetParentDir(std::string_view path) {
    std::string parent = GetParentFolderName(WithoutTrailingSlash(path));
    return parent.empty() ? std::string(path) : parent;
}

}  // namespace vantrel
