#include "platform/names/fold.h"

#include "platform/names/names.h"

namespace vantrel {

void AppendFolded(std::string_view name, std::string& to) {
    const std::size_t start = to.size();
    to.append(name);
    std::size_t at = 0;
    for (; at < name.size() && static_cast<unsigned char>(name[at]) < 0x80; ++at) {
        to[start + at] = static_cast<char>(FoldAscii(static_cast<unsigned char>(name[at])));
    }
    to.resize(start + at);
    while (at < name.size()) AppendFoldedCharacter(name, at, to);
}

std::string FoldCase(std::string_view name) {
    std::string folded;
    AppendFolded(name, folded);
    return folded;
}

bool EqualIgnoringCase(std::string_view a, std::string_view b) {
    return a == b || CompareIgnoringCase(a, b) == 0;
}

int CompareIgnoringCase(std::string_view a, std::string_view b) {
    std::size_t inA = 0;
    std::size_t inB = 0;
    while (inA < a.size() && inB < b.size()) {
        const UChar32 fromA = NextFolded(a, inA);
        const UChar32 fromB = NextFolded(b, inB);
        if (fromA != fromB) return fromA < fromB ? -1 : 1;
    }
    return static_cast<int>(inA < a.size()) - static_cast<int>(inB < b.size());
}

}  // namespace vantrel
