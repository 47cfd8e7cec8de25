#include "dupes/dupe_marks.h"

#include <algorithm>
#include <optional>

#include "dupes/dupe_filter.h"
#include "dupes/system_folders.h"

namespace vantrel {

namespace {

// Characters, not bytes.
std::int64_t LengthOf(std::string_view path) {
    return std::count_if(path.begin(), path.end(),
                         [](char byte) { return (static_cast<unsigned char>(byte) & 0xC0) != 0x80; });
}

// The lower the better: the file with the least stays.
std::int64_t ValueOf(const FoundFiles& files, const DupeFile& file, MarkRule rule) {
    switch (rule) {
        case MarkRule::AllButNewest:
            return -file.LastModTime().ticks;
        case MarkRule::AllButOldest:
            return file.LastModTime().ticks;
        case MarkRule::AllButFirstInFolders:
            return static_cast<std::int64_t>(files.RootOf(file));
        case MarkRule::AllButShortestPath:
            return LengthOf(files.PathOf(file));
        case MarkRule::ByPattern:
            break;
    }
    return 0;
}

class Marker {
  public:
    Marker(DupeResults& results, const MarkOrder& order)
        : results_(results), order_(order), patterns_({order.pattern}) {}

    MarkReport Mark(const std::vector<std::uint32_t>& groups) {
        for (const std::uint32_t group : groups) MarkGroup(results_.Group(group).members);
        return report_;
    }

  private:
    void MarkGroup(const std::vector<std::uint32_t>& members) {
        if (members.empty()) return;
        const std::uint32_t stays = Staying(members);
        std::vector<std::uint32_t> wanted;
        for (const std::uint32_t member : members) {
            if (member == stays || !IsMeant(member)) continue;
            if (IsProtected(member))
                ++report_.spared;
            else
                wanted.push_back(member);
        }
        for (const std::uint32_t member : wanted) {
            report_.marked += results_.IsMarked(member) ? 0 : 1;
            results_.Mark(member, true);
        }
        // An older mark on the one that stays would leave no file: the rule is the later word.
        const bool all = std::all_of(members.begin(), members.end(),
                                     [this](std::uint32_t member) { return results_.IsMarked(member); });
        if (all && !wanted.empty()) results_.Mark(stays, false);
    }

    std::uint32_t Staying(const std::vector<std::uint32_t>& members) {
        if (order_.rule == MarkRule::ByPattern) return StayingOfPattern(members);
        const FoundFiles& files = results_.Files();
        std::uint32_t best = members[0];
        bool tied = false;
        for (const std::uint32_t member : members) {
            if (member == best) continue;
            const std::int64_t least = ValueOf(files, files[best], order_.rule);
            const std::int64_t value = ValueOf(files, files[member], order_.rule);
            if (value > least) continue;
            tied = value == least;
            if (value < least || files.ComesBefore(files[member], files[best])) best = member;
        }
        report_.tiedGroups += tied ? 1 : 0;
        return best;
    }

    // The first that the pattern does not mean; where it means all, the first.
    std::uint32_t StayingOfPattern(const std::vector<std::uint32_t>& members) const {
        std::optional<std::uint32_t> meant, other;
        const FoundFiles& files = results_.Files();
        for (const std::uint32_t member : members) {
            std::optional<std::uint32_t>& first = IsMeant(member) && !IsProtected(member) ? meant : other;
            if (!first || files.ComesBefore(files[member], files[*first])) first = member;
        }
        return other ? *other : *meant;
    }

    bool IsMeant(std::uint32_t member) const {
        if (order_.rule != MarkRule::ByPattern) return true;
        const FoundFiles& files = results_.Files();
        return order_.pattern.find('/') == std::string::npos ? patterns_.Match(files[member].name)
                                                             : patterns_.Match(files.PathOf(member));
    }

    bool IsProtected(std::uint32_t member) const {
        const std::string& folder = results_.Files().FolderOf(results_.Files()[member]);
        return std::any_of(order_.protectedFolders.begin(), order_.protectedFolders.end(),
                           [&](const std::string& each) { return IsBelowFolder(folder, each); });
    }

    DupeResults& results_;
    const MarkOrder& order_;
    NamePatterns patterns_;
    MarkReport report_;
};

}  // namespace

std::string MarkReport::Text() const {
    std::string text = marked == 0 ? "No files were marked." : std::to_string(marked) + " files were marked.";
    if (tiedGroups > 0)
        text +=
            "\r\nIn " + std::to_string(tiedGroups) +
            " groups several files were equally good: the first one by the order of the folders, then of the "
            "paths, stays.";
    if (spared > 0)
        text += "\r\n" + std::to_string(spared) + " files in protected folders were left unmarked.";
    return text;
}

MarkReport MarkByRule(DupeResults& results, const std::vector<std::uint32_t>& groups,
                      const MarkOrder& order) {
    return Marker(results, order).Mark(groups);
}

}  // namespace vantrel
