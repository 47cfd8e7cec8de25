#pragma once

#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>
#include <set>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "platform/error.h"
#include "platform/files/seen.h"
#include "platform/files/system_calls.h"
#include "platform/locale/file_time.h"

namespace vantrel {

enum class EntryKind : std::uint8_t {
    File,
    Folder,
    Other,  // FIFO, socket, device, or a link that leads nowhere: never opened, passed over by scans
};

// Attribute bits, with the values of DOS.
enum Attribute : std::uint8_t {
    kReadOnly = 1,  // no write permission for the owner
    kHidden = 2,    // a leading dot, or the DOS attribute where the file system carries one
    kSystem = 4,    // the DOS attribute
    kDirectory = 16,
};

enum class LinkPolicy { Follow, DoNotFollow };

struct FileInfo {
    EntryKind kind = EntryKind::Other;
    bool isLink =
        false;  // the entry itself is a symbolic link; the rest tells of what it leads to under Follow
    std::uint8_t attributes = 0;            // of Attribute
    std::uint32_t mode = 0;                 // permission bits
    std::uint64_t size = 0;                 // bytes
    FileTime created, accessed, lastWrite;  // UTC; created is 0 ticks where the file system has none
    FileId id;
    std::uint64_t linkCount = 0;
    std::uint32_t owner = 0, group = 0;
};

// Why an entry stands for no file and no folder. It occupies its name all the same.
enum class UnknownReason : std::uint8_t {
    None,           // it is a file or a folder
    SpecialObject,  // FIFO, socket or device, or a link to one
    LeadsNowhere,   // a link whose target is not there, or that leads in circles
    NotTold,        // the system would not tell what it is, or what it leads to
};

// One entry of a listing. The name is in the engine's form and valid during the call of the sink only.
struct FolderEntry {
    std::string_view name;
    EntryKind kind = EntryKind::Other;
    bool isLink = false;
    UnknownReason reason = UnknownReason::None;  // why the kind is Other
    // False: only the name, the kind File, the inode in `id` and, of the attributes, kHidden are known yet.
    bool hasStat = true;
    std::uint8_t attributes = 0;
    // Of what a link leads to; of the link where that cannot be found out, and its size is then 0.
    std::uint64_t size = 0;
    FileTime lastWrite;
    FileId id;
    Seen seen;  // zero where even the entry itself could not be looked at
};

// What a listing asks the system about: each entry, or only those that the folder itself does not show to be
// regular files. Where hidden and system are told by the files themselves each is asked about all the same.
enum class StatPolicy : std::uint8_t { All, NonFilesOnly };

// Called for each entry but "." and ".."; false stops the listing, which is no error.
using EntrySink = std::function<bool(const FolderEntry&)>;

class FileSystem;
class ReadFile;
class UnstatedFile;

// How the file system of a folder tells hidden and system, where it can.
enum class DosAttributeSource : std::uint8_t { None, FatIoctl, NtfsXattr, NtfsBigEndianXattr, CifsXattr };

// What is known of the file system that a folder is on.
struct FileSystemTraits {
    DosAttributeSource dosAttributes = DosAttributeSource::None;
    // Within its first page (4,096 bytes, the smallest there is) a read of a file ends early at the file's
    // end only, never in front of an error or for want of data.
    bool readsWholePages = false;
    // When a folder was made stays what it is as long as the folder does. Not so where a first change puts a
    // copy of it in front of it.
    bool keepsMade = false;
};

// Names that the listing of a folder gave, before anything else was asked about them.
class ListedNames {
  public:
    std::size_t Count() const { return names_.size(); }

  private:
    friend class OpenFolder;
    struct Name {
        std::uint64_t inode;
        std::uint32_t at;  // in `text_`, which holds them NUL-ended in the system's bytes
        unsigned char type;
    };
    std::string text_;
    std::vector<Name> names_;
};

// A folder held open: its listing and the stats of its entries are made relative to it, and it stays the same
// folder whatever happens to its path meanwhile. Links are followed for kind, size and time. Any threads may
// call its const operations at once, and one of them may meanwhile list it.
class OpenFolder {
  public:
    OpenFolder() = default;
    OpenFolder(OpenFolder&&) noexcept;
    OpenFolder& operator=(OpenFolder&&) noexcept;
    ~OpenFolder();

