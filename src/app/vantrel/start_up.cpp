#include "start_up.h"

#include <QApplication>
#include <QFileInfo>
#include <QStandardPaths>
#include <QtGlobal>
#include <algorithm>
#include <cstdio>
#include <cstdlib>

#include "config.h"
#include "diagnostics/forms/qt_sound_device.h"
#include "fileops/forms/frm_confirmation.h"
#include "last_resort.h"
#include "main/application.h"
#include "main/commands/handlers.h"
#include "main/forms/frm_splash.h"
#include "platform/files/system_calls.h"
#include "platform/forms/icons.h"
#include "platform/forms/qt_text.h"
#include "platform/workers.h"
#include "settings/cini_file.h"
#include "single_instance.h"
#include "start_arguments.h"

namespace vantrel {
namespace {

constexpr int kNoDisplay = 2, kBadArguments = 2;  // exit statuses

// Qt ends the process by abort() when it finds no display; that would look like a crash of the program.
void OnQtMessage(QtMsgType type, const QMessageLogContext&, const QString& text) {
    if (type == QtDebugMsg || type == QtInfoMsg) return;
    std::fprintf(stderr, "vantrel: %s\n", qUtf8Printable(text));
    if (type != QtFatalMsg) return;
    std::fputs("vantrel: the windows need a display. vantrel-cli compares folders without one.\n", stderr);
    std::_Exit(kNoDisplay);
}

// Without a session bus the library would start one of its own and read its address from a pipe, in which it
// can hang for ever. The program needs no bus.
void DoWithoutMissingBus() {
    if (qEnvironmentVariableIsSet("DBUS_SESSION_BUS_ADDRESS")) return;
    const QString bus =
        QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation) + QStringLiteral("/bus");
    if (!QFileInfo::exists(bus)) qputenv("DBUS_SESSION_BUS_ADDRESS", "disabled:");
}

void Raise(QWidget& window) {
    window.setWindowState(window.windowState() & ~Qt::WindowMinimized);
    window.raise();
    window.activateWindow();
}

// The session that the program was started with takes the place of the settings of before, which are kept.
void Load(Application& application, const std::string& session) {
    application.FormLoad();
    if (!session.empty())
        application.GuardRun("frmMain.mnuFileLoadSessionSettings_Click",
                             [&] { OpenSession(application, session, SaveFirst::No); });
}

SplashServices ForSplash(Application& application, const std::string& session) {
    const Surroundings& around = application.around;
    return {.logoFile = around.folders.SupportFile(around.files, "vtlogo.jpg"),
            .readOption =
                [&around](const std::string& key, const std::string& defaultValue) {
                    CIniFile settings(around.files, around.folders, around.messages);
                    settings.SetName(around.folders.executableName + ".ini");
                    settings.Section = "Options";
                    settings.Key = key;
                    return settings.GetStringValue(defaultValue);
                },
            .playWave =
                [&application](const std::string& file) {
                    bool played = false;
                    application.sounds.PlayWave(file, true, played);
                },
            .LoadNextForm = [&application, session] { Load(application, session); }};
}

// Everything that Main makes, in its order; it goes in the opposite one when the program ends.
class Program {
  public:
    explicit Program(std::string appVersion)
        : files_(SystemCallsOfProcess()),
          volumes_(files_),
          folders_(FindProgramFolders(files_)),
          sound_(files_),
          application_({{.files = files_,
                         .volumes = volumes_,
                         .clock = clock_,
                         .locale = locale_,
                         .folders = folders_,
                         .messages = messages_,
                         .loop = loop_},
                        loop_,
                        desktop_,
                        sound_,
                        TrashPlaces::OfThisUser()},
                       std::move(appVersion)) {
        messages_.SetParentWindow(&application_.Window());
        messages_.showConfirmation = ShowConfirmation;
    }

    Application& Get() { return application_; }

  private:
    FileSystem files_;
    SystemVolumes volumes_;
    SystemClock clock_;
    LocaleFormats locale_;
    ProgramFolders folders_;
    QtMessages messages_;
    QtEventLoop loop_;
    QtDesktop desktop_;
    QtSoundDevice sound_;
    Application application_;
};

// From the first window to the last. Gives the exit status.
int RunProgram(const StartArguments& arguments) {
    const std::string appVersion = AppVersionText();
    QApplication::setApplicationName(QStringLiteral("vantrel"));
    QApplication::setApplicationDisplayName(QString());
    QApplication::setApplicationVersion(ToQString(appVersion));
    QApplication::setWindowIcon(ProgramIcon());

    SingleInstance instance(QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation),
                            ToQString(appVersion));
    if (instance.Claim(ToQString(arguments.session)) == SingleInstance::Start::OtherRaised)
        return EXIT_SUCCESS;

    Program program(appVersion);
    Application& application = program.Get();
    QObject::connect(&instance, &SingleInstance::RaiseRequested, &application.Window(),
                     [&application] { Raise(application.Window()); });
    QObject::connect(
        &instance, &SingleInstance::SessionRequested, &application.Window(),
        [&application](const QString& path) { OpenSessionFromOutside(application, FromQString(path)); },
        Qt::QueuedConnection);
    frmSplash splash(ForSplash(application, arguments.session));
    if (!application.GuardRun("modVantrel.Main", [&splash] { splash.Load(); })) return EXIT_FAILURE;
    return QApplication::exec();
}

}  // namespace

std::string AppVersionText() {
    return std::to_string(config::kVersionMajor) + "." + std::to_string(config::kVersionMinor) + "." +
           std::to_string(config::kVersionRevision);
}

int Main(int argc, char** argv) {
    qInstallMessageHandler(OnQtMessage);
    TakeWriteErrorsAsValues();
    DoWithoutMissingBus();
    std::vector<std::string> words = WithSessionInOneWord(argc, argv);
    std::vector<char*> left;
    left.reserve(words.size() + 1);
    for (std::string& word : words) left.push_back(word.data());
    int count = static_cast<int>(left.size());
    left.push_back(nullptr);
    GuardedApplication qt(count, left.data());
    // Behind the library, which takes those that are its own.
    const StartArguments arguments =
        TakeStartArguments({left.begin() + std::min(count, 1), left.begin() + count});
    if (!arguments.error.empty()) {
        std::fprintf(stderr, "vantrel: %s\nusage: vantrel [--session FILE]\n", arguments.error.c_str());
        return kBadArguments;
    }
    const int status = RunGuarded([&arguments] { return RunProgram(arguments); });
    Workers::EndProcessIfLeftBehind(status);
    return status;
}

}  // namespace vantrel
