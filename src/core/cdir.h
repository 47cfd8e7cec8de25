#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "core/cfile.h"
#include "core/comparison_context.h"
#include "core/filters.h"
#include "core/result_list.h"
#include "platform/files/folder_reading.h"
#include "platform/text_pool.h"
#include "platform/workers.h"

namespace vantrel {

enum class ScanOutcome {
    Complete,
    Cancelled,  // what was found so far stays
    Failed,     // reported; what was found is not the whole folder
};

// One scanned folder: one level of it, not a tree. Files, sub-folders and what is neither stand in the order
// of their keys, and those whose names differ in letter case only in the order of the names. It belongs to
// the one thread.
class CDir {
  public:
    // `Name` begins with the folder marker, as in "\Sub"; so does the key.
    struct SubDir {
        std::string_view Name;
        std::string_view Key;
        const Seen* seen = nullptr;  // of the folder, or the link, itself
        bool isLink = false;
        std::string_view RealName() const { return Name.substr(1); }
    };
    // What is no file and no folder, or could not be looked at.
    struct Other {
        std::string_view name;
        std::string_view key;        // without marker
        const Seen* seen = nullptr;  // nullptr where even the entry itself could not be looked at
        FileTime lastWrite;          // of the entry itself
        UnknownReason reason = UnknownReason::None;
        bool isLink = false;
        bool keptAsFile = false;  // a file of this name would be taken in
    };

    explicit CDir(const Toolbox& tools) : tools_(tools) {}

    const std::vector<SubDir>& SubDirs() const;
    const std::vector<CFile>& Files() const;
    std::string Name;                                  // free label
    const std::string& Path() const { return path_; }  // with "/" at its end; empty when not set
    // Normalises the path and sets DriveName.
    void SetPath(std::string_view path);
    const std::string& DriveName() const { return driveName_; }
    std::size_t FileCount() const { return Files().size(); }
    std::size_t SubDirCount() const { return SubDirs().size(); }
    Currency Size;                           // 0 after each scan; for callers
    FileId Id() const { return id_; }        // of the folder that was scanned
    FileTime Made() const { return made_; }  // when it was made; 0 where that is not told

    // `markedName` begins with the folder marker. A duplicate is ignored.
    void AddSubDir(std::string_view markedName);
    // Scans Path. The number of files is not known before the listing and is not worth a second one: the bar
    // of the progress window is a busy one, whose value counts the files. An error, also one in the middle of
    // the listing, is reported as "CDir.PopulateSelfWithFiles".
    // `begun` is a reading of the folder by workers, with StatPolicy::All; without one it is read here. A
    // worker puts then the entries in order, while this thread goes on.
    ScanOutcome PopulateSelfWithFiles(const ScanOptions& options, const ComparisonContext& context,
                                      FolderReading* begun = nullptr);
    // Until the entries are in order. `whileWaiting` as with PendingJob::Take. Whoever asks for entries
    // sooner waits without it, or has them put in order then and there.
    void AwaitOrder(const std::function<void()>& whileWaiting) const;
    // DriveName keeps its value.
    void Clear();
    // Entries that occupy their names, and of which a file or a folder of the name would be taken in.
    const std::vector<Other>& Others() const;

    // Of names that differ in letter case only the equal one is found, otherwise the first.
    bool DoesFileExistInDir(std::string_view name, const CFile*& file) const;
    bool DoesSubDirExistInDir(std::string_view markedName) const;
    const CFile* GetFile(std::string_view name) const;              // nullptr where there is none
    std::string_view GetSubDir(std::string_view markedName) const;  // empty where there is none

    // The pools that the texts and what was seen live in; they are others after each scan.
    std::shared_ptr<const TextPool> Texts() const { return texts_; }
    std::shared_ptr<const SeenPool> SeenObjects() const { return seen_; }

    // Whether `path` is a folder that can be compared; if not, the user has been told why.
    bool IsValidPath(std::string_view path) const;
    // Makes every missing level. What fails shows in the result alone: whether the folder exists at the end.
    bool CreateNestedFoldersByPath(std::string_view path) const;
    // The folder above; "/" for "/" and for a folder right below it. A text without "/" is left unchanged.
    static std::string GetParentDir(std::string_view path);

  private:
    struct ListingState;
    Error Read(ListingState& state, FolderReading* begun);
    bool TakeEntry(const FolderEntry& entry, ListingState& state);
    void AddFile(const FolderEntry& entry, const ComparisonContext& context);
    void AddOther(const FolderEntry& entry, bool keptAsFile);
    std::string_view KeyFor(std::string_view kept);
    void OrderByWorker(Workers& workers);
    void EnsureIndexed() const;
    void DropContent();

    enum class DriveState { Missing, NotReady, Ready };
    bool IsFolder(const std::string& path, Error& pending) const;
    DriveState StateOfDrive(const std::string& drive) const;
    bool AccessIsAllowed(const std::string& path) const;
    bool FailCompare(std::string text) const;

    Toolbox tools_;
    std::string path_;
    std::string driveName_;
    FileId id_;
    FileTime made_;
    std::shared_ptr<TextPool> texts_ = std::make_shared<TextPool>();
    std::shared_ptr<SeenPool> seen_ = std::make_shared<SeenPool>();
    struct Entries {
        std::vector<CFile> files;
        std::vector<SubDir> subDirs;
        std::vector<Other> others;
        template <typename Check>
        void Order(const Check& check);
    };
    // In order once `indexed_`; a scan that was cancelled leaves that to the first look. While a worker does
    // it they are not here.
    mutable Entries entries_;
    mutable PendingJob<Entries> ordering_;
    mutable bool indexed_ = true;
    std::string scratch_;
};

}  // namespace vantrel
