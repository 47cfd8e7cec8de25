#include "diagnostics/forms/frm_error_log.h"
#include "main/application.h"
#include "main/commands/handlers.h"

namespace vantrel {

void ShowErrorLog(Application& application, QWidget& over) {
    frmErrorLog viewer(application.around.files, application.reporter, &over);
    viewer.DisplayFile(application.log.Path());
    viewer.exec();
}

void InstallSelectionAndViewCommands(Application& application) {
    Commands& commands = application.GetCommands();
    ResultPanes& panes = application.panes;
    panes.ShowSelectedNotice = [&application] { application.notices.ShowSelectedNotice(); };
    commands.SetHandler("mnuSelectAll", [&panes] { panes.SelectAll(); });
    commands.SetHandler("mnuDeSelectAll", [&panes] { panes.DeselectAll(); });
    commands.SetHandler("mnuInvertSelection", [&panes] { panes.InvertSelection(); });
    commands.SetHandler("mnuSelectShowNext", [&panes] { panes.ShowNextSelected(); });
    commands.SetHandler("mnuSelectShowOnlySelected", [&panes] { panes.ShowOnlySelectedObjects(); });

    commands.SetHandler("mnuViewViewAll", [&panes] { panes.ChooseView(kViewAll); });
    commands.SetHandler("mnuViewDifferences", [&panes] { panes.ChooseView(kViewDifferent); });
    commands.SetHandler("mnuViewSimilarities", [&panes] { panes.ChooseView(kViewSimilar); });
    commands.SetHandler("mnuViewOther", [&panes] { panes.ChooseOtherView(); });
    commands.SetHandler("mnuViewErrorLog",
                        [&application] { ShowErrorLog(application, application.Window()); });
}

}  // namespace vantrel
