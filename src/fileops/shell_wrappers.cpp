#include "fileops/shell_wrappers.h"

namespace vantrel {

ShellResult ShellWrappers::CopyFiles(std::vector<std::string> sources, std::string_view target,
                                     Options options) {
    ShellRequest request;
    request.operation = ShellOperation::Copy;
    request.sources = std::move(sources);
    request.target = target;
    return Finish(std::move(request), std::move(options), "Selected item(s) copied to " + std::string(target),
                  "Copy Succeeded");
}

ShellResult ShellWrappers::MoveFiles(std::vector<std::string> sources, std::string_view target,
                                     Options options) {
    ShellRequest request;
    request.operation = ShellOperation::Move;
    request.sources = std::move(sources);
    request.target = target;
    return Finish(std::move(request), std::move(options), "Selected item(s) moved to " + std::string(target),
                  "Move Succeeded");
}

ShellResult ShellWrappers::RecycleFiles(std::vector<std::string> sources, Options options) {
    ShellRequest request;
    request.operation = ShellOperation::Recycle;
    request.sources = std::move(sources);
    return Finish(std::move(request), std::move(options), "Selected item(s) sent to the Recycle Bin",
                  "Delete Succeeded");
}

ShellResult ShellWrappers::DeleteFilesPermanently(std::vector<std::string> sources, Options options) {
    ShellRequest request;
    request.operation = ShellOperation::Delete;
    request.sources = std::move(sources);
    return Finish(std::move(request), std::move(options), "Selected item(s) deleted", "Delete Succeeded");
}

ShellResult ShellWrappers::RenameFile(std::string_view source, std::string_view target,
                                      RenameOptions options) {
    ShellRequest request;
    request.operation = ShellOperation::Rename;
    request.sources = {std::string(source)};
    request.target = target;
    request.noConfirmation = !options.confirm;
    request.silent = request.noErrorUi = !options.showErrors;
    ShellResult result = shell_.Run(request);
    if (options.showErrors && result.anyOperationsAborted) {
        messages_.Ask({"Rename Failed",
                       "Rename operation was cancelled",
                       MessageIcon::Warning,
                       MessageButtons::Ok,
                       {}});
    } else if (options.showErrors) {
        ShowApiError(result);
    }
    return result;
}

ShellResult ShellWrappers::Finish(ShellRequest request, Options options, const std::string& successText,
                                  const std::string& successTitle) {
    request.expected = std::move(options.expected);
    request.roots = std::move(options.roots);
    request.targetIsFullPath = options.targetIsFullPath;
    request.ignoreLetterCase = options.ignoreLetterCase;
    request.passesOverSpecial = options.passesOverSpecial;
    request.noConfirmation = !options.confirm;
    request.silent = request.noErrorUi = options.silent;
    ShellResult result = shell_.Run(request);
    if (!result.AllDone()) {
        // What the user had a hand in is known to the user.
        if (!result.anyOperationsAborted && !options.silent) ShowApiError(result);
    } else if (options.confirm) {
        messages_.Ask({successTitle, successText, MessageIcon::Information, MessageButtons::Ok, {}});
    }
    return result;
}

void ShellWrappers::ShowApiError(const ShellResult& result) {
    if (result.code == 0 || result.lastSystemError == 0) return;
    messages_.Ask(
        {"API Error", std::to_string(result.lastSystemError), MessageIcon::Warning, MessageButtons::Ok, {}});
}

}  // namespace vantrel
