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

}  // namespace

Error Roots::Open() {
    roots_.clear();
    roots_.reserve(given_.size());
    for (const ShellRoot& given : given_) {
        Root& root = roots_.emplace_back();
        if (Error error = OpenExistingFolder(files_, given.path, root.folder); !error.IsOk())
            return RootIsGone(given.path);
        if (root.folder.id != given.id) return RootIsGone(given.path);
        root.start = root.folder.path.ends_with('/') ? root.folder.path : root.folder.path + "/";
    }
    return {};
}

Error Roots::Verify() const {
    for (const Root& root : roots_) {
        Folder now;
        if (!OpenExistingFolder(files_, root.folder.path, now).IsOk() || now.id != root.folder.id)
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

Error Roots::Walk(const Root& root, std::string_view path, Missing missing, Folder& out) const {
    SystemCalls& calls = files_.Calls();
    if (Error error = OpenFolderOnTheWay(calls, {&root.folder, "."}, out); !error.IsOk()) return error;
    out.path = root.folder.path;
    std::string_view rest = RemainingString(path, root.start);
    if (path.size() < root.start.size()) rest = {};
    while (!rest.empty()) {
        const std::string_view part = rest.substr(0, rest.find('/'));
        rest.remove_prefix(std::min(rest.size(), part.size() + 1));
        if (part.empty()) continue;
        if (part == "." || part == "..")
            return {ErrorNumber::PathNotFound, "\"" + std::string(path) + "\" is no full path"};
        Folder next;
        const Place place{&out, NameToSystem(part)};
        Error error = OpenFolderOnTheWay(calls, place, next);
        if (error.SystemNumber() == ENOENT && missing == Missing::IsMade) {
            const int made = calls.MkdirAt(place.Fd(), place.name.c_str(), 0777);
            if (made < 0 && made != -EEXIST) return Error::FromErrno(-made, place.Path());
            error = OpenFolderOnTheWay(calls, place, next);
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
    return Walk(*root, GetParentFolderName(path), Missing::IsAnError, holder);
}

Error Roots::OpenOrMakeFolder(std::string_view path, Folder& out) const {
    const std::string plain = WithoutTrailingSlash(path);
    const Root* root = RootOf(plain);
    if (!root) return shell::OpenOrMakeFolder(files_, plain, out);
    return Walk(*root, plain, Missing::IsMade, out);
}

}  // namespace vantrel::shell
