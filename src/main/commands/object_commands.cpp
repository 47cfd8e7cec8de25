// Commands on the selected object that change nothing by themselves.
#include "fileops/forms/frm_properties.h"
#include "main/application.h"
#include "main/commands/handlers.h"

namespace vantrel {
namespace {

void Warn(Application& application, const char* title, const std::string& text) {
    application.around.messages.Ask(
        {.title = title, .text = text, .icon = MessageIcon::Warning, .defaultAnswer = {}});
}

void OpenObject(Application& application) {
    const std::string path = application.Window().SelectedPath();
    if (path.empty()) return Warn(application, "Open Object", "No object has been selected.");
    if (!application.tools.files.Exists(path))
        return Warn(application, "Open Object", "The object \"" + path + "\" was not found.");
    QtShellCalls shell(application.tools, application.around.desktop);
    OpenFile(shell, path);
}

void ShowObjectProperties(Application& application) {
    const std::string path = application.Window().SelectedPath();
    if (path.empty())
        return Warn(application, "Show Property Page",
                    "Unable to display property page. No valid file is selected.");
    QtShellCalls shell(application.tools, application.around.desktop);
    ShowProperties(shell, path);
}

}  // namespace

void InstallObjectCommands(Application& application) {
    Commands& commands = application.GetCommands();
    commands.SetHandler("mnuFileOpenFile", [&application] { OpenObject(application); });
    commands.SetHandler("mnuFileShowFileProperties", [&application] { ShowObjectProperties(application); });
}

}  // namespace vantrel
