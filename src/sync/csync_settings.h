#pragma once

#include <array>
#include <cstdint>
#include <string_view>

#include "core/result_row.h"
#include "settings/options.h"

namespace vantrel {

// What is done to an object of one result type on one side. Replace is a passive mark: a synchronisation acts
// on Copy and Delete only, and a Replace comes true through the Copy on the other side.
using SyncAction = Options::Action;

// The columns of the action table. Orphan serves orphan files and orphan folders.
enum class SyncCell : std::uint8_t { New = 0, Old = 1, Orphan = 2, Binary = 3 };
inline constexpr int kSyncCellCount = 4;

using SyncMethod = Options::SyncMethod;
inline constexpr int kSyncMethodCount = 8;

// One synchronisation method as the program shows it, by method code.
struct SyncMethodInfo {
    SyncMethod method;
    std::string_view settingsWord;  // value of the key "SyncMethod", and of --sync-method
    std::string_view itemText;      // in the method combos
    std::string_view menuItem;      // name of the item of the Synchronization Method menu
    std::string_view description;
};
const std::array<SyncMethodInfo, kSyncMethodCount>& SyncMethods();
// The order in which combos and menu show the methods: Custom stands last.
const std::array<SyncMethod, kSyncMethodCount>& SyncMethodsInDisplayOrder();
// The eight descriptions, by method code.
void GetSyncMethodDescriptions(std::array<std::string_view, kSyncMethodCount>& descriptions);

// The action table: for each side and each of four result types, what is done.
class CSyncSettings {
  public:
    // The table and the method that a fresh program starts with.
    CSyncSettings();

    std::int32_t SyncMethod() const { return method_; }
    // Any value is stored; a known one other than Custom also rewrites the whole table.
    void SetSyncMethod(std::int32_t method);
    void SetSyncMethod(vantrel::SyncMethod method) { SetSyncMethod(static_cast<std::int32_t>(method)); }
    // Stores a method without touching the table, for loading settings whose table stands beside it.
    void LoadSyncMethod(vantrel::SyncMethod method) { method_ = static_cast<std::int32_t>(method); }
    void ConvertPredefinedToCustom();

    SyncAction Action(Side side, SyncCell cell) const { return cells_[side][static_cast<std::size_t>(cell)]; }
    void SetAction(Side side, SyncCell cell, SyncAction action) {
        cells_[side][static_cast<std::size_t>(cell)] = action;
    }
    // What the table says for an object of `type` on `side`; Leave for the types that no cell speaks of.
    SyncAction ActionFor(Side side, ResultType type) const;

  private:
    std::int32_t method_ = 0;
    PerSide<std::array<SyncAction, kSyncCellCount>> cells_{};
};

}  // namespace vantrel
