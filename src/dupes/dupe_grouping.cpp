#include "dupes/dupe_grouping.h"

#include <algorithm>
#include <string>
#include <string_view>

#include "core/name_order.h"
#include "platform/names/names.h"

namespace vantrel {

namespace {

constexpr std::uint32_t kStepsBetweenChecks = 8'192;

// Whole seconds, towards the past.
std::int64_t SecondsOf(FileTime time) {
    const std::int64_t seconds = time.ticks / FileTime::kTicksPerSecond;
    return time.ticks % FileTime::kTicksPerSecond < 0 ? seconds - 1 : seconds;
}

int Order(std::int64_t a, std::int64_t b) {
    return a < b ? -1 : a > b ? 1 : 0;
}

// The keys of all files, while they are being sorted.
class Keys {
  public:
    Keys(const FoundFiles& files, const DupeCriteria& criteria, const DupeCheck& check)
        : files_(files), criteria_(criteria), check_(check) {
        if (!criteria.names) return;
        names_.reserve(files.Count() + 1);
        for (std::size_t i = 0; i < files.Count(); ++i) {
            names_.push_back(text_.size());
            AppendFolded(files[i].name, text_);
            if (i % kStepsBetweenChecks == 0) check_();
        }
        names_.push_back(text_.size());
        FindCommon();
    }

    // Names often begin alike: the number is taken from behind what all have in common.
    std::uint64_t HeadOf(std::uint32_t file) const {
        return criteria_.names ? vantrel::HeadOf(NameOf(file).substr(common_))
                               : static_cast<std::uint64_t>(files_[file].size + 1);
    }
    // Below, equal or above 0.
    int Compare(const SortItem& a, const SortItem& b) const {
        if (a.head != b.head) return a.head < b.head ? -1 : 1;
        if (criteria_.names)
            if (const int order = NameOf(a.index).compare(NameOf(b.index)); order != 0) return order;
        return CompareRest(files_[a.index], files_[b.index]);
    }
    bool AreEqual(const SortItem& a, const SortItem& b) const {
        if (criteria_.sizes && files_[a.index].size == DupeFile::kUnknownSize) return false;
        return Compare(a, b) == 0;
    }

  private:
    void FindCommon() {
        if (files_.Count() == 0) return;
        const std::string_view first = NameOf(0);
        common_ = first.size();
        for (std::uint32_t i = 1; i < files_.Count() && common_ > 0; ++i) {
            const std::string_view name = NameOf(i);
            common_ = std::min(common_, name.size());
            while (common_ > 0 && first.substr(0, common_) != name.substr(0, common_)) --common_;
        }
    }
    std::string_view NameOf(std::uint32_t file) const {
        return std::string_view(text_).substr(names_[file], names_[file + 1] - names_[file]);
    }
    int CompareRest(const DupeFile& a, const DupeFile& b) const {
        int order = criteria_.sizes ? Order(a.size, b.size) : 0;
        if (order == 0 && criteria_.createTimes)
            order = Order(SecondsOf(a.createTime), SecondsOf(b.createTime));
        if (order == 0 && criteria_.lastModTimes)
            order = Order(SecondsOf(a.LastModTime()), SecondsOf(b.LastModTime()));
        if (order == 0 && criteria_.attributes) order = Order(a.attributes, b.attributes);
        return order;
    }

    const FoundFiles& files_;
    const DupeCriteria& criteria_;
    const DupeCheck& check_;
    std::string text_;  // all names, folded
    std::vector<std::size_t> names_;
    std::size_t common_ = 0;  // bytes
};

// The runs of two and more neighbours for which `equal(i - 1, i)`, from `first` to before `end`.
template <typename Equal>
void FindRuns(std::size_t first, std::size_t end, const Equal& equal, std::vector<DupeRun>& runs) {
    for (std::size_t i = first + 1; i < end; ++i) {
        if (!equal(i - 1, i)) continue;
        if (!runs.empty() && runs.back().first + runs.back().count == i)
            ++runs.back().count;
        else
            runs.push_back({i - 1, 2});
    }
}

}  // namespace

std::vector<DupeRun> OrderByCriteria(FoundFiles& files, const DupeCriteria& criteria,
                                     const DupeCheck& check) {
    const Keys keys(files, criteria, check);
    std::vector<SortItem> items;
    items.reserve(files.Count());
    for (std::uint32_t i = 0; i < files.Count(); ++i) items.push_back({keys.HeadOf(i), i});
    std::uint32_t steps = 0;
    std::sort(items.begin(), items.end(), [&](const SortItem& a, const SortItem& b) {
        if (++steps % kStepsBetweenChecks == 0) check();
        if (const int order = keys.Compare(a, b); order != 0) return order < 0;
        return files.ComesBefore(files[a.index], files[b.index]);
    });
    std::vector<DupeRun> runs;
    FindRuns(
        0, items.size(),
        [&](std::size_t a, std::size_t b) {
            if (++steps % kStepsBetweenChecks == 0) check();
            return keys.AreEqual(items[a], items[b]);
        },
        runs);
    std::vector<std::uint32_t> order;
    order.reserve(items.size());
    for (const SortItem& item : items) order.push_back(item.index);
    files.Arrange(order);
    return runs;
}

std::vector<DupeRun> DivideByContents(FoundFiles& files, const std::vector<DupeRun>& runs,
                                      const DupeCheck& check) {
    std::vector<std::uint32_t> order(files.Count());
    for (std::uint32_t i = 0; i < order.size(); ++i) order[i] = i;
    std::uint32_t steps = 0;
    for (const DupeRun& run : runs) {
        // Contents of one hash and several kinds come in the order of the first file of each kind, whatever
        // their numbers are: those are given as files come to be read.
        const auto begin = order.begin() + static_cast<std::ptrdiff_t>(run.first);
        const auto end = begin + static_cast<std::ptrdiff_t>(run.count);
        std::vector<std::pair<std::uint32_t, std::uint32_t>> firstOf;  // contents, first file of them
        for (auto at = begin; at != end; ++at) firstOf.emplace_back(files[*at].contents, *at);
        std::sort(firstOf.begin(), firstOf.end());
        const auto first = [&](std::uint32_t contents) {
            return std::lower_bound(firstOf.begin(), firstOf.end(), std::pair(contents, 0U))->second;
        };
        std::sort(begin, end, [&](std::uint32_t a, std::uint32_t b) {
            if (++steps % kStepsBetweenChecks == 0) check();
            const DupeFile &left = files[a], &right = files[b];
            if (const int byHash = files.HashOf(left).compare(files.HashOf(right)); byHash != 0)
                return byHash < 0;
            if (left.contents != right.contents) return first(left.contents) < first(right.contents);
            return a < b;
        });
    }
    files.Arrange(order);
    std::vector<DupeRun> divided;
    for (const DupeRun& run : runs) {
        if (++steps % kStepsBetweenChecks == 0) check();
        FindRuns(
            run.first, run.first + run.count,
            [&](std::size_t a, std::size_t b) {
                return files[a].contents != 0 && files[a].contents == files[b].contents;
            },
            divided);
    }
    return divided;
}

}  // namespace vantrel
