#include "main/application.h"

#include <QFontInfo>
#include <QGuiApplication>
#include <QScreen>
#include <algorithm>
#include <utility>

#include "core/compare_options.h"
#include "main/commands/handlers.h"
#include "platform/forms/qt_text.h"
#include "sync/sync_options.h"

namespace vantrel {

Application::Application(const Surroundings& surroundings, std::string appVersion)
    : AppVersion(std::move(appVersion)),
      HelpFile(surroundings.folders.SupportFile(surroundings.files, "help/index.html")),
      around(surroundings),
      ownTools_(around),
      tools(ownTools_.Get()),
      reporter(tools.reporter),
      log(tools.log),
      sounds(around.sound),
      store(around.files, around.folders),
      history(around.files, around.folders),
      panes(results.hold, viewSelections, reporter, around.messages, busy),
      notices(tools, store.File()) {
    reporter.SetRunningJob(this);
    window_ = std::make_unique<frmMain>(frmMain::Parts{.tools = tools,
                                                       .options = options,
                                                       .compare = compare,
                                                       .results = results,
                                                       .panes = panes,
                                                       .busy = busy,
                                                       .history = history},
                                        AppVersion);
    progress_ =
        std::make_unique<frmCompareProgress>(around.events, around.files, around.folders, window_.get());
    comparison_ = std::make_unique<MainComparison>(*this, *progress_);
    operations = std::make_unique<ObjectOperations>(*this, around.trash);
    InstallHandlers(*this);
    Commands& commands = window_->GetCommands();
    window_->SetHooks({
        .compare = [&commands] { commands.Run("mnuFileCompareDirectories"); },
        .pathIcon = [this](Side side, PathIcon icon) { OnPathIconClicked(*this, side, icon); },
        .cancelJob = [this] { around.events.RequestCancel(); },
        .unload = [this] { FormUnload(); },
    });
}

Application::~Application() {
    // The progress window is a child of the main window and would go with it.
    operations.reset();
    comparison_.reset();
    progress_.reset();
    window_.reset();
}

void Application::UnloadCompareProgress() {
    if (progress_) progress_->Unload();
}

void Application::AutoCompareStep(bool compareAgain) {
    if (compareAgain)
        CompareDirs(CompareEnding::Silent);
    else
        panes.RemoveListItemsAndShowNoCompareMsg();
}

OptionEnvironment Application::Environment() const {
    constexpr double kLogicalDpi = 96;
    OptionEnvironment environment;
    environment.doneSound = around.folders.SupportFile(around.files, "vtdone.wav");
    const QFontInfo font(window_->OwnFont());
    environment.fontName = FromQString(font.family());
    environment.fontSize = font.pointSizeF();
    if (const QScreen* screen = QGuiApplication::primaryScreen()) {
        const QRect main = screen->geometry();
        const QRect all = screen->virtualGeometry();
        environment.screenWidth = TwipsFromPixels(main.width(), kLogicalDpi);
        environment.screenHeight = TwipsFromPixels(main.height(), kLogicalDpi);
        environment.desktopWidth = TwipsFromPixels(std::max(all.right() + 1, main.width()), kLogicalDpi);
        environment.desktopHeight = TwipsFromPixels(std::max(all.bottom() + 1, main.height()), kLogicalDpi);
    }
    return environment;
}

void Application::HoldersFromOptions() {
    ApplyOptions(options, compare);
    ApplyOptions(options, operations->syncSettings);
    sounds.SoundOn = options.soundOn;
    sounds.StartSound = options.startSound;
    sounds.ExitSound = options.exitSound;
    sounds.CompareCompleteSound = options.comparisonCompleteSound;
    sounds.SyncCompleteSound = options.syncCompleteSound;
    viewSelections.SetViewType(static_cast<std::int32_t>(options.viewType));
    viewSelections.Flags = {options.viewNewerFiles,          options.viewOlderFiles,
                            options.viewIdenticalFiles,      options.viewOrphanFiles,
                            options.viewBinaryFiles,         options.viewIdenticalSubFolders,
                            options.viewDifferentSubFolders, options.viewOrphanSubFolders};
    panes.DisplayViewSelections();
}

void Application::OptionsFromHolders() {
    CollectOptions(compare, options);
    CollectOptions(operations->syncSettings, options);
    options.soundOn = sounds.SoundOn;
    options.startSound = sounds.StartSound;
    options.exitSound = sounds.ExitSound;
    options.comparisonCompleteSound = sounds.CompareCompleteSound;
    options.syncCompleteSound = sounds.SyncCompleteSound;
    options.viewType = static_cast<Options::ViewType>(panes.CheckedViewItem());
    const auto& flags = viewSelections.Flags;
    options.viewNewerFiles = flags[0];
    options.viewOlderFiles = flags[1];
    options.viewIdenticalFiles = flags[2];
    options.viewOrphanFiles = flags[3];
    options.viewBinaryFiles = flags[4];
    options.viewIdenticalSubFolders = flags[5];
    options.viewDifferentSubFolders = flags[6];
    options.viewOrphanSubFolders = flags[7];
}

void Application::LoadOptions() {
    const Error error = store.Load(Environment(), options);
    HoldersFromOptions();
    window_->RestoreGeometry(options);
    window_->ShowOptions();
    if (!error.IsOk()) reporter.ReportError("frmMain.LoadOptions", error);
}

void Application::SaveOptions() {
    OptionsFromHolders();
    const SaveGeometry geometry = window_->CollectOptions(options) ? SaveGeometry::Yes : SaveGeometry::No;
    const Error error = store.Save(options, geometry);
    if (!error.IsOk()) reporter.ReportError("frmMain.SaveOptions", error);
}

void Application::RestoreDefaults() {
    const Error error = store.RestoreDefaults(Environment(), options);
    panes.RemoveListItemsAndShowNoCompareMsg();
    window_->PopulatingFolderCombos = true;
    window_->PopulateDirComboBoxesFromIniFile();
    HoldersFromOptions();
    window_->RestoreGeometry(options);
    window_->ShowOptions();
    window_->PopulatingFolderCombos = false;
    window_->StatusBar1().Reset();
    ThrowIfFailed(error);
}

void Application::FormLoad() {
    GuardRun("frmMain.Form_Load", [this] {
        panes.RemoveListItemsAndShowNoCompareMsg();
        const bool firstRun = store.IsFirstRun();
        window_->PopulatingFolderCombos = true;
        window_->PopulateDirComboBoxesFromIniFile();
        LoadOptions();
        window_->PopulatingFolderCombos = false;
        window_->show();
        around.events.YieldNow();
        for (const Side side : kBothSides) comparison_->Dir(side).SetPath(window_->PathText(side));
        panes.SetCurrentListview(Side::Left);
        if (firstRun) GetCommands().Run(kCommandOpenHelp);
    });
}

}  // namespace vantrel
