#include "sync/csync_settings.h"

#include <gtest/gtest.h>

#include "settings/options.h"

namespace vantrel {
namespace {

// Left New, Old, Orphan, Binary, then right, as digits; by method code.
constexpr const char* kTables[] = {"11112232", "22321111", "12101210", nullptr,
                                   "00000010", "00100000", "02001000", "10000200"};

std::string Digits(const CSyncSettings& settings) {
    std::string digits;
    for (Side side : kBothSides)
        for (int cell = 0; cell < kSyncCellCount; ++cell)
            digits +=
                static_cast<char>('0' + static_cast<int>(settings.Action(side, static_cast<SyncCell>(cell))));
    return digits;
}

TEST(CSyncSettings, EachMethodFillsTheTableAndCustomLeavesIt) {
    Options options;
    CSyncSettings settings(options);
    EXPECT_EQ(kTables[2], Digits(settings));
    for (int method = 0; method < kSyncMethodCount; ++method) {
        const std::string before = Digits(settings);
        settings.SetSyncMethod(method);
        EXPECT_EQ(kTables[method] ? kTables[method] : before, Digits(settings)) << method;
    }
    settings.SetSyncMethod(9);
    EXPECT_EQ(9, settings.SyncMethod());
    EXPECT_EQ(kTables[7], Digits(settings));
}

// Each cell is that of its own key, also where it is not that of the method beside it.
TEST(CSyncSettings, StandInTheOptionsAsTheyWereLoaded) {
    Options options;
    options.syncMethod = SyncMethod::MakeLeftSameAsRight;
    SyncAction Options::*const keys[] = {
        &Options::leftFolderNewFilesAction,     &Options::leftFolderOldFilesAction,
        &Options::leftFolderOrphanFilesAction,  &Options::leftFolderBinaryFilesAction,
        &Options::rightFolderNewFilesAction,    &Options::rightFolderOldFilesAction,
        &Options::rightFolderOrphanFilesAction, &Options::rightFolderBinaryFilesAction,
    };
    CSyncSettings settings(options);
    for (std::size_t key = 0; key < std::size(keys); ++key) {
        for (SyncAction Options::*const other : keys) options.*other = SyncAction::Copy;
        options.*keys[key] = SyncAction::Delete;
        std::string expected(std::size(keys), '1');
        expected[key] = '3';
        EXPECT_EQ(expected, Digits(settings));
    }
    settings.SetSyncMethod(SyncMethod::Custom);
    settings.SetAction(Side::Right, SyncCell::Orphan, SyncAction::Leave);
    EXPECT_EQ(SyncMethod::Custom, options.syncMethod);
    EXPECT_EQ(SyncAction::Leave, options.rightFolderOrphanFilesAction);
}

TEST(CSyncSettings, EveryMethodHasItsPlaceInTheListAndItsTexts) {
    std::array<int, kSyncMethodCount> seen{};
    for (SyncMethod method : SyncMethodsInDisplayOrder()) ++seen[static_cast<std::size_t>(method)];
    for (int count : seen) EXPECT_EQ(1, count);
    EXPECT_EQ(SyncMethod::Custom, SyncMethodsInDisplayOrder().back());
    for (std::size_t i = 0; i < SyncMethods().size(); ++i)
        EXPECT_EQ(i, static_cast<std::size_t>(SyncMethods()[i].method));
}

}  // namespace
}  // namespace vantrel
