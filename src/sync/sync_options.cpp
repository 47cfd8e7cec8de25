#include "sync/sync_options.h"

namespace vantrel {
namespace {

struct CellField {
    Side side;
    SyncCell cell;
    Options::Action Options::*member;
};

constexpr CellField kCells[] = {
    {Side::Left, SyncCell::New, &Options::leftFolderNewFilesAction},
    {Side::Left, SyncCell::Old, &Options::leftFolderOldFilesAction},
    {Side::Left, SyncCell::Orphan, &Options::leftFolderOrphanFilesAction},
    {Side::Left, SyncCell::Binary, &Options::leftFolderBinaryFilesAction},
    {Side::Right, SyncCell::New, &Options::rightFolderNewFilesAction},
    {Side::Right, SyncCell::Old, &Options::rightFolderOldFilesAction},
    {Side::Right, SyncCell::Orphan, &Options::rightFolderOrphanFilesAction},
    {Side::Right, SyncCell::Binary, &Options::rightFolderBinaryFilesAction},
};

}  // namespace

void ApplyOptions(const Options& options, CSyncSettings& settings) {
    settings.LoadSyncMethod(options.syncMethod);
    for (const CellField& field : kCells) settings.SetAction(field.side, field.cell, options.*field.member);
}

void CollectOptions(const CSyncSettings& settings, Options& options) {
    if (settings.SyncMethod() >= 0 && settings.SyncMethod() < kSyncMethodCount)
        options.syncMethod = static_cast<SyncMethod>(settings.SyncMethod());
    for (const CellField& field : kCells) options.*field.member = settings.Action(field.side, field.cell);
}

}  // namespace vantrel
