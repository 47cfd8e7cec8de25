#pragma once

#include <functional>
#include <memory>
#include <optional>

#include "shell/shell_run.h"
#include "shell/temporary_files.h"

namespace vantrel::shell {

// How one file is copied; the engine that walks the folders stands above.
struct CopyFileOptions {
    const Statx* found = nullptr;  // the source as it was found; never null
    bool verify = false;           // compare the copy with the source before it is given its name
    // Called after every slice with the bytes copied since the last call; false cancels: -ECANCELED.
    std::function<bool(std::uint64_t)> onSlice;
    std::function<void()> onRestart;  // the file changed meanwhile: the bytes told of count for nothing
};

struct CopiedFile {
    Statx source;  // as it was when copied
    FileId target;
    std::unique_ptr<TemporaryFile> written;  // whole, and under its temporary name
};

// Copies the regular file `from` into a temporary file beside `to`: content, owner, mode, extended
// attributes, times. A source that is another one than was found, or goes on changing, is an error.
// Cancelled: the error's SystemNumber is ECANCELED.
Error CopyRegularFile(Shared& shared, const Place& from, const Place& to, const CopyFileOptions& options,
                      CopiedFile& copied);
Error CopyLink(Shared& shared, const Place& from, const Statx& found, const Place& to, CopiedFile& copied);

// Owner, mode and extended attributes from one open file or folder to another. What the target's file system
// cannot hold is left out without an error; attributes that it has no room for are counted.
int CopyRights(Shared& shared, int from, const Statx& fromStat, int to, const Statx& toStat,
               bool targetInheritsAcl);
// The times; where they cannot be held they are counted.
int KeepTimes(Shared& shared, const Statx& fromStat, int to);

struct MadeFolder {
    std::shared_ptr<const Folder> folder;  // open, and of the path that it has or is to get
    std::shared_ptr<const Folder> above;
    std::string name;
    // What keeps the user himself out it gets only when all is in it.
    std::optional<mode_t> finalMode;
    // It stands under a temporary name until then; null: it has its name.
    std::unique_ptr<TemporaryFile> unnamed;
};
enum class NameComes : std::uint8_t {
    WithRights,  // a folder has its name from the moment when it has its mode, and not before
    AtOnce,      // what is put into it is no copy, and must not stand where a kill leaves what is swept away
};
// Makes the folder `to`, where nothing stands, with the owner, mode and attributes of `source`.
Error MakeFolderLike(Shared& shared, const Folder& source, const Statx& sourceStat, const Place& to,
                     NameComes nameComes, MadeFolder& made);

}  // namespace vantrel::shell
