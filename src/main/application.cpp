#include "main/application.h"

#include <QFontInfo>
#include <QGuiApplication>
#include <QScopedValueRollback>
#include <QScreen>
#include <algorithm>
#include <utility>

#include "core/mod_sha1_hash.h"
#include "main/commands/handlers.h"
#include "platform/forms/qt_text.h"
#include "settings/option_changes.h"
#include "settings/sessions.h"

namespace vantrel {

Application::Application(const Surroundings& surroundings, std::string appVersion)
    : AppVersion(std::move(appVersion)),
      HelpFile(surroundings.folders.SupportFile(surroundings.files, "help/index.html")),
      around(surroundings),
      ownTools_(around, &options.jobs),
      tools(ownTools_.Get()),
      reporter(tools.reporter),
      log(tools.log),
      store(around.files, around.folders),
      sessions(around.files, around.folders),
      sounds(around.sound, options),
      viewSelections(options),
      history(around.files, around.folders),
      panes(results.hold, viewSelections, reporter, around.messages, busy),
      notices(tools, store.File()) {
    reporter.SetRunningJob(this);
    panes.SetLocale(around.locale);
    window_ = std::make_unique<frmMain>(frmMain::Parts{.tools = tools,
                                                       .options = options,
                                                       .compare = compare,
                                                       .results = results,
                                                       .panes = panes,
                                                       .busy = busy,
                                                       .history = history},
                                        AppVersion);
    progress_ = std::make_unique<frmCompareProgress>(around.events, around.files, around.folders,
                                                     around.locale, window_.get());
    comparison_ = std::make_unique<MainComparison>(*this, *progress_);
    operations = std::make_unique<ObjectOperations>(*this, around.trash);
    InstallHandlers(*this);
    Commands& commands = window_->GetCommands();
    window_->SetHooks({
        .compare = [&commands] { commands.Run("mnuFileCompareDirectories"); },
        .pathIcon = [this](Side side, PathIcon icon) { OnPathIconClicked(*this, side, icon); },
        .mayStopJob = [this] { return AskToStop(); },
        .cancelJob = [this] { around.events.RequestCancel(); },
        .unload = [this] { FormUnload(); },
    });
    keeper_ = std::make_unique<SettingsKeeper>(busy, panes, commands, [this] { KeepChangedOptions(); });
    helpKey_ = std::make_unique<HelpKey>([this](std::string_view page, QWidget* over) {
        GuardRun("frmMain.Form_KeyDown", [&] { OpenHelpPage(*this, page, over); });
    });
    windowSizes_ = std::make_unique<WindowSizes>(store.File());
    QObject::connect(qGuiApp, &QGuiApplication::commitDataRequest, window_.get(), [this] {
        if (window_->isVisible()) static_cast<void>(StoreOptions());
    });
}

Application::~Application() {
    // The progress window is a child of the main window and would go with it.
    windowSizes_.reset();
    helpKey_.reset();
    keeper_.reset();
    operations.reset();
    comparison_.reset();
    progress_.reset();
    window_.reset();
}

void Application::UnloadCompareProgress() {
    if (progress_) progress_->Unload();
}

CompareOutcome Application::CompareDirs(CompareEnding ending) {
    if (!compare.RunningCompare) compare.TakeOptions(options);
    const CompareOutcome outcome = comparison_->CompareDirs(ending);
    // The user may have taken to smaller pieces, over a slow connection.
    options.chunkSize = compare.ChunkSize;
    return outcome;
}

void Application::AutoCompareStep(bool compareAgain) {
    if (window_->IsClosing()) return;
    if (compareAgain)
        CompareDirs(CompareEnding::Silent);
    else
        panes.RemoveListItemsAndShowNoCompareMsg();
}

bool Application::AskToStop() {
    if (whatRuns.empty()) return true;
    return around.messages.Ask({"Vantrel", "Stop the " + whatRuns + "?", MessageIcon::Question,
                                MessageButtons::YesNo, MessageAnswer::No}) == MessageAnswer::Yes;
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

void Application::ShowOption(ShownBy part) {
    switch (part) {
        case ShownBy::SubFolderRecords:
            compare.SetCompareSubFolders(options.compareSubFolders);
            break;
        case ShownBy::ViewToggles:
            viewSelections.TakeCheckedItem();
            panes.DisplayViewSelections();
            break;
        case ShownBy::CheckMark:
        case ShownBy::Geometry:
        case ShownBy::Strips:
        case ShownBy::PaneLooks:
        case ShownBy::Scrolling:
        case ShownBy::PathBoxes:
            window_->ShowOption(part);
            break;
    }
}

void Application::TakeOptions(const Options& edited) {
    const Options before = std::exchange(options, edited);
    const std::vector<const OptionLine*> changed = ChangedOptions(before, options);
    const auto has = [&changed](auto fits) {
        return std::any_of(changed.begin(), changed.end(),
                           [&](const OptionLine* line) { return fits(*line); });
    };
    for (const ShownBy part : kShownAtOnce)
        if (has([part](const OptionLine& line) { return line.shownBy == part; })) ShowOption(part);
    ShowOption(ShownBy::CheckMark);
    if (has([](const OptionLine& line) { return line.kind == OptionKind::FilterText; }))
        ThrowIfFailed(store.SaveFilters(options.includeFileTypes, options.excludeFileTypes));
}

void Application::CompareAfterChange(const Options& before) {
    bool byFilter = false, byMethod = false;
    for (const OptionLine* line : ChangedOptions(before, options)) {
        byFilter |= ResultChangeOf(line->key) == ResultChange::ByFilter;
        byMethod |= ResultChangeOf(line->key) == ResultChange::ByMethod;
    }
    if (!results.HasResult() || (!byFilter && !byMethod)) return;
    AutoCompareStep((byFilter && options.autoCompareAfterFilter) ||
                    (byMethod && options.autoCompareAfterCompareMethodChange));
}

void Application::LoadOptions() {
    const Error error = store.Load(Environment(), options);
    if (options.compareType == CompareMethod::Sha1 && !IsSHA1Available())
        options.compareType = CompareMethod::SizeAndDate;
    for (const ShownBy part : kShownAtOnce) ShowOption(part);
    if (!error.IsOk()) reporter.ReportError("frmMain.LoadOptions", error);
}

Error Application::StoreOptions() {
    const SaveGeometry geometry = window_->CollectGeometry(options) ? SaveGeometry::Yes : SaveGeometry::No;
    return store.Save(options, geometry);
}

bool Application::SaveOptions() {
    const Error error = StoreOptions();
    if (!error.IsOk()) reporter.ReportError("frmMain.SaveOptions", error);
    return error.IsOk();
}

// What cannot be written now is told at the end of the program, if that still holds then.
void Application::KeepChangedOptions() {
    if (store.HasChanges(options)) static_cast<void>(store.Save(options, SaveGeometry::No));
}

void Application::OfferDefaults(const std::string& title) {
    const MessageAnswer answer = around.messages.Ask(
        {.title = title,
         .text = "All options get their defaults, and the lists of recent folders are emptied.\r\n\r\n"
                 "\"Return to Previous Settings...\" in the File menu brings back what is set now.\r\n\r\n"
                 "Do you want to restore the defaults?",
         .icon = MessageIcon::Question,
         .buttons = MessageButtons::YesNo,
         .defaultAnswer = MessageAnswer::No});
    if (answer == MessageAnswer::Yes) RestoreDefaults();
}

void Application::ReloadSettings() {
    {
        const QScopedValueRollback<bool> populating(window_->PopulatingFolderCombos, true);
        window_->PopulateDirComboBoxesFromIniFile();
        LoadOptions();
    }
    for (const Side side : kBothSides) comparison_->Dir(side).SetPath(window_->PathText(side));
    panes.RemoveListItemsAndShowNoCompareMsg();
    window_->StatusBar1().Reset();
    window_->ResizeForm();
}

void Application::RestoreDefaults() {
    if (!SaveOptions()) return;
    ThrowIfFailed(sessions.KeepPrevious());
    const Error error = store.RestoreDefaults(Environment(), options);
    ReloadSettings();
    ThrowIfFailed(error);
}

void Application::FormLoad() {
    GuardRun("frmMain.Form_Load", [this] {
        panes.RemoveListItemsAndShowNoCompareMsg();
        const bool firstRun = store.IsFirstRun();
        {
            const QScopedValueRollback<bool> populating(window_->PopulatingFolderCombos, true);
            window_->PopulateDirComboBoxesFromIniFile();
            LoadOptions();
        }
        window_->show();
        around.events.YieldNow();
        for (const Side side : kBothSides) comparison_->Dir(side).SetPath(window_->PathText(side));
        panes.SetCurrentListview(Side::Left);
        if (firstRun) {
            GetCommands().Run(kCommandOpenHelp);
            window_->StayInViewOnce();
        }
        OfferRenameRepair(*this);
    });
}

}  // namespace vantrel
