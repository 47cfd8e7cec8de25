#include "shell/temporary_files.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>

#include "platform/names/temporary_names.h"

namespace vantrel::shell {

TemporaryFile::~TemporaryFile() {
    fd_.Close();
    if (stands_) shared_.calls.UnlinkAt(place_.Fd(), place_.name.c_str(), 0);
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

int TemporaryFile::Publish(const Place& to, bool replace) {
    // Network file systems tell at the close that the data could not be stored.
    if (const int closed = fd_.Close(); closed < 0) return closed;
    const int result =
        replace ? shared_.calls.RenameAt(place_.Fd(), place_.name.c_str(), to.Fd(), to.name.c_str(), 0)
                : RenameWithoutReplacing(shared_.calls, place_, to);
    stands_ = result < 0;
    return result;
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
        if (stat.stx_uid != geteuid() || !(IsFile(stat) || IsLink(stat))) continue;
        Descriptor fd;
        if (IsFile(stat)) {
            fd = Descriptor(shared.calls,
                            shared.calls.OpenAt(place.Fd(), name.c_str(),
                                                O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC, 0));
            if (!fd.IsOpen() || shared.calls.Lock(fd.Get(), LOCK_EX | LOCK_NB) == -EWOULDBLOCK) continue;
        }
        shared.calls.UnlinkAt(place.Fd(), name.c_str(), 0);
    }
}

}  // namespace vantrel::shell
