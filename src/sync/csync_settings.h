#pragma once

#include <array>
#include <cstdint>
#include <string_view>

#include "core/result_row.h"
#include "settings/option_values.h"

namespace vantrel {

struct Options;

// The columns of the action table. Orphan serves orphan files and orphan folders.
enum class SyncCell : std::uint8_t { New = 0, Old = 1, Orphan = 2, Binary = 3 };
inline constexpr int kSyncCellCount = 4;

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

// The action table: for each side and each of four result types, what is done. It stands in the options, with
// the method; this is the way to read and to change it. The stored cells hold as they stand, whatever the
// method is: nothing forces them to be those of the method in a file that was edited by hand.
class CSyncSettings {
  public:
    // `options` must outlive the object.
    explicit CSyncSettings(Options& options) : options_(options) {}

    std::int32_t SyncMethod() const;
    // Any value is stored; a known one other than Custom also rewrites the whole table.
    void SetSyncMethod(std::int32_t method);
    void SetSyncMethod(vantrel::SyncMethod method) { SetSyncMethod(static_cast<std::int32_t>(method)); }
    void ConvertPredefinedToCustom();

    SyncAction Action(Side side, SyncCell cell) const;
    void SetAction(Side side, SyncCell cell, SyncAction action);
    // What the table says for an object of `type` on `side`; Leave for the types that no cell speaks of.
    SyncAction ActionFor(Side side, ResultType type) const;
    // Whether an object that fails leaves the phases that follow to be carried out.
    bool GoOnAfterFailure() const;

  private:
    Options& options_;
};

}  // namespace vantrel
