#include "shell/trash.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <ctime>

#include "platform/names/names.h"
#include "platform/names/paths.h"
#include "shell/delete_engine.h"
#include "shell/trash_guard.h"

namespace vantrel {

TrashPlaces TrashPlaces::OfThisUser() {
    TrashPlaces places;
    places.user = geteuid();
    const char* data = std::getenv("XDG_DATA_HOME");
    const char* home = std::getenv("HOME");
    // A relative path is to be taken for none at all.
    if (data && *data == '/') {
        places.homeTrash = JoinPath(NameFromSystem(data), "Trash");
    } else if (home && *home == '/') {
        places.homeTrash = JoinPath(NameFromSystem(home), ".local/share/Trash");
    }
    return places;
}

std::string EncodeTrashPath(std::string_view bytes) {
    std::string text;
    for (const char c : bytes) {
        const bool plain = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') ||
                           c == '-' || c == '_' || c == '.' || c == '~' || c == '/';
        if (plain) {
            text += c;
            continue;
        }
        char escaped[4];
        std::snprintf(escaped, sizeof escaped, "%%%02X", static_cast<unsigned char>(c));
        text += escaped;
    }
    return text;
}

std::string TrashDate(FileTime local) {
    std::int64_t seconds = 0;
    std::uint32_t nanoseconds = 0;
    local.ToUnix(seconds, nanoseconds);
    const auto stamp = static_cast<time_t>(seconds);
    std::tm parts{};
    gmtime_r(&stamp, &parts);
    char text[64];
    text[std::strftime(text, sizeof text, "%Y-%m-%dT%H:%M:%S", &parts)] = '\0';
    return text;
}

namespace shell {
namespace {

constexpr int kMostNames = 10'000;
constexpr std::size_t kLongestName = 255;  // NAME_MAX
constexpr std::string_view kInfoEnd = ".trashinfo";

Error NoTrash(const std::string& path, const char* why) {
    return {ErrorNumber::PermissionDenied, "\"" + path + "\" cannot serve as a trash folder: " + why};
}

// The name in the trash: the object's own, cut where the info file's name would be too long, with a number
// from the second try on.
std::string NameInTrash(const std::string& name, int attempt) {
    const std::string number = attempt == 1 ? std::string() : "." + std::to_string(attempt);
    return name.substr(0, kLongestName - kInfoEnd.size() - number.size()) + number;
}

}  // namespace

ItemOutcome Trash::Recycle(const Place& place) {
    run_.ShowItem(place, nullptr);
    const ItemOutcome outcome = run_.Attempt(place, [&](ItemOutcome&) { return RecycleOne(place); });
    if (outcome == ItemOutcome::Done) run_.CountObject();
    return outcome;
}

Error Trash::RecycleOne(const Place& place) {
    Statx stat{};
    if (const int looked = Look(calls_, place, LinkPolicy::DoNotFollow, stat); looked < 0)
        return looked == -ENOENT && run_.expected->source.state == Sighting::State::Present
                   ? ChangedSinceSeen(place.Path())
                   : Error::FromErrno(-looked, place.Path());
    if (Error error = run_.RefuseChanged(place, run_.expected->source, &stat); !error.IsOk()) return error;
    Volumes& volumes = run_.shared.parts.volumes;
    const std::string& homeTrash = run_.shared.parts.trash.homeTrash;
    const std::string drive = volumes.GetDriveName(place.folder->path);
    if (!homeTrash.empty() && volumes.GetDriveName(homeTrash) == drive) {
        Bin bin;
        Error error = OpenHomeBin(bin);
        if (error.IsOk()) error = PutInto(bin, place, stat);
        // The home folder can be a mount of its own, which a name alone does not tell.
        if (error.SystemNumber() != EXDEV) return error;
    }
    if (drive.empty()) {
        return {ErrorNumber::PathNotFound,
                "The volume of \"" + place.Path() + "\" is not known, so its trash cannot be found"};
    }
    Bin bin;
    if (Error error = OpenVolumeBin(drive, bin); !error.IsOk()) return error;
    return PutInto(bin, place, stat);
}

Error Trash::OpenHomeBin(Bin& bin) {
    const std::string& path = run_.shared.parts.trash.homeTrash;
    Folder holder, trash;
    Place place{&holder, {}};
    if (Error error = OpenOrMakeFolder(run_.shared.files, GetParentFolderName(path), holder); !error.IsOk())
        return error;
    place.name = NameToSystem(GetLastItemInPath(path));
    // The user may have put the home trash elsewhere by a link.
    const int made = calls_.MkdirAt(place.Fd(), place.name.c_str(), 0700);
    if (made < 0 && made != -EEXIST) return Error::FromErrno(-made, path);
    if (Error error = OpenFolderAt(calls_, place, LinkPolicy::Follow, trash); !error.IsOk()) return error;
    return OpenBin(trash, bin);
}

// The administrator's .Trash with a folder for each user, where it is as it must be; otherwise the user's own
// .Trash-<id>.
Error Trash::OpenVolumeBin(const std::string& topFolder, Bin& bin) {
    const std::string user = std::to_string(run_.shared.parts.trash.user);
    Folder top, common, own;
    if (Error error = OpenOrMakeFolder(run_.shared.files, topFolder, top); !error.IsOk()) return error;
    bin.pathStart = NormalizePath(topFolder);

    const Place commonPlace{&top, ".Trash"};
    Statx stat{};
    const bool usable = Look(calls_, commonPlace, LinkPolicy::DoNotFollow, stat) == 0 && IsFolder(stat) &&
                        (stat.stx_mode & S_ISVTX) != 0;
    if (usable && OpenFolderAt(calls_, commonPlace, LinkPolicy::DoNotFollow, common).IsOk() &&
        OpenOwnFolder({&common, user}, own).IsOk() && OpenBin(own, bin).IsOk())
        return {};
    own = Folder();
    if (Error error = OpenOwnFolder({&top, ".Trash-" + user}, own); !error.IsOk()) return error;
    return OpenBin(own, bin);
}

Error Trash::OpenBin(const Folder& trash, Bin& bin) {
    if (Error error = OpenOwnFolder({&trash, "info"}, bin.info); !error.IsOk()) return error;
    return OpenOwnFolder({&trash, "files"}, bin.files);
}

Error Trash::OpenOwnFolder(const Place& place, Folder& out) {
    const int made = calls_.MkdirAt(place.Fd(), place.name.c_str(), 0700);
    if (made < 0 && made != -EEXIST) return Error::FromErrno(-made, place.Path());
    if (Error error = OpenFolderAt(calls_, place, LinkPolicy::DoNotFollow, out); !error.IsOk()) return error;
    Statx stat{};
    if (const int looked = LookAtOpen(calls_, out.fd.Get(), stat); looked < 0)
        return Error::FromErrno(-looked, out.path);
    if (stat.stx_uid != run_.shared.parts.trash.user) return NoTrash(out.path, "it is another user's");
    return {};
}

int Trash::WriteInfo(const Place& info, const std::string& content) {
    const int fd = calls_.OpenAt(info.Fd(), info.name.c_str(),
                                 O_CREAT | O_EXCL | O_WRONLY | O_NOFOLLOW | O_CLOEXEC, 0600);
    if (fd < 0) return fd;
    Descriptor file(calls_, fd);
    int result = 0;
    for (std::size_t written = 0; result == 0 && written < content.size();) {
        const ssize_t wrote = calls_.Write(fd, content.data() + written, content.size() - written);
        if (wrote <= 0) result = wrote < 0 ? static_cast<int>(wrote) : -EIO;
        if (wrote > 0) written += static_cast<std::size_t>(wrote);
    }
    if (result == 0) result = calls_.Fdatasync(fd);
    if (const int closed = file.Close(); result == 0) result = closed;
    if (result < 0) calls_.UnlinkAt(info.Fd(), info.name.c_str(), 0);
    return result;
}

Error Trash::PutInto(const Bin& bin, const Place& place, const Statx& looked) {
    if (IsFolder(looked)) {
        if (Error error = RefuseTrashWithin(run_.shared, place); !error.IsOk()) return error;
        if (Error error = RefuseChangedBelow(run_, place); !error.IsOk()) return error;
    }
    const std::string recorded(RemainingString(place.Path(), bin.pathStart));
    const std::string content =
        "[Trash Info]\nPath=" + EncodeTrashPath(NameToSystem(recorded)) +
        "\nDeletionDate=" + TrashDate(FileTimeToLocalFileTime(run_.shared.parts.clock.Now())) + "\n";
    for (int attempt = 1; attempt <= kMostNames; ++attempt) {
        const std::string name = NameInTrash(place.name, attempt);
        const Place info{&bin.info, name + std::string(kInfoEnd)};
        int result = WriteInfo(info, content);
        if (result == -EEXIST) continue;
        if (result < 0) return Error::FromErrno(-result, info.Path());
        Statx now{};
        result = Look(calls_, place, LinkPolicy::DoNotFollow, now);
        Error changed = result == 0 ? run_.RefuseChanged(place, SightingOf(looked), &now) : Error();
        if (result == 0 && changed.IsOk()) result = RenameWithoutReplacing(calls_, place, {&bin.files, name});
        if (result == 0 && changed.IsOk()) {
            run_.shared.NoteRenamed(now);
            return {};
        }
        calls_.UnlinkAt(info.Fd(), info.name.c_str(), 0);
        if (!changed.IsOk()) return changed;
        if (result != -EEXIST) return Error::FromErrno(-result, place.Path());
    }
    return Error::FromErrno(EEXIST, place.Path());
}

}  // namespace shell
}  // namespace vantrel
