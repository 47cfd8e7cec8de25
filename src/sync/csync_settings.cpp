#include "sync/csync_settings.h"

#include <optional>

namespace vantrel {
namespace {

using enum Options::Action;
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

CSyncSettings::CSyncSettings() {
    SetSyncMethod(vantrel::SyncMethod::ReplaceOlderCopyOrphans);
}

void CSyncSettings::SetSyncMethod(std::int32_t method) {
    method_ = method;
    ConvertPredefinedToCustom();
}

void CSyncSettings::ConvertPredefinedToCustom() {
    if (method_ < 0 || method_ >= kSyncMethodCount) return;
    const auto& table = kPredefined[static_cast<std::size_t>(method_)];
    if (!table) return;
    cells_[Side::Left] = table->left;
    cells_[Side::Right] = table->right;
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

}  // namespace vantrel
