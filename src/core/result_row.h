#pragma once

#include <cstdint>
#include <string_view>

#include "core/side.h"
#include "platform/currency.h"
#include "platform/files/file_system.h"
#include "platform/locale/file_time.h"

namespace vantrel {

// The number of a row's small icon, which is what all code tests.
enum class ResultType : std::uint8_t {
    None = 0,  // placeholder, sentinel
    Newer = 1,
    Older = 2,
    Same = 3,
    Orphan = 4,
    Binary = 5,  // same date/time, different contents
    IdenticalFolder = 6,
    DifferentFolder = 7,
    OrphanFolder = 8,
};
inline constexpr int kResultTypeCount = 8;
// "Newer" ... "OrphanFolder"; empty for None.
std::string_view ResultTypeText(ResultType type);

// Whether an object lies in another place as well, so that what is done to it here is done there.
enum class Elsewhere : std::uint8_t {
    No,
    BehindLink,     // a folder on the way to it is a link
    InOtherFolder,  // it is an object of the other of the two compared folders
};

enum class RowKind : std::uint8_t {
    Placeholder,
    Sentinel,
    Folder,
    File,
    // A name of which nothing is to be concluded, since what bears it on one side is not known or is no file
    // and no folder. Both halves of such a pair are of this kind: no operation acts on either.
    Unknown,
};

inline constexpr std::string_view kNoComparisonResults = "No Comparison Results";
// Marks the text of a folder row, of a sub-folder name and of a folder pattern. It is no separator.
inline constexpr char kFolderMarker = '\\';

// One line of a list. The texts belong to the pools of the list that holds the row. The texts of size and
// date are made from the values when they are shown (row_texts.h), never stored.
struct ResultRow {
    std::string_view text;  // file name; folder marker and name; empty; or the sentinel's text
    std::string_view
        realName;        // name on this side's disk, without marker; can differ from text in letter case
    Currency size;       // bytes as the pane shows them: 0 where the size is not above 0
    FileTime lastWrite;  // UTC; meaningful for files only
    // Hold rows: what the listing saw of the object itself, in a pool of the list. Copies in other lists
    // point to the same. nullptr where there is no object, or it could not be looked at.
    const Seen* seen = nullptr;
    std::uint32_t tag = 0;  // visible rows: number of the same row in its hold list, from 1; 0 elsewhere
    ResultType type = ResultType::None;
    RowKind kind = RowKind::Placeholder;
    bool selected : 1 = false;
    // Folder rows: a part of the tree could not be looked into. Its size is that of the known part, and what
    // is missing from it must not be concluded to be missing on the disk.
    bool incomplete : 1 = false;
    // Folder rows: the other of the two compared folders lies below it.
    bool holdsOtherFolder : 1 = false;
    bool isLink : 1 = false;  // the object itself is a symbolic link
    // Rows of a sub-folder's differences, of placeholders too: what would be made there is made in that
    // place.
    Elsewhere elsewhere : 2 = Elsewhere::No;
    // Unknown rows: what is in the way on this side; None on a side where the object is known.
    UnknownReason reason = UnknownReason::None;

    // A real row stands for an object: it counts in totals and can be selected.
    bool IsReal() const { return kind == RowKind::File || kind == RowKind::Folder; }
    bool IsUnknown() const { return kind == RowKind::Unknown; }
};
// Lists can have a million of them.
static_assert(sizeof(ResultRow) <= 64);

}  // namespace vantrel
