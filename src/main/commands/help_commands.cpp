#include <QAction>
#include <cstring>

#include "config.h"
#include "main/application.h"
#include "main/commands/handlers.h"
#include "main/forms/frm_about.h"
#include "main/forms/frm_help.h"
#include "platform/names/paths.h"

namespace vantrel {
namespace {

void OpenAddress(Application& application, const char* address) {
    if (application.around.desktop.OpenAddress(address)) return;
    application.around.messages.Ask({.title = "Vantrel on the Web",
                                     .text = std::string("The address ") + address + " could not be opened.",
                                     .icon = MessageIcon::Warning,
                                     .defaultAnswer = {}});
}

struct WebItem {
    const char* item;
    const char* address;
};
constexpr WebItem kWebItems[] = {
    {"mnuHelpWebNews", config::kWebNews},
    {"mnuHelpWebFAQs", config::kWebFaqs},
    {"mnuHelpWebFeedback", config::kWebFeedback},
};

}  // namespace

void OpenHelpPage(Application& application, std::string_view place, QWidget* over) {
    const std::size_t hash = place.find('#');
    const std::string path = JoinPath(GetParentFolderName(application.HelpFile), place.substr(0, hash));
    if (!application.tools.files.FileExists(path)) {
        application.around.messages.Ask({.title = "Help",
                                         .text = "The help page \"" + path + "\" was not found.",
                                         .icon = MessageIcon::Warning,
                                         .defaultAnswer = {}});
        return;
    }
    // What the desktop opens files with is given no place in them.
    const bool isWhole = hash == std::string_view::npos;
    if (isWhole && application.around.desktop.OpenFile(path)) return;
    QWidget* owner = over != nullptr ? over : &application.Window();
    auto* window = owner->findChild<frmHelp*>();
    if (!window) window = new frmHelp(owner);
    window->ShowPage(path, isWhole ? std::string_view() : place.substr(hash + 1));
}

void InstallHelpCommands(Application& application) {
    Commands& commands = application.GetCommands();
    const auto page = [&application](const char* name) {
        return [&application, name] { OpenHelpPage(application, name); };
    };
    commands.SetHandler(kCommandOpenHelp, page("index.html"));
    commands.SetHandler("mnuHelpContents", page("index.html"));
    commands.SetHandler("mnuHelpTroubleshooting", page("troubleshooting.html"));
    // What leads nowhere is not shown.
    bool anyAddress = false;
    for (const WebItem& web : kWebItems) {
        const bool known = std::strlen(web.address) > 0;
        anyAddress |= known;
        commands.Action(web.item)->setVisible(known);
        if (known)
            commands.SetHandler(web.item, [&application, &web] { OpenAddress(application, web.address); });
    }
    commands.Action("mnuHelpVantrelOntheWeb")->setVisible(anyAddress);
    commands.SetHandler("mnuHelpAboutBox", [&application] {
        frmAbout(application.AppVersion, application.around.folders, &application.Window()).exec();
    });
}

}  // namespace vantrel
