#include "sync/custom_sync_choices.h"

#include <array>

namespace vantrel {
namespace {

constexpr std::string_view kLeave = "Leave";
constexpr std::string_view kCopy = "Copy to other folder";
constexpr std::string_view kDelete = "Delete from this folder";
constexpr std::string_view kReplace = "Replace with object from other folder";
constexpr std::string_view kReplaceWithOlder = "Replace with older files from other folder";
constexpr std::string_view kReplaceWithNewer = "Replace with newer files from other folder";

constexpr std::array kNewChoices{kLeave, kCopy, kReplaceWithOlder, kDelete};
constexpr std::array kOldChoices{kLeave, kCopy, kReplaceWithNewer, kDelete};
constexpr std::array kOrphanChoices{kLeave, kCopy, kDelete};
constexpr std::array kBinaryChoices{kLeave, kCopy, kReplace, kDelete};

}  // namespace

std::span<const std::string_view> CustomSyncChoices(SyncCell cell) {
    switch (cell) {
        case SyncCell::New:
            return kNewChoices;
        case SyncCell::Old:
            return kOldChoices;
        case SyncCell::Orphan:
            return kOrphanChoices;
        case SyncCell::Binary:
            return kBinaryChoices;
    }
    return {};
}

SyncAction ActionOfCustomSyncChoice(std::string_view text) {
    if (text == kCopy) return SyncAction::Copy;
    if (text == kDelete) return SyncAction::Delete;
    if (text == kReplace || text == kReplaceWithOlder || text == kReplaceWithNewer)
        return SyncAction::Replace;
    return SyncAction::Leave;
}

std::optional<std::string_view> CustomSyncChoice(SyncCell cell, SyncAction action) {
    for (std::string_view choice : CustomSyncChoices(cell))
        if (ActionOfCustomSyncChoice(choice) == action) return choice;
    return std::nullopt;
}

std::optional<SyncCell> CustomSyncPartner(SyncCell cell) {
    switch (cell) {
        case SyncCell::New:
            return SyncCell::Old;
        case SyncCell::Old:
            return SyncCell::New;
        case SyncCell::Binary:
            return SyncCell::Binary;
        case SyncCell::Orphan:
            break;
    }
    return std::nullopt;
}

std::optional<std::string_view> CustomSyncPartnerChoice(SyncCell cell, std::string_view clicked,
                                                        std::string_view partnerText) {
    const auto partner = CustomSyncPartner(cell);
    if (!partner) return std::nullopt;
    switch (ActionOfCustomSyncChoice(clicked)) {
        case SyncAction::Copy:
            return CustomSyncChoice(*partner, SyncAction::Replace);
        case SyncAction::Replace:
            return CustomSyncChoice(*partner, SyncAction::Copy);
        case SyncAction::Leave:
        case SyncAction::Delete:
            break;
    }
    if (partnerText == kLeave || partnerText == kDelete) return std::nullopt;
    return kLeave;
}

}  // namespace vantrel
