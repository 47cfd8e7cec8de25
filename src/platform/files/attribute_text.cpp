#include "platform/files/attribute_text.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <iterator>

#include "platform/files/located_path.h"

namespace vantrel {

namespace {

char TypeLetter(unsigned mode) {
    switch (mode & S_IFMT) {
        case S_IFDIR:
            return 'd';
        case S_IFCHR:
            return 'c';
        case S_IFBLK:
            return 'b';
        case S_IFIFO:
            return 'p';
        case S_IFSOCK:
            return 's';
        default:
            return '-';
    }
}

// As the standard for ls describes it (IEEE 1003.1): the special bits show in the place of the right to
// execute.
std::string ModeText(unsigned mode) {
    std::string text(1, TypeLetter(mode));
    constexpr struct {
        unsigned special;
        char letter, without;
    } kSpecial[] = {{S_ISUID, 's', 'S'}, {S_ISGID, 's', 'S'}, {S_ISVTX, 't', 'T'}};
    for (unsigned who = 0; who < std::size(kSpecial); ++who) {
        const unsigned rights = mode >> (6 - 3 * who);
        text += (rights & 4U) != 0 ? 'r' : '-';
        text += (rights & 2U) != 0 ? 'w' : '-';
        const bool executes = (rights & 1U) != 0;
        if ((mode & kSpecial[who].special) != 0)
            text += executes ? kSpecial[who].letter : kSpecial[who].without;
        else
            text += executes ? 'x' : '-';
    }
    return text;
}

}  // namespace

Error GetAttributeText(const FileSystem& files, std::string_view path, std::string& out) {
    FileInfo info;
    if (Error error = files.Stat(path, LinkPolicy::Follow, info); !error.IsOk()) return error;
    const LocatedPath at(files.Calls(), path);
    struct statx found {};
    int result = at.Failure();
    if (result == 0)
        result =
            files.Calls().StatxAt(at.Folder(), at.Rest(), AT_NO_AUTOMOUNT, STATX_TYPE | STATX_MODE, found);
    if (result != 0) return Error::FromErrno(-result, path);
    out = ModeText(found.stx_mode);
    const auto add = [&](bool has, std::string_view word) {
        if (has) out.append(" ").append(word);
    };
    add((info.attributes & kReadOnly) != 0, "read-only");
    add((info.attributes & kHidden) != 0, "hidden");
    add((info.attributes & kSystem) != 0, "system");
    add((found.stx_attributes & STATX_ATTR_IMMUTABLE) != 0, "immutable");
    add((found.stx_attributes & STATX_ATTR_APPEND) != 0, "append-only");
    return {};
}

}  // namespace vantrel