    FileId Id() const { return id_; }
    FileTime Made() const { return made_; }  // 0 where that is not told or not kept to
    bool IsOpen() const { return fd_ >= 0; }
    // Lists the folder to its end, in the system's order. An error in the middle is returned: what was handed
    // to the sink until then is not the whole folder. An entry that vanishes between listing and stat is left
    // out once a second listing does not name it either; one that cannot be looked at is handed out with the
    // reason, at the end where it was asked about twice. What a killed copy has left under a temporary name
    // of ours is left out: none of it is a whole file.
    Error ForEach(const EntrySink& sink, StatPolicy statPolicy = StatPolicy::All);
    // The same in steps. The first reads names from the folder's start, or from where the last call ended,
    // until there are `wanted` of them or the folder is at its end.
    Error ListNames(bool fromStart, std::size_t wanted, ListedNames& names, bool& atEnd);
    // Then those from `first` to before `last` are looked at and handed to the sink as by ForEach, but that
    // what is not there goes to `gone`, in the system's bytes. False where the sink stopped.
    bool LookAtNames(const ListedNames& names, std::size_t first, std::size_t last, StatPolicy statPolicy,
                     const EntrySink& sink, std::set<std::string>& gone) const;
    // At the end these are looked for once more.
    void HandOutGone(const std::set<std::string>& gone, const EntrySink& sink) const;
    // Looks at the entry `name` as ForEach does and fills all of `entry` but its name. False where it is
    // gone, from a listing too.
    bool LookAt(std::string_view name, FolderEntry& entry) const;
    // The text of the link `name`, as the system's bytes.
    Error ReadLink(std::string_view name, std::string& target) const;
    // Opens the sub-folder `name`, following a link.
    Error OpenSub(std::string_view name, OpenFolder& out) const;
    // Opens the file `name` for reading, following a link: one that a listing has just shown to be a regular
    // file, as FileSystem::OpenScannedFile does by a path. Reading it leaves its time of access alone where
    // the system lets this user have that.
    Error OpenScannedFile(std::string_view name, ReadFile& out) const;
    // The same for an entry that the last ForEach handed out without a stat. A link that took the name since
    // is refused.
    Error OpenUnstatedFile(std::string_view name, UnstatedFile& out) const;

  private:
    friend class FileSystem;
    friend class ReadFile;
    friend class SmallFiles;
    void LookOnceMore(const char* name, FolderEntry& entry) const;
    bool Examine(const char* name, unsigned char type, std::uint64_t inode, StatPolicy statPolicy,
                 FolderEntry& entry) const;
    Error BeginListing();
    // 0 or minus the errno value. What `above` knows of its file system holds for a folder of the same one.
    static int OpenAt(SystemCalls& calls, int base, const char* path, const OpenFolder* above,
                      OpenFolder& out);

    SystemCalls* calls_ = nullptr;
    int fd_ = -1;
    FileId id_;
    FileTime made_;
    FileSystemTraits traits_;
    bool listed_ = false;
    bool isOfAnother_ = false;                          // another user, who may do all with it
    mutable std::atomic<bool> keepsAccessTimes_{true};  // until that is refused for a file
};

// A regular file open for reading. Never anything else: FIFOs, devices and sockets are refused without
// waiting. Of one thread at a time, as the classes below.
class ReadFile {
  public:
    ReadFile() = default;
    ReadFile(ReadFile&&) noexcept;
    ReadFile& operator=(ReadFile&&) noexcept;
    ~ReadFile();

    bool IsOpen() const { return fd_ >= 0; }
    std::uint64_t Size() const { return seen_.size; }  // as it was when opened, and so is the time
    FileTime LastWrite() const { return seen_.lastWrite; }
    const vantrel::Seen& Seen() const { return seen_; }
    // Reads up to `size` bytes at `offset`, going on after short reads; `got` is less than `size` only at the
    // file's end.
    Error ReadAt(std::uint64_t offset, void* buffer, std::size_t size, std::size_t& got);
    // Tells the kernel that the first `length` bytes (0: all), or those from `offset` on, are wanted soon.
    void Prefetch(std::uint64_t length = 0, std::uint64_t offset = 0);

