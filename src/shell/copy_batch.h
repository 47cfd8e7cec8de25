#pragma once

#include <chrono>
#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "shell/copy_file.h"
#include "shell/temporary_files.h"

namespace vantrel::shell {

class CopyRecord;
class CopyOwner;

// What an owner is told of, where a copy did not come to its end.
struct ToldCopy {
    std::string source, target;  // full paths
    std::uint64_t objects = 0;   // that were counted for it, as were the bytes
    std::uint64_t bytes = 0;
    CopyOwner* owner = nullptr;  // never null
    std::size_t item = 0;        // of the owner's, as is the next
    CopyRecord* record = nullptr;
};

// Who wants a copy, and is told when it does not come to its name after all.
class CopyOwner {
  public:
    virtual ~CopyOwner() = default;
    // Whether what was copied is still to get its name: asked before each of them. An error ends it for all.
    virtual Error MayPublish() = 0;
    virtual bool CancelAsked() = 0;
    // One could not get its name, or a folder its rights: whether to try that once more. Where not, the
    // trouble has been told.
    virtual bool TriesAgain(const ToldCopy& copy, const Error& error) = 0;
    enum class Loss {
        Told,       // after TriesAgain said no
        Cancelled,  // without an error
        NotSafe,    // the sync failed, or MayPublish: not told yet
    };
    virtual void Lost(const ToldCopy& copy, Loss loss, const Error& error) = 0;
};

// A copy that stands whole under its temporary name.
struct WaitingCopy : ToldCopy {
    std::unique_ptr<TemporaryFile> written;
    std::shared_ptr<const Folder> folder;
    std::string name;  // that it is to get, in the system's bytes
    std::unique_ptr<Statx> replaces;
};

// A folder that was made for a copy, and what it is to get when all is in it.
struct WaitingFolder : ToldCopy {
    MadeFolder made;
    Statx like;  // the times are these
    // What has its name in a folder that has none yet: without it that is lost as well.
    std::vector<ToldCopy> content;
};

// Copies on their way to the disk, many at a time: one sync makes their contents safe, then they get their
// names, then the next sync makes the names safe. Whatever happens in between, every target is wholly old or
// wholly new. What failed is told to its owner; a copy counts as done after Finish and not before.
class CopyBatch {
  public:
    static constexpr std::size_t kMostCopies = 1'000;
    static constexpr std::size_t kMostFolders = 400;  // each is held open; as many kept ones beside them
    static constexpr std::uint64_t kMostBytes = std::uint64_t{256} << 20;
    static constexpr std::chrono::seconds kLongest{2};

    explicit CopyBatch(Shared& shared) : shared_(shared) {}

    void Add(WaitingCopy copy);
    // All that goes into the folder has been added: it gets its rights, times and name once that has names.
    void Add(WaitingFolder folder);
    // More may go into the folder until the next Finish of its owner. One that has its name gets its times
    // again whenever something was put into it, until its owner is forgotten.
    void Keep(WaitingFolder folder);
    // Something was put into the folder.
    void GiveTimesAgain(const Folder& folder);
    // The folder that is to get just this name; null: there is none.
    std::shared_ptr<const Folder> Unnamed(const Place& place) const;
    bool IsFull() const;
    // Whether a copy waits for just this name.
    bool Holds(const Place& place) const;
    bool HoldsFolder(const Place& place) const;
    // Lets go of what waits for an owner that goes, without telling it.
    void Forget(const CopyOwner& owner);
    // Makes what waits safe and gives it its names.
    void Publish();
    // Gives the folders kept for `owner` their rights, times and names. Nothing may wait.
    void NameKept(const CopyOwner& owner);
    // Publishes, also the folders kept for `owner`, and makes the names safe. The error is that of the
    // last sync: it stands for what was put on the disk without any copy's knowledge.
    Error Finish(const CopyOwner& owner);

  private:
    void NameOne(WaitingCopy copy);
    void Lose(std::vector<WaitingCopy>& copies, const Error& error);
    // `copy` got its name in `folder`.
    void NoteContent(const Folder& folder, const ToldCopy& copy);
    // Rights, times and name, in this order.
    void FinishFolder(WaitingFolder folder);
    bool NameFolder(WaitingFolder& folder);
    void FinishFolders();
    // Until it goes well or the owner gives up.
    template <typename Step>
    bool Try(ToldCopy& copy, Step&& step);

    Shared& shared_;
    std::vector<WaitingCopy> waiting_;
    std::vector<WaitingCopy> named_;  // without their temporary files
    std::vector<WaitingFolder> folders_;
    std::vector<WaitingFolder> kept_;  // without a name, each after the one that it lies in
    struct Times {
        Statx like;
        const CopyOwner* owner;
    };
    std::map<FileId, Times> times_;  // of folders that were kept, and have their names
    const Folder* lastFolder_ = nullptr;
    std::size_t folderCount_ = 0;
    std::uint64_t bytes_ = 0;
    std::chrono::steady_clock::time_point began_;
};

}  // namespace vantrel::shell
