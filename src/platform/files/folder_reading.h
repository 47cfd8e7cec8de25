#pragma once

#include <functional>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "platform/files/file_system.h"
#include "platform/workers.h"

namespace vantrel {

// Lists one folder by workers, as OpenFolder::ForEach does it by itself: one job at a time reads names,
// others look at a slice of the entries each, and all come out in the system's order. It begins when it is
// made, and goes on while the caller does other things and calls HandIn now and then; little is held ahead.
// All of it is called by the one thread.
class FolderReading {
  public:
    using WhileWaiting = std::function<void()>;

    // `open` runs in a worker and must own what it needs.
    FolderReading(Workers& workers, std::function<Error(OpenFolder&)> open, StatPolicy statPolicy);
    // Of a folder that is open, and that nothing else lists meanwhile.
    FolderReading(Workers& workers, std::shared_ptr<OpenFolder> folder, StatPolicy statPolicy);
    FolderReading(const FolderReading&) = delete;
    FolderReading& operator=(const FolderReading&) = delete;

    // Hands in what can be, without waiting.
    void HandIn();
    // Waits until it is known whether the folder could be opened. `whileWaiting` as with PendingJob::Take.
    Error Open(const WhileWaiting& whileWaiting);
    FileId Id() const { return folder_->Id(); }
    FileTime Made() const { return folder_->Made(); }
    // Once, after Open. An error in the middle comes after what was listed until then.
    Error ForEach(const EntrySink& sink, const WhileWaiting& whileWaiting);

  private:
    struct Names {
        std::shared_ptr<OpenFolder> folder;  // null where it could not be opened
        std::shared_ptr<const ListedNames> names;
        bool atEnd = true;
        Error error;
    };
    struct Slice {
        std::string text;
        std::vector<FolderEntry> entries;  // their names are in `text`
        std::set<std::string> gone;
    };
    static Names ReadNames(std::shared_ptr<OpenFolder> folder, bool fromStart);
    static Slice ReadSlice(const OpenFolder& folder, const ListedNames& names, std::size_t first,
                           std::size_t last, StatPolicy statPolicy, const StopFlag& stop);
    void TakeNames(const WhileWaiting& whileWaiting);

    Workers& workers_;
    StatPolicy statPolicy_;
    std::shared_ptr<OpenFolder> folder_;
    PendingJob<Names> coming_;
    std::shared_ptr<const ListedNames> names_;
    std::size_t next_ = 0;  // of `names_`
    JobQueue<Slice> slices_;
    Error error_;
};

}  // namespace vantrel
