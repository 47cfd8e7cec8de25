#pragma once

#include <optional>
#include <span>
#include <string_view>

#include "sync/csync_settings.h"

namespace vantrel {

// The texts of the combos cboNew, cboOld, cboOrphan and cboBinary, in which the action table is edited, and
// how the two sides are kept in step.

// The items of the combo of `cell`, in their order, for both sides alike.
std::span<const std::string_view> CustomSyncChoices(SyncCell cell);

// The item that stands for `action` in the combo of `cell`: Replace reads differently in each. Nothing where
// the combo does not offer it.
std::optional<std::string_view> CustomSyncChoice(SyncCell cell, SyncAction action);

// What an item stands for; Leave for any unknown text.
SyncAction ActionOfCustomSyncChoice(std::string_view text);

// The combo of the other side that must follow a click into the combo of `cell`; nothing for the orphans,
// where each side is free.
std::optional<SyncCell> CustomSyncPartner(SyncCell cell);

// The item that the partner gets when `clicked` was chosen in the combo of `cell` while the partner shows
// `partnerText`; nothing where it stays as it is.
std::optional<std::string_view> CustomSyncPartnerChoice(SyncCell cell, std::string_view clicked,
                                                        std::string_view partnerText);

}  // namespace vantrel
