#include <dirent.h>
#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <climits>
#include <cstddef>
#include <cstring>
#include <memory>
#include <set>
#include <string>
#include <utility>

#include "platform/files/descriptor.h"
#include "platform/files/entry_info.h"
#include "platform/files/entry_name.h"
#include "platform/files/file_system.h"
#include "platform/files/raw_listing.h"
#include "platform/names/names.h"
#include "platform/names/temporary_names.h"

namespace vantrel {

namespace {

constexpr std::size_t kListingBuffer = std::size_t{256} << 10;
// Of a listing in steps: more than that the system gives for few names at a time.
constexpr std::size_t kNamesBuffer = std::size_t{64} << 10;

// A buffer for one listing. It is kept for the next one, which in a walk of many folders follows at once; a
// listing within a listing gets its own.
class ListingBuffer {
  public:
    ListingBuffer() : bytes_(std::move(spare_)) {
        if (!bytes_) bytes_ = std::make_unique_for_overwrite<std::byte[]>(kListingBuffer);
    }
    ~ListingBuffer() { spare_ = std::move(bytes_); }
    ListingBuffer(const ListingBuffer&) = delete;
    ListingBuffer& operator=(const ListingBuffer&) = delete;
    std::byte* Data() { return bytes_.get(); }

  private:
    static thread_local std::unique_ptr<std::byte[]> spare_;
    std::unique_ptr<std::byte[]> bytes_;
};

thread_local std::unique_ptr<std::byte[]> ListingBuffer::spare_;

enum class Look { Seen, Gone };

FolderEntry NotTold(const char* name) {
    FolderEntry entry;
    entry.reason = UnknownReason::NotTold;
    if (name[0] == '.') entry.attributes = kHidden;
    return entry;
}

// Asks the system about one entry and fills all of `entry` but its name.
Look LookAt(SystemCalls& calls, int folder, const char* name, const FileSystemTraits& traits,
            FolderEntry& entry) {
    entry = FolderEntry();
    struct statx found;
    int result = calls.StatxAt(folder, name, AT_SYMLINK_NOFOLLOW | AT_NO_AUTOMOUNT, kEntryMask, found);
    if (result == -ENOENT) return Look::Gone;
    if (result != 0) {
        entry = NotTold(name);
        return Look::Seen;
    }
    entry.seen = SeenOf(found);
    if (S_ISDIR(found.stx_mode) && !traits.keepsMade) entry.seen.changed = {};
    entry.lastWrite = entry.seen.lastWrite;
    entry.isLink = S_ISLNK(found.stx_mode);
    if (entry.isLink) {
        result = calls.StatxAt(folder, name, AT_NO_AUTOMOUNT, kEntryMask, found);
        if (result != 0) {
            entry.reason = LeadsNowhere(-result) ? UnknownReason::LeadsNowhere : UnknownReason::NotTold;
            if (name[0] == '.') entry.attributes = kHidden;
            return Look::Seen;
        }
    }
    entry.kind = KindOf(found);
    if (entry.kind == EntryKind::Other) entry.reason = UnknownReason::SpecialObject;
    entry.size = found.stx_size;
    entry.lastWrite = TimeOf(found.stx_mtime);
    entry.id = IdOf(found);
    const std::uint8_t carried = entry.kind == EntryKind::Other
                                     ? std::uint8_t{0}
                                     : ReadDosAttributes(calls, traits.dosAttributes, folder, name);
    entry.attributes = AttributesOf(found, name[0] == '.', carried);
    return Look::Seen;
}

// Of `names`, all in the system's bytes, those that a new listing of the folder does not name. Where it
// cannot be listed that is not known of any.
std::set<std::string> NotListed(SystemCalls& calls, int folder, std::set<std::string> names) {
    const Descriptor again(calls,
                           calls.OpenAt(folder, ".", O_RDONLY | O_DIRECTORY | O_NONBLOCK | O_CLOEXEC, 0));
    if (!again.IsOpen()) return {};
    ListingBuffer buffer;
    const int result =
        ForEachRawEntry(calls, again.Get(), buffer.Data(), kListingBuffer, [&](const dirent64& found) {
            names.erase(found.d_name);
            return !names.empty();
        });
    return result == 0 ? std::move(names) : std::set<std::string>();
}

// Hands the entry out under its name in the engine's form, without a copy where that is the name on disk.
bool HandOut(const EntrySink& sink, std::string_view bytes, FolderEntry& entry) {
    if (IsPlainName(bytes)) {
        entry.name = bytes;
        return sink(entry);
    }
    const std::string name = NameFromSystem(bytes);
    entry.name = name;
    return sink(entry);
}

}  // namespace

OpenFolder::OpenFolder(OpenFolder&& other) noexcept {
    *this = std::move(other);
}

OpenFolder& OpenFolder::operator=(OpenFolder&& other) noexcept {
    std::swap(calls_, other.calls_);
    std::swap(fd_, other.fd_);
    std::swap(id_, other.id_);
    std::swap(made_, other.made_);
    std::swap(traits_, other.traits_);
    std::swap(listed_, other.listed_);
    std::swap(isOfAnother_, other.isOfAnother_);
    keepsAccessTimes_ = other.keepsAccessTimes_.exchange(keepsAccessTimes_);
    return *this;
}

OpenFolder::~OpenFolder() {
    if (fd_ >= 0) calls_->Close(fd_);
}

bool OpenFolder::LookAt(std::string_view name, FolderEntry& entry) const {
    const EntryName bytes(name);
    if (vantrel::LookAt(*calls_, fd_, bytes.Bytes(), traits_, entry) == Look::Seen) return true;
    if (!NotListed(*calls_, fd_, {bytes.Bytes()}).empty()) return false;
    LookOnceMore(bytes.Bytes(), entry);
    return true;
}

// At an entry that was not there at the first look although a listing names it.
void OpenFolder::LookOnceMore(const char* name, FolderEntry& entry) const {
    if (vantrel::LookAt(*calls_, fd_, name, traits_, entry) == Look::Gone) entry = NotTold(name);
}

// From the folder's start, where it has been listed before.
Error OpenFolder::BeginListing() {
    const off_t result = listed_ ? calls_->Seek(fd_, 0, SEEK_SET) : 0;
    listed_ = true;
    return Error::FromErrnoOfFolder(result < 0 ? static_cast<int>(-result) : 0, {});
}

// False where it is gone.
bool OpenFolder::Examine(const char* name, unsigned char type, std::uint64_t inode, StatPolicy statPolicy,
                         FolderEntry& entry) const {
    if (statPolicy != StatPolicy::NonFilesOnly || type != DT_REG ||
        traits_.dosAttributes != DosAttributeSource::None)
        return vantrel::LookAt(*calls_, fd_, name, traits_, entry) == Look::Seen;
    entry.kind = EntryKind::File;
    entry.hasStat = false;
    entry.id.inode = inode;
    if (name[0] == '.') entry.attributes = kHidden;
    return true;
}

Error OpenFolder::ForEach(const EntrySink& sink, StatPolicy statPolicy) {
    if (Error error = BeginListing(); !error.IsOk()) return error;
    ListingBuffer buffer;
    std::set<std::string> gone;
    bool stopped = false;
    const int result =
        ForEachRawEntry(*calls_, fd_, buffer.Data(), kListingBuffer, [&](const dirent64& found) {
            if (IsTemporaryCopyName(found.d_name)) return true;
            FolderEntry entry;
            if (!Examine(found.d_name, found.d_type, found.d_ino, statPolicy, entry)) {
                gone.emplace(found.d_name);
                return true;
            }
            stopped = !HandOut(sink, found.d_name, entry);
            return !stopped;
        });
    if (result != 0) return Error::FromErrnoOfFolder(-result, {});
    if (!stopped) HandOutGone(gone, sink);
    return {};
}

Error OpenFolder::ListNames(bool fromStart, std::size_t wanted, ListedNames& names, bool& atEnd) {
    if (fromStart)
        if (Error error = BeginListing(); !error.IsOk()) return error;
    ListingBuffer buffer;
    atEnd = false;
    while (names.Count() < wanted && !atEnd) {
        const ssize_t size = calls_->GetDents(fd_, buffer.Data(), kNamesBuffer);
        if (size < 0) return Error::FromErrnoOfFolder(static_cast<int>(-size), {});
        atEnd = size == 0;
        ForEachEntryIn(buffer.Data(), size, [&](const dirent64& found) {
            if (IsTemporaryCopyName(found.d_name)) return true;
            names.names_.push_back(
                {found.d_ino, static_cast<std::uint32_t>(names.text_.size()), found.d_type});
            names.text_.append(found.d_name).push_back('\0');
            return true;
        });
    }
    return {};
}

bool OpenFolder::LookAtNames(const ListedNames& names, std::size_t first, std::size_t last,
                             StatPolicy statPolicy, const EntrySink& sink,
                             std::set<std::string>& gone) const {
    for (std::size_t i = first; i < last; ++i) {
        const ListedNames::Name& name = names.names_[i];
        const char* const bytes = names.text_.c_str() + name.at;
        FolderEntry entry;
        if (!Examine(bytes, name.type, name.inode, statPolicy, entry))
            gone.emplace(bytes);
        else if (!HandOut(sink, bytes, entry))
            return false;
    }
    return true;
}

void OpenFolder::HandOutGone(const std::set<std::string>& gone, const EntrySink& sink) const {
    if (gone.empty()) return;
    const std::set<std::string> absent = NotListed(*calls_, fd_, gone);
    for (const std::string& name : gone) {
        if (absent.contains(name)) continue;
        FolderEntry entry;
        LookOnceMore(name.c_str(), entry);
        if (!HandOut(sink, name, entry)) return;
    }
}

Error OpenFolder::ReadLink(std::string_view name, std::string& target) const {
    target.resize(PATH_MAX);
    const ssize_t size = calls_->ReadlinkAt(fd_, EntryName(name).Bytes(), target.data(), target.size());
    target.resize(size > 0 ? static_cast<std::size_t>(size) : 0);
    return Error::FromErrno(size < 0 ? static_cast<int>(-size) : 0, name);
}

Error OpenFolder::OpenSub(std::string_view name, OpenFolder& out) const {
    const EntryName entry(name);
    if (!entry.IsWhole()) return Error::FromErrnoOfFolder(EINVAL, name);
    const int result = OpenAt(*calls_, fd_, entry.Bytes(), this, out);
    return Error::FromErrnoOfFolder(-result, name);
}

int OpenFolder::OpenAt(SystemCalls& calls, int base, const char* path, const OpenFolder* above,
                       OpenFolder& out) {
    OpenFolder opened;
    opened.calls_ = &calls;
    opened.fd_ = calls.OpenAt(base, path, O_RDONLY | O_DIRECTORY | O_NONBLOCK | O_CLOEXEC, 0);
    if (opened.fd_ < 0) return opened.fd_;
    struct statx found;
    const int result =
        calls.StatxAt(opened.fd_, "", AT_EMPTY_PATH, STATX_TYPE | STATX_INO | STATX_UID | STATX_BTIME, found);
    if (result != 0) return result;
    const auto user = geteuid();
    opened.isOfAnother_ = user != 0 && found.stx_uid != user;
    opened.id_ = IdOf(found);
    opened.traits_ = above != nullptr && above->id_.device == opened.id_.device
                         ? above->traits_
                         : FindFileSystemTraits(calls, opened.fd_);
    if (opened.traits_.keepsMade) opened.made_ = MadeAt(found);
    out = std::move(opened);
    return 0;
}

}  // namespace vantrel
