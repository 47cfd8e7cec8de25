#include "sync/left_out.h"

#include <utility>

#include "platform/line_end.h"

namespace vantrel {
namespace {

struct Words {
    std::string_view what, why;
};

constexpr std::array<Words, kLeftOutReasonCount> kWords{{
    {"object(s)",
     "They, or what they would replace, lie behind a link to a folder, or belong to both folders."},
    {"folder(s)", "The other of the two folders lies in them."},
    {"folder(s)", "They could not be looked into wholly, and what is not known is not deleted."},
    {"object(s)", "They are trash folders, lie in one or hold one."},
    {"object(s)",
     "They could not be looked at, or are no file and no folder.  What bears the same name in the other "
     "folder is left alone as well."},
}};

}  // namespace

void LeftOut::Add(Side side, LeftOutReason reason, std::string path) {
    Objects& objects = objects_[side][static_cast<std::size_t>(reason)];
    if (objects.count++ < kMostNamed) objects.paths.push_back(std::move(path));
}

bool LeftOut::IsEmpty() const {
    for (const Side side : kBothSides)
        for (const Objects& objects : objects_[side])
            if (objects.count != 0) return false;
    return true;
}

std::string LeftOut::Describe() const {
    std::string text;
    for (const Side side : kBothSides) {
        for (std::size_t i = 0; i < kLeftOutReasonCount; ++i) {
            const Objects& objects = objects_[side][i];
            if (objects.count == 0) continue;
            if (!text.empty()) text.append(kLineEnd).append(kLineEnd);
            text.append("Left alone: ").append(std::to_string(objects.count)).append(" ");
            text.append(kWords[i].what).append(" of the ");
            text.append(side == Side::Left ? "left" : "right").append(" folder.  ").append(kWords[i].why);
            for (const std::string& path : objects.paths) text.append(kLineEnd).append("  ").append(path);
            const std::size_t more = objects.count - objects.paths.size();
            if (more != 0)
                text.append(kLineEnd).append("  and ").append(std::to_string(more)).append(" more");
        }
    }
    return text;
}

}  // namespace vantrel
