#include "diagnostics/forms/frm_error_log.h"
#include "main/application.h"
#include "main/commands/handlers.h"
#include "platform/forms/icons.h"
#include "platform/forms/qt_text.h"
#include "views/forms/frm_compare_results.h"
#include "views/forms/frm_select.h"

namespace vantrel {
namespace {

QIcon IconOf(ResultType type, bool colour) {
    return ResultTypeIcon(static_cast<int>(type), colour ? IconColours::Colour : IconColours::Gray);
}

// Over the main window the pointer waits until the wizard is closed.
void OpenSelectWizard(Application& application) {
    frmMain& main = application.Window();
    main.setCursor(Qt::WaitCursor);
    frmSelect wizard({.tools = application.tools,
                      .panes = application.panes,
                      .busy = application.busy,
                      .folders = application.results.folders,
                      .icons = IconOf},
                     &main);
    wizard.exec();
    main.unsetCursor();
    if (const auto side = application.panes.CurrentListview()) main.Panes().View(*side).setFocus();
}

void ShowSummary(Application& application) {
    if (application.panes.Hold()[Side::Left].IsSentinel()) {
        application.around.messages.Ask({.title = "Comparison Results Summary",
                                         .text = "No comparison has been executed",
                                         .icon = MessageIcon::Information,
                                         .defaultAnswer = {}});
        return;
    }
    frmMain& main = application.Window();
    frmCompareResults({.reporter = application.reporter,
                       .hold = application.panes.Hold(),
                       .paths = {{main.PathText(Side::Left), main.PathText(Side::Right)}},
                       .icons = IconOf,
                       .background = main.BackgroundTile(),
                       .showAfterCompare = application.options.showGraphAfterCompare,
                       .storeShowAfterCompare =
                           [&application](bool show) {
                               application.options.showGraphAfterCompare = show;
                               application.GetCommands().RefreshChecks();
                           }},
                      &main)
        .exec();
}

void ShowSummaryAfterCompare(Application& application) {
    if (!application.options.showGraphAfterCompare) return;
    frmMain& main = application.Window();
    main.setWindowState(main.windowState() & ~Qt::WindowMinimized);
    ShowSummary(application);
}

}  // namespace

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
    commands.SetHandler("mnuSelectOther", [&application] { OpenSelectWizard(application); });
    commands.SetHandler("mnuSelectShowNext", [&panes] { panes.ShowNextSelected(); });
    commands.SetHandler("mnuSelectShowOnlySelected", [&panes] { panes.ShowOnlySelectedObjects(); });

    commands.SetHandler("mnuViewViewAll", [&panes] { panes.ChooseView(kViewAll); });
    commands.SetHandler("mnuViewDifferences", [&panes] { panes.ChooseView(kViewDifferent); });
    commands.SetHandler("mnuViewSimilarities", [&panes] { panes.ChooseView(kViewSimilar); });
    commands.SetHandler("mnuViewOther", [&panes] { panes.ChooseOtherView(); });
    commands.SetHandler("mnuViewCompareResultsSummary", [&application] { ShowSummary(application); });
    application.Comparison().ShowCompareResults = [&application] { ShowSummaryAfterCompare(application); };
    commands.SetHandler("mnuViewErrorLog",
                        [&application] { ShowErrorLog(application, application.Window()); });
}

}  // namespace vantrel
