#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "shell/copy_file.h"
#include "shell/temporary_files.h"

namespace vantrel::shell {

class CopyRecord;
struct WaitingCopy;

// Who wants a copy, and is told when it does not come to its name after all.
class CopyOwner {
  public:
    virtual ~CopyOwner() = default;
    // Whether what was copied is still to get its name: asked before each of them. An error ends it for all.
    virtual Error MayPublish() = 0;
    virtual bool CancelAsked() = 0;
    // One could not get its name: whether to try that once more. Where not, the trouble has been told.
    virtual bool TriesAgain(const WaitingCopy& copy, const Error& error) = 0;
    enum class Loss {
        Told,       // after TriesAgain said no
        Cancelled,  // without an error
        NotSafe,    // the sync failed, or MayPublish: not told yet
    };
    virtual void Lost(const WaitingCopy& copy, Loss loss, const Error& error) = 0;
};

// A copy that stands whole under its temporary name.
struct WaitingCopy {
    std::unique_ptr<TemporaryFile> written;
    std::shared_ptr<const Folder> folder;
    std::string name;  // that it is to get, in the system's bytes
    std::unique_ptr<Statx> replaces;
    std::string source, target;  // full paths
    std::uint64_t bytes = 0;
    CopyOwner* owner = nullptr;
    std::size_t item = 0;  // of the owner's, as are the next
    CopyRecord* record = nullptr;
};

// Copies on their way to the disk, many at a time: one sync makes their contents safe, then they get their
// names, then the next sync makes the names safe. Whatever happens in between, every target is wholly old or
// wholly new. What failed is told to its owner; a copy counts as done after Finish and not before.
class CopyBatch {
  public:
    static constexpr std::size_t kMostCopies = 1'000;
    static constexpr std::size_t kMostFolders = 400;  // each is held open
    static constexpr std::uint64_t kMostBytes = std::uint64_t{256} << 20;
    static constexpr std::chrono::seconds kLongest{2};

    explicit CopyBatch(Shared& shared) : shared_(shared) {}

    void Add(WaitingCopy copy);
    // The folder, made by a copy, gets these times once the copies in it have their names.
    void AddTimes(std::shared_ptr<const Folder> folder, const Statx& times, FinalRights final);
    bool IsFull() const;
    // Whether a copy waits for just this name.
    bool Holds(const Place& place) const;
    // Lets go of what waits for an owner that goes, without telling it.
    void Forget(const CopyOwner& owner);
    // Makes what waits safe and gives it its names.
    void Publish();
    // The same, and makes the names safe. The error is that of the last sync: it stands for what was put on
    // the disk without any copy's knowledge.
    Error Finish();

  private:
    void NameOne(WaitingCopy copy);
    void Lose(std::vector<WaitingCopy>& copies, const Error& error);
    void SetTimes();

    struct FolderTimes {
        std::shared_ptr<const Folder> folder;
        Statx times;
        FinalRights final;
    };
    Shared& shared_;
    std::vector<WaitingCopy> waiting_;
    std::vector<WaitingCopy> named_;  // without their temporary files
    std::vector<FolderTimes> folders_;
    const Folder* lastFolder_ = nullptr;
    std::size_t folderCount_ = 0;
    std::uint64_t bytes_ = 0;
    std::chrono::steady_clock::time_point began_;
};

}  // namespace vantrel::shell
