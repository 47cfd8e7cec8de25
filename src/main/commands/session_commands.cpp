// Sessions: the settings saved under a name, loaded again, and had back.
#include <QAction>
#include <QApplication>
#include <QFontMetrics>
#include <QMenu>

#include "main/application.h"
#include "main/commands/handlers.h"
#include "main/running_command.h"
#include "platform/forms/qt_text.h"
#include "settings/session_file.h"

namespace vantrel {
namespace {

constexpr const char* kLoadTitle = "Load Session Settings";

std::string RecentItem(std::size_t index) {
    return "mnuFileRecentSession(" + std::to_string(index) + ")";
}

// An item of a recent session shows its path; those without one are not to be seen.
void ShowRecentSessions(Application& application) {
    constexpr int kWidestPath = 60;  // in characters of average width
    Commands& commands = application.GetCommands();
    QMenu* menu = commands.Menu("mnuFileRecentSessions");
    const QFontMetrics metrics = menu->fontMetrics();
    const std::vector<std::string> recent = application.sessions.Recent();
    for (std::size_t i = 0; i < Sessions::kMostRecent; ++i) {
        QAction* item = commands.Action(RecentItem(i));
        item->setVisible(i < recent.size());
        if (i >= recent.size()) continue;
        const QString path = metrics.elidedText(DisplayQString(recent[i]), Qt::ElideMiddle,
                                                metrics.averageCharWidth() * kWidestPath);
        item->setText(QStringLiteral("&%1 %2").arg(i + 1).arg(
            QString(path).replace(QLatin1Char('&'), QStringLiteral("&&"))));
    }
    menu->menuAction()->setVisible(!recent.empty());
}

void AddRecent(Application& application, const std::string& path) {
    const Error error = application.sessions.AddRecent(path);
    ShowRecentSessions(application);
    ThrowIfFailed(error);
}

// False where the user thought better of it.
bool SaveSession(Application& application) {
    FileDialog dialog;
    dialog.title = "Save Session Settings As...";
    dialog.filter = kSessionFiles;
    dialog.save = true;
    const auto path = application.around.messages.AskForFile(dialog);
    if (!path || !application.SaveOptions()) return false;
    ThrowIfFailed(application.sessions.Save(*path));
    AddRecent(application, *path);
    return true;
}

// Whether there is a session at `path`; if not, the user has been told.
bool IsSession(Application& application, const std::string& path, const Error& error) {
    if (error.IsOk()) return true;
    application.around.messages.Ask(
        {.title = kLoadTitle,
         .text = DescribeSessionError(path, error) + ".\r\n\r\nThe settings have not been changed.",
         .icon = MessageIcon::Warning,
         .defaultAnswer = {}});
    return false;
}

// What is in force is written first, so that it is kept as the previous settings.
bool TakeSession(Application& application, const std::string& path) {
    if (!application.SaveOptions()) return false;
    std::string bytes;
    if (!IsSession(application, path, ReadSession(application.tools.files, path, bytes))) return false;
    ThrowIfFailed(application.sessions.Load(path));
    application.ReloadSettings();
    return true;
}

void LoadSession(Application& application) {
    FileDialog dialog;
    dialog.title = kLoadTitle;
    dialog.filter = kSessionFiles;
    if (const auto path = application.around.messages.AskForFile(dialog))
        OpenSession(application, *path, SaveFirst::IfWanted);
}

void LoadRecent(Application& application, std::size_t index) {
    const std::vector<std::string> recent = application.sessions.Recent();
    if (index < recent.size()) OpenSession(application, recent[index], SaveFirst::IfWanted);
}

void ReturnToPrevious(Application& application) {
    MessagePort& messages = application.around.messages;
    constexpr const char* kTitle = "Previous Settings";
    if (!application.tools.files.FileExists(application.sessions.PreviousFile())) {
        messages.Ask({.title = kTitle,
                      .text = "There are no previous settings to return to.",
                      .icon = MessageIcon::Information,
                      .defaultAnswer = {}});
        return;
    }
    const MessageAnswer answer =
        messages.Ask({.title = kTitle,
                      .text = "Return to the settings that were in force before the last session was loaded, "
                              "or the defaults were restored?\r\n\r\nThose that are in force now become the "
                              "previous ones.",
                      .icon = MessageIcon::Question,
                      .buttons = MessageButtons::YesNo,
                      .defaultAnswer = {}});
    if (answer == MessageAnswer::Yes) TakeSession(application, application.sessions.PreviousFile());
}

}  // namespace

void OpenSession(Application& application, const std::string& path, SaveFirst saveFirst) {
    std::string bytes;
    if (!IsSession(application, path, ReadSession(application.tools.files, path, bytes))) return;
    if (saveFirst == SaveFirst::IfWanted) {
        const MessageAnswer answer =
            application.around.messages.Ask({.title = "Save Current Settings?",
                                             .text = "Do you wish to save the current settings?",
                                             .icon = MessageIcon::Question,
                                             .buttons = MessageButtons::YesNoCancel,
                                             .defaultAnswer = {}});
        if (answer == MessageAnswer::Cancel) return;
        // Settings that were to be saved and were not stay in force.
        if (answer == MessageAnswer::Yes && !SaveSession(application)) return;
    }
    if (TakeSession(application, path)) AddRecent(application, path);
}

void OpenSessionFromOutside(Application& application, const std::string& path) {
    if (application.busy.IsBusy() || QApplication::activeModalWidget() != nullptr) {
        application.Window().StatusBar1().Note(
            "The session was not opened, since the program is busy or waits for an answer.");
        return;
    }
    application.GuardRun("frmMain.mnuFileLoadSessionSettings_Click", [&] {
        const RunningCommand running(application, "");
        OpenSession(application, path, SaveFirst::IfWanted);
    });
}

void InstallSessionCommands(Application& application) {
    const auto handle = [&application](const std::string& command, auto work) {
        application.GetCommands().SetHandler(command, [&application, work] {
            const RunningCommand running(application, "");
            work(application);
        });
    };
    handle("mnuFileSaveSessionSettings", [](Application& program) { SaveSession(program); });
    handle("mnuFileLoadSessionSettings", LoadSession);
    handle("mnuFilePreviousSettings", ReturnToPrevious);
    for (std::size_t i = 0; i < Sessions::kMostRecent; ++i)
        handle(RecentItem(i), [i](Application& program) { LoadRecent(program, i); });
    ShowRecentSessions(application);
}

}  // namespace vantrel
