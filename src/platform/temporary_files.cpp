#include "platform/temporary_files.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/utsname.h>
#include <unistd.h>

#include <cerrno>
#include <charconv>
#include <cstdio>
#include <optional>

namespace vantrel {
namespace {

constexpr std::string_view kHead = ".~vantrel-";
constexpr std::string_view kTail = ".tmp";
constexpr std::size_t kMachineDigits = 8;

// Two machines can write to one shared folder, where a process number of the one says nothing to the other.
std::string ThisMachine() {
    utsname name{};
    uname(&name);
    std::uint32_t hash = 2166136261U;  // FNV-1a
    for (const char* c = name.nodename; *c; ++c) hash = (hash ^ static_cast<unsigned char>(*c)) * 16777619U;
    char text[kMachineDigits + 1];
    std::snprintf(text, sizeof text, "%08x", hash);
    return text;
}

struct Parsed {
    std::string_view machine;
    pid_t process = 0;
};

std::optional<Parsed> Parse(std::string_view name) {
    if (!name.starts_with(kHead) || !name.ends_with(kTail)) return std::nullopt;
    name.remove_prefix(kHead.size());
    if (name.size() < kTail.size() + kMachineDigits + 4) return std::nullopt;
    name.remove_suffix(kTail.size());
    Parsed parsed{name.substr(0, kMachineDigits), 0};
    if (parsed.machine.find_first_not_of("0123456789abcdef") != std::string_view::npos) return std::nullopt;
    std::uint64_t number = 0;
    const char* at = name.data() + kMachineDigits;
    const char* end = name.data() + name.size();
    if (*at++ != '-') return std::nullopt;
    auto read = std::from_chars(at, end, parsed.process);
    if (read.ec != std::errc() || parsed.process <= 0 || read.ptr == end || *read.ptr != '-')
        return std::nullopt;
    read = std::from_chars(read.ptr + 1, end, number);
    if (read.ec != std::errc() || read.ptr != end) return std::nullopt;
    return parsed;
}

}  // namespace

bool IsTemporaryCopyName(std::string_view name) {
    return Parse(name).has_value();
}

namespace shell {

TemporaryFile::~TemporaryFile() {
    fd_.Close();
    if (stands_) shared_.calls.UnlinkAt(place_.Fd(), place_.name.c_str(), 0);
}

void TemporaryFile::NextName() {
    static const std::string start = std::string(kHead) + ThisMachine() + "-";
    place_.name = start + std::to_string(getpid()) + "-" + std::to_string(++shared_.nextTemporary);
    place_.name += kTail;
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
    static const std::string machine = ThisMachine();
    for (const std::string& name : names) {
        const auto parsed = Parse(name);
        if (!parsed || parsed->machine != machine || shared.calls.ProcessExists(parsed->process) != -ESRCH)
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

}  // namespace shell
}  // namespace vantrel
