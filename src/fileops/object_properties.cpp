#include "fileops/object_properties.h"

#include <fcntl.h>
#include <grp.h>
#include <pwd.h>

#include <climits>

#include "platform/names/names.h"
#include "platform/names/paths.h"

namespace vantrel {
namespace {

constexpr std::uint32_t kPermissions = 0777;

std::string UserName(std::uint32_t id) {
    const passwd* user = getpwuid(id);
    return user ? NameFromSystem(user->pw_name) : std::to_string(id);
}

std::string GroupName(std::uint32_t id) {
    const struct group* group = getgrgid(id);
    return group ? NameFromSystem(group->gr_name) : std::to_string(id);
}

// An open folder and the name in it.
class Holder {
  public:
    Holder(const FileSystem& files, const std::string& path) : calls_(files.Calls()) {
        error_ = files.OpenParent(path, fd_, name_);
    }
    ~Holder() {
        if (fd_ >= 0) calls_.Close(fd_);
    }
    Holder(const Holder&) = delete;
    Holder& operator=(const Holder&) = delete;
    const Error& Failure() const { return error_; }
    int Fd() const { return fd_; }
    const char* Name() const { return name_.c_str(); }

  private:
    SystemCalls& calls_;
    int fd_ = -1;
    std::string name_;
    Error error_;
};

}  // namespace

Error ReadProperties(const Toolbox& tools, const std::string& path, ObjectProperties& out) {
    out = {};
    FileInfo info;
    if (Error error = tools.files.Stat(path, LinkPolicy::DoNotFollow, info); !error.IsOk()) return error;
    out.path = WithoutTrailingSlash(path);
    out.name = GetLastItemInPath(out.path);
    out.folder = GetParentFolderName(out.path);
    out.kind = info.kind;
    out.isLink = info.isLink;
    out.size = Currency::FromWhole(static_cast<std::int64_t>(info.size));
    const auto shown = [&](FileTime time) { return tools.locale.DateTime(FileTimeToLocalFileTime(time)); };
    if (info.created.ticks != 0) out.created = shown(info.created);
    out.accessed = shown(info.accessed);
    out.modified = shown(info.lastWrite);
    out.owner = UserName(info.owner);
    out.group = GroupName(info.group);
    out.mode = info.mode;
    if (!info.isLink) return {};
    const Holder holder(tools.files, path);
    if (!holder.Failure().IsOk()) return holder.Failure();
    std::string target(PATH_MAX, '\0');
    const ssize_t length =
        tools.files.Calls().ReadlinkAt(holder.Fd(), holder.Name(), target.data(), target.size());
    if (length < 0) return Error::FromErrno(static_cast<int>(-length), path);
    out.leadsTo = NameFromSystem(std::string_view(target).substr(0, static_cast<std::size_t>(length)));
    return {};
}

Error ApplyPermissions(const Toolbox& tools, const std::string& path, std::uint32_t mode) {
    FileInfo info;
    if (Error error = tools.files.Stat(path, LinkPolicy::DoNotFollow, info); !error.IsOk()) return error;
    if (info.isLink) return {ErrorNumber::PermissionDenied, "A link has no permissions of its own"};
    const Holder holder(tools.files, path);
    if (!holder.Failure().IsOk()) return holder.Failure();
    const mode_t wanted = (info.mode & ~kPermissions) | (mode & kPermissions);
    const int result = tools.files.Calls().FchmodAt(holder.Fd(), holder.Name(), wanted);
    return result < 0 ? Error::FromErrno(-result, path) : Error();
}

}  // namespace vantrel
