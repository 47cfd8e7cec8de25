#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "core/side.h"

namespace vantrel {

// Why a plan leaves out what the action table speaks of.
enum class LeftOutReason : std::uint8_t {
    Elsewhere,         // it lies behind a link to a folder, or belongs to both folders
    HoldsOtherFolder,  // the other of the two folders lies in it
    NotWhollyKnown,    // a part of the folder could not be looked into, so that it is not deleted
    Trash,             // it is a trash folder, lies in one or holds one
    Unknown,           // it could not be looked at, or is no file and no folder
};
inline constexpr std::size_t kLeftOutReasonCount = 5;

// What a plan leaves out: how much on each side for each reason, and the first paths of it.
class LeftOut {
  public:
    static constexpr std::size_t kMostNamed = 10;

    // `path` is the full path of the object.
    void Add(Side side, LeftOutReason reason, std::string path);
    bool IsEmpty() const;
    std::size_t Count(Side side, LeftOutReason reason) const { return Of(side, reason).count; }
    // For the user, a paragraph for each side and reason; empty where nothing is left out.
    std::string Describe() const;

  private:
    struct Objects {
        std::size_t count = 0;
        std::vector<std::string> paths;  // at most kMostNamed
    };
    const Objects& Of(Side side, LeftOutReason reason) const {
        return objects_[side][static_cast<std::size_t>(reason)];
    }

    PerSide<std::array<Objects, kLeftOutReasonCount>> objects_;
};

}  // namespace vantrel
