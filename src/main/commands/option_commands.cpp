// The toggles and choices of the Options menu. Each is bound to its option; the menu shows what stands there.
#include <string_view>
#include <utility>
#include <variant>

#include "core/mod_sha1_hash.h"
#include "main/application.h"
#include "main/commands/handlers.h"
#include "main/forms/frm_options.h"
#include "settings/option_table.h"

namespace vantrel {
namespace {

// The toggles are those of the option table.
void InstallToggles(Application& application) {
    Commands& commands = application.GetCommands();
    for (const OptionLine& line : OptionTable()) {
        if (line.toggle.item.empty()) continue;
        bool& option = application.options.*std::get<bool Options::*>(line.field);
        commands.BindCheck(line.toggle.item, [&option] { return option; });
        commands.SetHandler(line.toggle.item, [&application, &option, &line] {
            option = !option;
            application.ShowOption(line.shownBy);
        });
    }
}

// The items of an exclusive group and the values that they stand for.
template <typename Value>
struct Choice {
    const char* item;
    Value value;
};

constexpr Choice<CompareMethod> kMethods[] = {
    {"mnuOptionsCompareTypeQuick", CompareMethod::SizeAndDate},
    {"mnuOptionsCompareTypeThoroughString", CompareMethod::Contents},
    {"mnuOptionsCompareTypeThoroughCRC", CompareMethod::Crc32},
    {"mnuOptionsCompareTypeSHA", CompareMethod::Sha1},
};

constexpr Choice<CoolbarStyle> kStrips[] = {
    {"mnuOptionsToolbarHide", CoolbarStyle::Hidden},
    {"mnuOptionsToolbarShowCoolbar", CoolbarStyle::Coolbar},
    {"mnuOptionsToolbarShowToolbar", CoolbarStyle::Toolbar},
};

constexpr Choice<RemovalMethod> kRemovals[] = {
    {"mnuOptionsFindDupesRemovalOpt(0)", RemovalMethod::Delete},
    {"mnuOptionsFindDupesRemovalOpt(1)", RemovalMethod::Recycle},
    {"mnuOptionsFindDupesRemovalOpt(2)", RemovalMethod::MoveToDupesFolder},
    {"mnuOptionsFindDupesRemovalOpt(3)", RemovalMethod::MoveToOtherFolder},
};

constexpr Choice<HashMethod> kHashes[] = {
    {"mnuOptionsFindDupesHashMethodOpt(0)", HashMethod::Crc16},
    {"mnuOptionsFindDupesHashMethodOpt(1)", HashMethod::Crc32},
    {"mnuOptionsFindDupesHashMethodOpt(2)", HashMethod::Md5},
};

// Binds the checks of a group to `value`, and makes each item call `choose` with its own.
template <typename Value, std::size_t Count, typename Choose>
void InstallChoices(Commands& commands, const Choice<Value> (&choices)[Count], const Value& value,
                    Choose choose) {
    for (const Choice<Value>& choice : choices) {
        commands.BindCheck(choice.item, [&value, &choice] { return value == choice.value; });
        commands.SetHandler(choice.item, [choose, &choice] { choose(choice.value); });
    }
}

void ChooseMethod(Application& application, CompareMethod method) {
    application.options.compareType = method;
    application.AutoCompareStep(application.options.autoCompareAfterCompareMethodChange);
}

}  // namespace

void ShowOptionsWindow(Application& application, OptionTab tab) {
    const Options before = application.options;
    frmOptions({.tools = application.tools,
                .sounds = application.sounds,
                .environment = application.Environment(),
                .take = [&application](const Options& edited) { application.TakeOptions(edited); },
                .showHelp = [&application](const std::string& place,
                                           QWidget* over) { OpenHelpPage(application, place, over); }},
               application.options, &application.Window())
        .ShowTab(tab);
    application.CompareAfterChange(before);
}

void InstallOptionCommands(Application& application) {
    Commands& commands = application.GetCommands();
    InstallToggles(application);
    Options& options = application.options;
    InstallChoices(commands, kMethods, options.compareType,
                   [&application](CompareMethod method) { ChooseMethod(application, method); });
    if (!IsSHA1Available()) commands.SetHandler("mnuOptionsCompareTypeSHA", nullptr);
    InstallChoices(commands, kStrips, options.coolbarStyle, [&application](CoolbarStyle style) {
        application.options.coolbarStyle = style;
        application.ShowOption(ShownBy::Strips);
    });
    InstallChoices(commands, kRemovals, options.removalMethod,
                   [&options](RemovalMethod method) { options.removalMethod = method; });
    InstallChoices(commands, kHashes, options.hashMethod,
                   [&options](HashMethod method) { options.hashMethod = method; });

    for (const auto& [command, tab] :
         {std::pair<std::string_view, OptionTab>{kCommandOpenOptions, OptionTab::General},
          {"mnuOptionsChunkSize", OptionTab::Compare},
          {"mnuOptionsFilters", OptionTab::IncludeExclude},
          {"mnuOptionsChangeSounds", OptionTab::Sounds},
          {"mnuOptionsAppearance", OptionTab::Appearance}})
        commands.SetHandler(command, [&application, tab = tab] { ShowOptionsWindow(application, tab); });
    for (const auto& [item, title] :
         {std::pair{"mnuOptionsRestoreDefaults", "Restore Default Options"},
          std::pair{"mnuFileRestoreDefaultSessionSettings", "Restore Default Session Settings"}})
        commands.SetHandler(item, [&application, title = title] { application.OfferDefaults(title); });
}

}  // namespace vantrel
