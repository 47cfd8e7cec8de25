#pragma once

#include <cstdint>

namespace vantrel {

// The values of the options that are one of a list. The codes are those of the holders' contracts.

enum class SyncMethod : std::int32_t {
    MakeRightSameAsLeft = 0,
    MakeLeftSameAsRight = 1,
    ReplaceOlderCopyOrphans = 2,
    Custom = 3,
    AddOrphansToLeft = 4,
    AddOrphansToRight = 5,
    ReplaceOlderOnLeft = 6,
    ReplaceOlderOnRight = 7,
};

// What is done to an object of one result type on one side. Replace is a passive mark: a synchronisation acts
// on Copy and Delete only, and a Replace comes true through the Copy on the other side.
enum class SyncAction : std::int32_t { Leave = 0, Copy = 1, Replace = 2, Delete = 3 };

enum class ViewType : std::int32_t { All = 0, Different = 1, Similar = 2, Custom = 3 };

enum class CompareMethod : std::int32_t { SizeAndDate = 0, Contents = 1, Crc32 = 2, Sha1 = 3 };

enum class CoolbarStyle : std::int32_t { Coolbar, Toolbar, Hidden };

enum class WindowState : std::int32_t { Normal, Maximized };

enum class RemovalMethod : std::int32_t {
    Delete = 0,
    Recycle = 1,
    MoveToDupesFolder = 2,
    MoveToOtherFolder = 3
};

enum class HashMethod : std::int32_t { Crc16 = 0, Crc32 = 1, Md5 = 2 };

}  // namespace vantrel
