#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "dupes/dupe_grouping.h"
#include "platform/currency.h"

namespace vantrel {

struct DupeGroup {
    std::string label;                   // the name where names match, otherwise the size in decimal
    std::vector<std::uint32_t> members;  // numbers of FoundFiles; none: it is no group any more
    Currency bytes;                      // that they hold

    // As lstDupeGroups shows it: "name - (2 files)".
    std::string Line() const;
};

enum class GroupOrder : std::uint8_t { AsFound, MostBytesFirst, FewestBytesFirst };

struct MarkTotals {
    std::uint64_t marked = 0;  // files
    Currency
        toWin;  // bytes of those; what has other names takes room until these are gone, and counts nothing
    std::uint64_t kept = 0;  // files without a mark in groups with one

    std::string Text() const;  // "3 files marked, 12 KB to win, 2 kept"
};

// The groups of a search, with the marks on their files. Groups are known by number, from 0 in the order in
// which they were found; a number stays that of its group for the life of the results.
class DupeResults {
  public:
    static constexpr std::size_t kMostGroups = 32'767;

    DupeResults() = default;
    // Makes a group of each run, up to kMostGroups. The runs are of `files`.
    DupeResults(FoundFiles files, const std::vector<DupeRun>& runs, const DupeCriteria& criteria);

    const FoundFiles& Files() const { return files_; }
    FoundFiles& Files() { return files_; }
    const DupeCriteria& Criteria() const { return criteria_; }
    const DupeGroup& Group(std::uint32_t group) const { return groups_[group]; }
    std::size_t AllGroups() const {
        return groups_.size();
    }  // numbers given, of groups that are gone as well

    std::uint32_t GroupCount() const { return groupCount_; }
    std::uint64_t DuplicateCount() const { return duplicateCount_; }
    Currency DuplicateBytes() const { return duplicateBytes_; }
    // "4 duplicates found in 2 groups.  (1.5 KB)"
    std::string StatusText() const;

    // The groups that the list shows, in its order. They change with the next three and with Forget.
    const std::vector<std::uint32_t>& Shown() const { return shown_; }
    void Sort(GroupOrder order);
    // Groups whose label or a path of whose files holds the text, letter case ignored; empty: all.
    void Filter(std::string_view text);

    bool IsMarked(std::uint32_t file) const { return marked_[file] != 0; }
    void Mark(std::uint32_t file, bool marked) { marked_[file] = marked ? 1 : 0; }
    void UnmarkAll();
    MarkTotals Totals() const;
    // Those with a mark on a file, in the order found.
    std::vector<std::uint32_t> GroupsWithMarks() const;

    // The files left their group: counts and marks follow. Of a group with one file left the rest goes as
    // well.
    void Forget(std::uint32_t group, const std::vector<std::uint32_t>& files);

    // Whether counts, members and what is shown fit each other.
    bool IsConsistent() const;

  private:
    void Subtract(std::uint32_t file);
    void ShowAgain();
    bool Holds(const DupeGroup& group, std::string_view foldedText) const;

    FoundFiles files_;
    DupeCriteria criteria_;
    std::vector<DupeGroup> groups_;
    std::vector<std::uint32_t> shown_;
    std::vector<std::uint8_t> marked_;  // by file
    GroupOrder order_ = GroupOrder::AsFound;
    std::string filter_;  // folded
    std::uint32_t groupCount_ = 0;
    std::uint64_t duplicateCount_ = 0;
    Currency duplicateBytes_;
};

}  // namespace vantrel
