// Commands on the selected object that change nothing.
#include "application.h"
#include "handlers.h"

namespace vantrel {
namespace {

void OpenObject(Application& application) {
    const std::string path = application.Window().SelectedPath();
    MessagePort& messages = application.around.messages;
    if (path.empty()) {
        messages.Ask({.title = "Open Object",
                      .text = "No object has been selected.",
                      .icon = MessageIcon::Warning,
                      .defaultAnswer = {}});
        return;
    }
    if (application.tools.files.Exists(path) && application.around.desktop.OpenFile(path)) return;
    messages.Ask({.title = "Open Object",
                  .text = "The object \"" + path + "\" could not be opened.",
                  .icon = MessageIcon::Warning,
                  .defaultAnswer = {}});
}

}  // namespace

void InstallObjectCommands(Application& application) {
    application.GetCommands().SetHandler("mnuFileOpenFile", [&application] {
        application.Guard("frmMain.mnuFileOpenFile_Click", [&] { OpenObject(application); });
    });
}

}  // namespace vantrel
