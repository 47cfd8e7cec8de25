#include "shell/temporary_files.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>

#include "platform/names/temporary_names.h"

namespace vantrel::shell {

namespace {

// A folder with all in it. What cannot be looked at or removed stays.
void RemoveFolder(SystemCalls& calls, const Place& place) {
    const int removed = calls.UnlinkAt(place.Fd(), place.name.c_str(), AT_REMOVEDIR);
    if (removed != -ENOTEMPTY && removed != -EEXIST) return;
    Statx stat{};
    Folder folder;
    std::vector<std::string> names;
    if (Look(calls, place, LinkPolicy::DoNotFollow, stat) < 0 || !IsFolder(stat)) return;
    // A copy in it may have the rights of its source already.
    if ((stat.stx_mode & 0700) != 0700) calls.FchmodAt(place.Fd(), place.name.c_str(), 0700);
    if (!OpenFolderAt(calls, place, LinkPolicy::DoNotFollow, folder).IsOk()) return;
    if (folder.mount != place.folder->mount || ListNames(calls, folder, names) < 0) return;
    for (const std::string& name : names) {
        const Place child{&folder, name};
        if (Look(calls, child, LinkPolicy::DoNotFollow, stat) < 0) continue;
        if (IsFolder(stat))
            RemoveFolder(calls, child);
        else
            calls.UnlinkAt(child.Fd(), name.c_str(), 0);
    }
    calls.UnlinkAt(place.Fd(), place.name.c_str(), AT_REMOVEDIR);
}

}  // namespace

TemporaryFile::~TemporaryFile() {
    fd_.Close();
    if (!stands_) return;
    if (isFolder_)
        RemoveFolder(shared_.calls, place_);
    else
        shared_.calls.UnlinkAt(place_.Fd(), place_.name.c_str(), 0);
}

void TemporaryFile::NextName() {
    place_.name = TemporaryCopyName::Make(++shared_.nextTemporary);
}

int TemporaryFile::Create() {
    int fd = -EEXIST;
    while (fd == -EEXIST) {
        NextName();
        fd = shared_.calls.OpenAt(place_.Fd(), place_.name.c_str(),
                                  O_CREAT | O_EXCL | O_RDWR | O_NOFOLLOW | O_CLOEXEC, 0600);
    }
    if (fd < 0) return fd;
    stands_ = true;
    fd_ = Descriptor(shared_.calls, fd);
    // Without locks in this file system the process number alone tells that it is in use.
    shared_.calls.Lock(fd, LOCK_EX | LOCK_NB);
    return 0;
}

int TemporaryFile::CreateLink(const char* target) {
    int result = -EEXIST;
    while (result == -EEXIST) {
        NextName();
        result = shared_.calls.SymlinkAt(target, place_.Fd(), place_.name.c_str());
    }
    stands_ = result == 0;
    return result;
}

int TemporaryFile::CreateFolder() {
    int result = -EEXIST;
    while (result == -EEXIST) {
        NextName();
        result = shared_.calls.MkdirAt(place_.Fd(), place_.name.c_str(), 0700);
    }
    stands_ = isFolder_ = result == 0;
    return result;
}

Error TemporaryFile::Publish(const Place& to, const Statx* replaces) {
    int result = 0;
    if (replaces) {
        Statx now{};
        const int looked = Look(shared_.calls, to, LinkPolicy::DoNotFollow, now);
        if (looked < 0 && looked != -ENOENT) return Error::FromErrno(-looked, to.Path());
        if (Error error = RefuseChanged(shared_.calls, to, SightingOf(*replaces),
                                        looked == 0 ? &now : nullptr, shared_.renamed);
            !error.IsOk())
            return error;
        result = shared_.calls.RenameAt(place_.Fd(), place_.name.c_str(), to.Fd(), to.name.c_str(), 0);
        if (result == 0) shared_.NoteRenamed(now);
    } else {
        result = RenameWithoutReplacing(shared_.calls, place_, to);
    }
    stands_ = result < 0;
    return result < 0 ? RefusedName(shared_.calls, place_, to, result) : Error();
}

void SweepTemporaryFiles(Shared& shared, const Folder& folder) {
    if (!shared.sweptFolders.insert(folder.id).second) return;
    std::vector<std::string> names;
    if (ListNames(shared.calls, folder, names) < 0) return;
    for (const std::string& name : names) {
        const auto parsed = TemporaryCopyName::Parse(name);
        if (!parsed || !parsed->IsOfThisMachine() || shared.calls.ProcessExists(parsed->process) != -ESRCH)
            continue;
        const Place place{&folder, name};
        Statx stat{};
        if (Look(shared.calls, place, LinkPolicy::DoNotFollow, stat) < 0) continue;
        if (stat.stx_uid != geteuid() || !(IsFile(stat) || IsLink(stat) || IsFolder(stat))) continue;
        Descriptor fd;
        if (IsFile(stat)) {
            fd = Descriptor(shared.calls,
                            shared.calls.OpenAt(place.Fd(), name.c_str(),
                                                O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC, 0));
            if (!fd.IsOpen() || shared.calls.Lock(fd.Get(), LOCK_EX | LOCK_NB) == -EWOULDBLOCK) continue;
        }
        if (IsFolder(stat))
            RemoveFolder(shared.calls, place);
        else
            shared.calls.UnlinkAt(place.Fd(), name.c_str(), 0);
    }
}

}  // namespace vantrel::shell
