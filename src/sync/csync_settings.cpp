#include "sync/csync_settings.h"

#include <optional>

#include "settings/options.h"

namespace vantrel {
namespace {

using enum SyncAction;
using Cells = std::array<SyncAction, kSyncCellCount>;  // New, Old, Orphan, Binary

struct PredefinedTable {
    Cells left, right;
};

// By method code; nothing for Custom, whose table is the user's.
constexpr std::array<std::optional<PredefinedTable>, kSyncMethodCount> kPredefined{{
    {{{Copy, Copy, Copy, Copy}, {Replace, Replace, Delete, Replace}}},
    {{{Replace, Replace, Delete, Replace}, {Copy, Copy, Copy, Copy}}},
    {{{Copy, Replace, Copy, Leave}, {Copy, Replace, Copy, Leave}}},
    std::nullopt,
    {{{Leave, Leave, Leave, Leave}, {Leave, Leave, Copy, Leave}}},
    {{{Leave, Leave, Copy, Leave}, {Leave, Leave, Leave, Leave}}},
    {{{Leave, Replace, Leave, Leave}, {Copy, Leave, Leave, Leave}}},
    {{{Copy, Leave, Leave, Leave}, {Leave, Replace, Leave, Leave}}},
}};

constexpr std::array<SyncMethodInfo, kSyncMethodCount> kMethods{{
    {SyncMethod::MakeRightSameAsLeft, "MakeRightSameAsLeft", "Make Right Folder Same As Left Folder",
     "mnuOptionsSyncMakeRightSameAsLeft",
     "Delete all orphan objects from the right. Copy all objects from the left folder to the right folder "
     "which "
     "differ in any way or are orphans."},
    {SyncMethod::MakeLeftSameAsRight, "MakeLeftSameAsRight", "Make Left Folder Same As Right Folder",
     "mnuOptionsSyncMakeLeftSameAsRight",
     "Delete all orphan objects from the left. Copy all objects from the right folder to the left folder "
     "which "
     "differ in any way or are orphans."},
    {SyncMethod::ReplaceOlderCopyOrphans, "ReplaceOlderCopyOrphans",
     "Replace Older Files and Copy Orphan Objects (bi-directional)", "mnuOptionsSyncReplaceOlderCopyOrphans",
     "Replace older files in both folders with their newer counterparts.  Copy orphan objects in both "
     "folders to "
     "the other folder."},
    {SyncMethod::Custom, "Custom", "Custom", "mnuOptionsSyncCustomize",
     "Create your own custom sync method."},
    {SyncMethod::AddOrphansToLeft, "AddOrphansToLeft", "Add Orphan Objects to Left Folder",
     "mnuOptionsSyncAddOrphansToLeft", "Copy all orphan objects from the right folder to the left one."},
    {SyncMethod::AddOrphansToRight, "AddOrphansToRight", "Add Orphan Objects to Right Folder",
     "mnuOptionsSyncAddOrphansToRight", "Copy all orphan objects from the left folder to the right one."},
    {SyncMethod::ReplaceOlderOnLeft, "ReplaceOlderOnLeft", "Replace Older Files in Left Folder",
     "mnuOptionsSyncReplaceOlderInLeft", "Copy all newer files from the right folder to the left one."},
    {SyncMethod::ReplaceOlderOnRight, "ReplaceOlderOnRight", "Replace Older Files in Right Folder",
     "mnuOptionsSyncReplaceOlderInRight", "Copy all newer files from the left folder to the right one."},
}};

constexpr std::array<SyncMethod, kSyncMethodCount> kDisplayOrder{
    SyncMethod::MakeRightSameAsLeft,     SyncMethod::MakeLeftSameAsRight,
    SyncMethod::ReplaceOlderCopyOrphans, SyncMethod::AddOrphansToLeft,
    SyncMethod::AddOrphansToRight,       SyncMethod::ReplaceOlderOnLeft,
    SyncMethod::ReplaceOlderOnRight,     SyncMethod::Custom,
};

using CellMembers = std::array<SyncAction Options::*, kSyncCellCount>;
constexpr PerSide<CellMembers> kCells{
    {CellMembers{&Options::leftFolderNewFilesAction, &Options::leftFolderOldFilesAction,
                 &Options::leftFolderOrphanFilesAction, &Options::leftFolderBinaryFilesAction},
     CellMembers{&Options::rightFolderNewFilesAction, &Options::rightFolderOldFilesAction,
                 &Options::rightFolderOrphanFilesAction, &Options::rightFolderBinaryFilesAction}}};

}  // namespace

const std::array<SyncMethodInfo, kSyncMethodCount>& SyncMethods() {
    return kMethods;
}

const std::array<SyncMethod, kSyncMethodCount>& SyncMethodsInDisplayOrder() {
    return kDisplayOrder;
}

void GetSyncMethodDescriptions(std::array<std::string_view, kSyncMethodCount>& descriptions) {
    for (const SyncMethodInfo& info : kMethods)
        descriptions[static_cast<std::size_t>(info.method)] = info.description;
}

std::int32_t CSyncSettings::SyncMethod() const {
    return static_cast<std::int32_t>(options_.syncMethod);
}

void CSyncSettings::SetSyncMethod(std::int32_t method) {
    options_.syncMethod = static_cast<vantrel::SyncMethod>(method);
    ConvertPredefinedToCustom();
}

void CSyncSettings::ConvertPredefinedToCustom() {
    if (SyncMethod() < 0 || SyncMethod() >= kSyncMethodCount) return;
    const auto& table = kPredefined[static_cast<std::size_t>(SyncMethod())];
    if (!table) return;
    for (std::size_t cell = 0; cell < kSyncCellCount; ++cell) {
        options_.*kCells[Side::Left][cell] = table->left[cell];
        options_.*kCells[Side::Right][cell] = table->right[cell];
    }
}

SyncAction CSyncSettings::Action(Side side, SyncCell cell) const {
    return options_.*kCells[side][static_cast<std::size_t>(cell)];
}

void CSyncSettings::SetAction(Side side, SyncCell cell, SyncAction action) {
    options_.*kCells[side][static_cast<std::size_t>(cell)] = action;
}

SyncAction CSyncSettings::ActionFor(Side side, ResultType type) const {
    switch (type) {
        case ResultType::Newer:
            return Action(side, SyncCell::New);
        case ResultType::Older:
            return Action(side, SyncCell::Old);
        case ResultType::Orphan:
        case ResultType::OrphanFolder:
            return Action(side, SyncCell::Orphan);
        case ResultType::Binary:
            return Action(side, SyncCell::Binary);
        case ResultType::None:
        case ResultType::Same:
        case ResultType::IdenticalFolder:
        case ResultType::DifferentFolder:
            break;
    }
    return SyncAction::Leave;
}

bool CSyncSettings::GoOnAfterFailure() const {
    return options_.goOnAfterFailure;
}

}  // namespace vantrel
