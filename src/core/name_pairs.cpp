#include "core/name_pairs.h"

#include <algorithm>

namespace vantrel {
namespace {

bool CanPair(NameKind left, NameKind right) {
    return left == right || left == NameKind::Other || right == NameKind::Other;
}

using Rest = PerSide<std::vector<const CollidingName*>>;

void PairTheRest(const Rest& rest, std::vector<NamePair>& pairs) {
    if (rest[Side::Left].size() == 1 && rest[Side::Right].size() == 1) {
        pairs.push_back({{rest[Side::Left].front(), rest[Side::Right].front()}});
        return;
    }
    for (const Side side : kBothSides) {
        for (const CollidingName* name : rest[side]) {
            NamePair alone{};
            alone[side] = name;
            pairs.push_back(alone);
        }
    }
}

std::string_view NameOf(const NamePair& pair) {
    return pair[Side::Left] ? pair[Side::Left]->name : pair[Side::Right]->name;
}

}  // namespace

std::vector<NamePair> PairNames(const PerSide<std::vector<CollidingName>>& names) {
    std::vector<NamePair> pairs;
    Rest rest;
    for (const CollidingName& name : names[Side::Right]) rest[Side::Right].push_back(&name);
    for (const CollidingName& name : names[Side::Left]) {
        auto& right = rest[Side::Right];
        const auto equal = std::find_if(right.begin(), right.end(), [&](const CollidingName* other) {
            return other->name == name.name && CanPair(name.kind, other->kind);
        });
        if (equal == right.end()) {
            rest[Side::Left].push_back(&name);
        } else {
            pairs.push_back({{&name, *equal}});
            right.erase(equal);
        }
    }
    const bool anyOther = std::any_of(kBothSides.begin(), kBothSides.end(), [&](Side side) {
        return std::any_of(rest[side].begin(), rest[side].end(),
                           [](const CollidingName* name) { return name->kind == NameKind::Other; });
    });
    if (anyOther) {
        PairTheRest(rest, pairs);
    } else {
        for (const NameKind kind : {NameKind::File, NameKind::Folder}) {
            Rest ofKind;
            for (const Side side : kBothSides)
                std::copy_if(rest[side].begin(), rest[side].end(), std::back_inserter(ofKind[side]),
                             [kind](const CollidingName* name) { return name->kind == kind; });
            PairTheRest(ofKind, pairs);
        }
    }
    std::sort(pairs.begin(), pairs.end(),
              [](const NamePair& a, const NamePair& b) { return NameOf(a) < NameOf(b); });
    return pairs;
}

}  // namespace vantrel
