#pragma once

#include <memory>
#include <string>

#include "core/ccompare.h"
#include "core/comparison_results.h"
#include "core/forms/frm_compare_progress.h"
#include "core/toolbox.h"
#include "diagnostics/csound_settings.h"
#include "fileops/multiple_rename.h"
#include "filetools/cview_file_diffs_options.h"
#include "filetools/file_diff_engine.h"
#include "main/forms/frm_main.h"
#include "main/help_key.h"
#include "main/main_comparison.h"
#include "main/object_operations.h"
#include "main/settings_keeper.h"
#include "main/window_sizes.h"
#include "platform/forms/busy_pointer.h"
#include "platform/forms/desktop.h"
#include "settings/option_store.h"
#include "settings/path_history.h"
#include "settings/sessions.h"
#include "views/notices.h"
#include "views/result_panes.h"

namespace vantrel {

// What the program stands on. Tests put their own in its place.
struct Surroundings : EngineSurroundings {
    QtEventLoop& events;  // the loop of the engine, as the windows know it
    Desktop& desktop;
    SoundDevice& sound;
    TrashPlaces trash;
};

// The shared context of the program (modVantrel) and its main window. It is made once, and everything in it
// lives until its end. What the commands do stands by area in the files of their handlers; they get this
// object.
class Application : private RunningJob {
  public:
    Application(const Surroundings& surroundings, std::string appVersion);
    ~Application() override;
    Application(const Application&) = delete;
    Application& operator=(const Application&) = delete;

    // Makes the window ready and shows it; reports under "frmMain.Form_Load".
    void FormLoad();
    // The way back, in at least two seconds; reports under "frmMain.Form_Unload".
    void FormUnload();

    // Runs `work` as the routine of that text name.
    template <typename Work>
    bool GuardRun(std::string_view routineName, Work&& work) {
        return reporter.GuardRun(routineName, std::forward<Work>(work));
    }
    frmMain& Window() { return *window_; }
    Commands& GetCommands() { return window_->GetCommands(); }
    MainComparison& Comparison() { return *comparison_; }
    CompareOutcome CompareDirs(CompareEnding ending);
    // What follows a command that changed something: a silent comparison where the option says so, otherwise
    // the results are dropped.
    void AutoCompareStep(bool compare);
    // The window is to be closed while something runs that has a name: whether the user wants it stopped.
    bool AskToStop();

    // The settings file into the options, and these onto the screen.
    void LoadOptions();
    // False where they could not be written, which has been reported.
    bool SaveOptions();
    // The same, without the place of the window and without a word where it fails: a change of an option does
    // not wait for the end of the program.
    void KeepChangedOptions();
    // The settings file, path history and all, is another one: everything that shows it follows.
    void ReloadSettings();
    // Asks under that title, No being the default. After a Yes the file is deleted, path history and all, and
    // everything has its default. What was in force is kept as the previous settings; where that fails
    // nothing is changed.
    void OfferDefaults(const std::string& title);
    // What must follow at once when an option of this kind has changed.
    void ShowOption(ShownBy part);
    // Puts all options in the place of those in force, shows what has changed, and writes the filters. Throws
    // ErrorException where that failed; the options are in force all the same.
    void TakeOptions(const Options& edited);
    // What follows a change of options where the results would be others: they are made anew where the user
    // wants that, and otherwise dropped. `before` is what was in force when they were made.
    void CompareAfterChange(const Options& before);
    OptionEnvironment Environment() const;

    const std::string AppVersion;
    const std::string HelpFile;  // the first page of the help

    const Surroundings around;
    BusyState busy;
    Options options;

  private:
    OwnedToolbox ownTools_;

  public:
    const Toolbox& tools;
    ErrorReporter& reporter;
    ComparisonLog& log;

    std::string whatRuns;  // "synchronization"; empty: nothing that closing the window would ask about

    OptionStore store;
    const Sessions sessions;
    CCompare compare;
    CSoundSettings sounds;
    CViewSelections viewSelections;

    PathHistory history;
    ComparisonResults results;
    ResultPanes panes;
    Notices notices;
    std::unique_ptr<ObjectOperations> operations;
    cViewFileDiffsOptions viewFileDiffs{options};
    FileDiffEngine globalDiffObject{tools};
    MultipleRename multipleRename{tools};

  private:
    Error StoreOptions();
    void RestoreDefaults();
    bool RunningCompare() const override { return compare.RunningCompare; }
    void UnloadCompareProgress() override;

    const BusyPointerOf pointer_{busy};
    std::unique_ptr<frmMain> window_;
    std::unique_ptr<frmCompareProgress> progress_;
    std::unique_ptr<MainComparison> comparison_;
    std::unique_ptr<SettingsKeeper> keeper_;
    std::unique_ptr<HelpKey> helpKey_;
    std::unique_ptr<WindowSizes> windowSizes_;
};

}  // namespace vantrel
