#include "views/notices.h"

namespace vantrel {
namespace {

constexpr const char* kSection = "Notices";

}  // namespace

void Notices::ShowExplorerNotice() {
    ShowOnce(explorerShown_, "ExplorerNoticeShown", "Explore",
             "The folder opens in the file manager of your desktop.\r\n\r\n"
             "What you change there shows here after the next comparison.");
}

void Notices::ShowSelectedNotice() {
    ShowOnce(selectedShown_, "SelectedNoticeShown", "Show Only Selected Objects",
             "The pane is now limited to the selected objects, and the other pane is empty.\r\n\r\n"
             "Choose a view from the View menu to see all rows again.");
}

void Notices::ShowOnce(bool& shown, const char* key, const std::string& title, const std::string& text) {
    if (shown) return;
    shown = true;
    IniDocument document;
    if (file_.Read(document).IsOk() && document.Get(kSection, key) == "True") return;
    tools_.messages.ShowInformationMessage(title, text);
    // Not being able to remember a hint is no reason to trouble the user.
    static_cast<void>(file_.Update([key](const IniDocument&) {
        return std::vector<IniChange>{{kSection, key, "True"}};
    }));
}

}  // namespace vantrel