  private:
    friend class FileSystem;
    friend class OpenFolder;
    friend class UnstatedFile;
    friend class FileCloser;
    friend class SmallFiles;
    static const int kOpenFlags;
    static int OpenAt(SystemCalls& calls, int base, const char* path, bool lookFirst, ReadFile& out);
    int OpenIn(const OpenFolder& folder, const char* name, int flags);
    int LookAtHandle();

    SystemCalls* calls_ = nullptr;
    int fd_ = -1;
    bool readsWholePages_ = false;  // of FileSystemTraits, where that is known
    vantrel::Seen seen_;
};

// What was opened as a file because a listing showed it to be one, and was not asked about since.
class UnstatedFile {
  public:
    bool IsOpen() const { return file_.IsOpen(); }
    // Asks the system about it and hands it over as a file. What is no regular file is refused.
    Error Stat(ReadFile& out) &&;
    void Prefetch(std::uint64_t length) { file_.Prefetch(length); }
    // Reads a small file with as few calls as can be. False unless all of it was read for certain: it has
    // `size` bytes or more, or none, or an error stands in the way. Of what is no regular file nothing waits:
    // pipes, sockets and terminals cannot be read at an offset.
    bool ReadWhole(void* buffer, std::size_t size, std::size_t& got);

  private:
    friend class OpenFolder;
    friend class FileCloser;
    ReadFile file_;
};

// Closes many files with few calls: they stay open until there are enough of them, or until the object goes.
class FileCloser {
  public:
    static constexpr std::size_t kMost = 64;

    explicit FileCloser(std::size_t enough = kMost) : enough_(enough) {}
    ~FileCloser() { CloseAll(); }
    FileCloser(const FileCloser&) = delete;
    FileCloser& operator=(const FileCloser&) = delete;

    // Nothing happens with a file that is not open. All files must be of one FileSystem.
    void Take(ReadFile file);
    void Take(UnstatedFile file) { Take(std::move(file.file_)); }
    void CloseAll();

  private:
    SystemCalls* calls_ = nullptr;
    std::size_t enough_;
    std::vector<int> fds_;
};

// The files and folders of this machine. All paths are absolute and in the engine's form; a trailing "/" is
// allowed. Paths may be longer than the system's limit for one call. Any thread may call it.
class FileSystem {
  public:
    explicit FileSystem(SystemCalls& calls) : calls_(calls) {}
    SystemCalls& Calls() const { return calls_; }

    Error Open(std::string_view folder, OpenFolder& out) const;
    Error OpenForReading(std::string_view file, ReadFile& out) const;
    // The same for a file that a scan has just seen to be regular: it is not looked at again before it is
    // opened. What took its place since is refused all the same, without waiting.
    Error OpenScannedFile(std::string_view file, ReadFile& out) const;
    Error Stat(std::string_view path, LinkPolicy links, FileInfo& out) const;

    bool FolderExists(std::string_view path) const;  // a folder, or a link to one
    bool FileExists(std::string_view path) const;    // a regular file, or a link to one
    bool Exists(std::string_view path) const;        // anything at all, also a link that leads nowhere

    Error CreateFolder(std::string_view path) const;  // one level; mode 0777 less the umask
    Error RemoveFile(std::string_view path) const;    // never a folder; the link, not what it leads to
    Error Rename(std::string_view from, std::string_view to, bool replace) const;

    // Whole small files, for settings, logs and support files. Reading more than `limit` bytes is an error.
    Error ReadWholeFile(std::string_view path, std::size_t limit, std::string& out) const;
    // Writes a temporary file in the same folder, flushes it, and renames it over `path`: after a kill the
    // old file stands, or the new one. Mode and owner of an existing file are kept; a link is written
    // through.
    Error ReplaceFile(std::string_view path, std::string_view content) const;
    // Appends in one write, creating the file where it is missing.
    Error AppendToFile(std::string_view path, std::string_view content) const;

    Error OpenFile(std::string_view file, bool lookFirst, ReadFile& out) const;
    // An open descriptor of the folder that holds the last part of `path`, reached in steps where the path is
    // long; the caller closes it. `lastPart` is in the system's bytes.
    Error OpenParent(std::string_view path, int& fd, std::string& lastPart) const;

  private:
    SystemCalls& calls_;
};

}  // namespace vantrel
