#include "shell/roots.h"

#include <fcntl.h>

#include <algorithm>
#include <cerrno>

#include "platform/names/names.h"
#include "platform/names/paths.h"

namespace vantrel::shell {
namespace {

Error RootIsGone(const std::string& path) {
    return {kChangedSinceSeen, "The folder \"" + path +
                                   "\" is gone, or is another folder than the one that was compared. Nothing "
                                   "more is done"};
}

Error LeadsThroughALink(const std::string& path) {
    return {kChangedSinceSeen, "\"" + path + "\" is no folder, or a link to one. Nothing is done behind it"};
}

// The parts of `path` below a root that begins with `start`.
std::vector<std::string_view> PartsBelow(std::string_view start, std::string_view path) {
    std::vector<std::string_view> parts;
    std::string_view rest = path.size() < start.size() ? std::string_view() : RemainingString(path, start);
    while (!rest.empty()) {
        const std::string_view part = rest.substr(0, rest.find('/'));
        rest.remove_prefix(std::min(rest.size(), part.size() + 1));
        if (!part.empty()) parts.push_back(part);
    }
    return parts;
}

}  // namespace

Error Roots::Open() {
    roots_.clear();
    roots_.reserve(given_.size());
    for (const ShellRoot& given : given_) {
        Root& root = roots_.emplace_back();
        if (Error error = OpenExistingFolder(files_, given.path, root.folder); !error.IsOk())
            return RootIsGone(given.path);
        if (root.folder.id != given.id || !MadeAlike(root.folder.made, given.made))
            return RootIsGone(given.path);
        root.folder.made = given.made;
        root.start = root.folder.path.ends_with('/') ? root.folder.path : root.folder.path + "/";
    }
    return {};
}

Error Roots::Verify() const {
    for (const Root& root : roots_) {
        FileInfo now;
        if (!files_.Stat(root.folder.path, LinkPolicy::Follow, now).IsOk() || now.id != root.folder.id ||
            !MadeAlike(now.created, root.folder.made))
            return RootIsGone(root.folder.path);
    }
    return {};
}

const Roots::Root* Roots::RootOf(std::string_view path) const {
    const Root* best = nullptr;  // of two that lie one in the other the inner one
    for (const Root& root : roots_) {
        const bool below = path.starts_with(root.start) || path == WithoutTrailingSlash(root.start);
        if (below && (!best || best->start.size() < root.start.size())) best = &root;
    }
    return best;
}

std::vector<std::string> Roots::Counterparts(std::string_view path, std::string_view like) const {
    const Root* root = RootOf(path);
    const Root* other = RootOf(like);
    if (!root || !other) return {};
    std::vector<std::string> counterparts{other->folder.path};
    for (const std::string_view part : PartsBelow(other->start, like))
        counterparts.push_back(JoinPath(counterparts.back(), part));
    if (counterparts.size() != PartsBelow(root->start, path).size() + 1) return {};
    return counterparts;
}

Error Roots::OpenPart(const Place& place, Folder& out) const {
    const std::shared_ptr<const Folder> unnamed = shared_.batch->Unnamed(place);
    if (!unnamed) return OpenFolderOnTheWay(shared_.calls, place, out);
    Error error = OpenFolderOnTheWay(shared_.calls, {unnamed.get(), "."}, out);
    out.path = unnamed->path;
    return error;
}

Error Roots::MakePart(const Place& place, const std::string& like, const FolderMaking& making) const {
    std::shared_ptr<Folder> source;
    const Root* root = like.empty() ? nullptr : RootOf(like);
    Error opened = root ? Walk(*root, like, nullptr, source) : Error();
    Folder readable;
    if (source && opened.IsOk())
        opened = OpenFolderAt(shared_.calls, {source.get(), "."}, LinkPolicy::DoNotFollow, readable);
    // One that may be entered and not read does not tell what it has.
    if (!opened.IsOk() && opened.SystemNumber() != EACCES) return opened;
    if (!readable.fd.IsOpen()) {
        const int made = shared_.calls.MkdirAt(place.Fd(), place.name.c_str(), 0777);
        return made < 0 && made != -EEXIST ? Error::FromErrno(-made, place.Path()) : Error();
    }
    WaitingFolder folder;
    if (const int failed = LookAtOpen(shared_.calls, readable.fd.Get(), folder.like); failed < 0)
        return Error::FromErrno(-failed, like);
    folder.source = like;
    folder.target = place.Path();
    folder.owner = making.owner;
    folder.item = making.item;
    Error error = MakeFolderLike(shared_, readable, folder.like, place, making.nameComes, folder.made);
    if (error.SystemNumber() == EEXIST) return {};  // somebody else has made it meanwhile
    if (error.IsOk()) shared_.batch->Keep(std::move(folder));
    return error;
}

Error Roots::Walk(const Root& root, std::string_view path, const FolderMaking* making,
                  std::shared_ptr<Folder>& out) const {
    out = std::make_shared<Folder>();
    if (Error error = OpenFolderOnTheWay(shared_.calls, {&root.folder, "."}, *out); !error.IsOk())
        return error;
    out->path = root.folder.path;
    const std::vector<std::string> counterparts =
        making ? Counterparts(path, making->like) : std::vector<std::string>();
    std::size_t level = 0;
    for (const std::string_view part : PartsBelow(root.start, path)) {
        ++level;
        if (part == "." || part == "..")
            return {ErrorNumber::PathNotFound, "\"" + std::string(path) + "\" is no full path"};
        auto next = std::make_shared<Folder>();
        const Place place{out.get(), NameToSystem(part)};
        Error error = OpenPart(place, *next);
        if (error.SystemNumber() == ENOENT && making) {
            const std::string& like = level < counterparts.size() ? counterparts[level] : std::string();
            if (Error made = MakePart(place, like, *making); !made.IsOk()) return made;
            error = OpenPart(place, *next);
        }
        if (error.SystemNumber() == ENOTDIR || error.SystemNumber() == ELOOP)
            return LeadsThroughALink(place.Path());
        if (!error.IsOk()) return error;
        out = std::move(next);
    }
    return {};
}

Error Roots::OpenHolder(std::string_view path, Folder& holder, std::string& name) const {
    const std::string_view last = GetLastItemInPath(path);
    const Root* root = RootOf(path);
    const bool isRoot = root && path.size() <= root->start.size();
    if (!root || isRoot || last.empty() || last == "." || last == "..")
        return shell::OpenHolder(files_, path, holder, name);
    name = NameToSystem(last);
    std::shared_ptr<Folder> walked;
    Error error = Walk(*root, GetParentFolderName(path), nullptr, walked);
    holder = std::move(*walked);
    return error;
}

Error Roots::OpenOrMakeFolder(std::string_view path, const FolderMaking& making,
                              std::shared_ptr<Folder>& out) const {
    const std::string plain = WithoutTrailingSlash(path);
    const Root* root = RootOf(plain);
    if (root) return Walk(*root, plain, &making, out);
    out = std::make_shared<Folder>();
    return shell::OpenOrMakeFolder(files_, plain, *out);
}

}  // namespace vantrel::shell
