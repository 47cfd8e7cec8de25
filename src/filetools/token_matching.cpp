#include "filetools/token_matching.h"

#include <algorithm>
#include <utility>

#include "filetools/token_box.h"

namespace vantrel {

namespace {

// Steps that are always tried, and how a step compares with a word of a table.
constexpr double kLeastSteps = 65'536;
constexpr double kWordsForStep = 4;
constexpr double kWordsForPair = 12;
// The most steps to find out whether two texts are nearly the same.
constexpr double kMostNearSteps = 16'000'000;
// A table of so many words is made whatever was spent before.
constexpr double kLeastWindow = 1 << 20;
// Anchors are taken where there is one for so many tokens of the shorter stretch. A run of so many around one
// belongs to a shortest script as good as always.
constexpr std::size_t kTokensForAnchor = 512;
constexpr std::size_t kSureRun = 12;

class Matcher {
  public:
    Matcher(const PerSide<Tokens>& tokens, const MatchLimits& limits, const CancelCheck& check)
        : tokens_(tokens),
          limits_(limits),
          wordsLeft_(static_cast<double>(limits.allTableWords)),
          pace_(check, 4'000'000) {
        for (const Side side : kBothSides) marks_[side].resize(tokens[side].size());
    }

    PerSide<std::vector<std::uint8_t>> Run() {
        work_.push_back({Whole()});
        Finish();
        return std::move(marks_);
    }

    // The same where few tokens differ; otherwise nothing, after little work.
    std::optional<PerSide<std::vector<std::uint8_t>>> RunIfNear() {
        TokenBox box = Whole();
        Trim(box);
        const auto tokens = static_cast<double>(box.Size(Side::Left) + box.Size(Side::Right));
        if (box.IsEmpty(Side::Left) || box.IsEmpty(Side::Right))
            MarkAll(box);
        else if (!FindPath(box, std::min(std::clamp(tokens / 4, kLeastSteps / 16, kMostNearSteps),
                                         static_cast<double>(limits_.pathSteps))))
            return std::nullopt;
        Finish();
        return std::move(marks_);
    }

  private:
    TokenBox Whole() const { return {{{0, 0}}, {{tokens_[Side::Left].size(), tokens_[Side::Right].size()}}}; }

    void Finish() {
        while (!work_.empty()) {
            Work next = work_.back();
            work_.pop_back();
            Trim(next.box);
            if (next.box.IsEmpty(Side::Left) || next.box.IsEmpty(Side::Right))
                MarkAll(next.box);
            else if (next.isRest || !FindPath(next.box, StepsFor(next.box)))
                DivideHard(next.box, next.isRest);
        }
    }

    void Trim(TokenBox& box) const {
        const Tokens left = tokens_[Side::Left];
        const Tokens right = tokens_[Side::Right];
        auto& [begin, end] = box;
        while (!box.IsEmpty(Side::Left) && !box.IsEmpty(Side::Right) &&
               left[begin[Side::Left]] == right[begin[Side::Right]])
            for (const Side side : kBothSides) ++begin[side];
        while (!box.IsEmpty(Side::Left) && !box.IsEmpty(Side::Right) &&
               left[end[Side::Left] - 1] == right[end[Side::Right] - 1])
            for (const Side side : kBothSides) --end[side];
    }

    void MarkAll(const TokenBox& box) {
        for (const Side side : kBothSides)
            std::fill_n(marks_[side].begin() + static_cast<std::ptrdiff_t>(box.begin[side]), box.Size(side),
                        std::uint8_t{1});
    }

    void Push(const TokenBox& box, const PerSide<std::size_t>& point, bool restIsHard) {
        PerSide<std::size_t> middle;
        for (const Side side : kBothSides) middle[side] = box.begin[side] + point[side];
        work_.push_back({{box.begin, middle}});
        work_.push_back({{middle, box.end}, restIsHard});
    }

    // What lies between the pairs is marked.
    void TakePairs(const TokenBox& box, const std::vector<TokenPair>& pairs) {
        MarkAll(box);
        for (const TokenPair& pair : pairs)
            for (const Side side : kBothSides) marks_[side][box.begin[side] + pair[side]] = 0;
    }

    // As many as another way would cost. Where that is too dear, few at first.
    double StepsFor(const TokenBox& box) const {
        const double words = box.Words();
        const auto most = static_cast<double>(limits_.pathSteps);
        return std::min(std::max(words / kWordsForStep, kLeastSteps),
                        words <= static_cast<double>(limits_.tableWords) ? most : most / 8);
    }

    bool FindPath(const TokenBox& box, double steps) {
        PerSide<std::size_t> point;
        if (!FindPathPoint(box.Of(tokens_, Side::Left), box.Of(tokens_, Side::Right),
                           static_cast<std::int64_t>(steps), pace_, point))
            return false;
        Push(box, point, false);
        return true;
    }

    // The two sides of the box have little in common, or much that is the same.
    void DivideHard(const TokenBox& box, bool pathWasTried) {
        const Tokens left = box.Of(tokens_, Side::Left);
        const Tokens right = box.Of(tokens_, Side::Right);
        const double words = box.Words();
        const Occurrences onRight(right);
        const double pairs = CountPairs(left, onRight);
        if (pairs <= static_cast<double>(limits_.chainPairs) &&
            pairs * kWordsForPair <= std::max(words, kLeastSteps))
            return TakePairs(box, PairsByChain(left, onRight, pace_));
        const double affordable =
            std::max(std::min(static_cast<double>(limits_.tableWords), wordsLeft_), kLeastWindow);
        if (words <= affordable) {
            wordsLeft_ -= words;
            return TakePairs(box, PairsByTable(left, right, pace_));
        }
        const std::vector<TokenPair> unique = UniquePairsByChain(left, right, onRight, pace_);
        if (CutAtAnchors(box, unique, kSureRun)) return;
        if (!pathWasTried && FindPath(box, static_cast<double>(limits_.pathSteps))) return;
        if (CutAtAnchors(box, unique, 1)) return;
        const double window = std::max(affordable / 8, kLeastWindow);
        wordsLeft_ -= window;
        Push(box, FindWindow(left, right, static_cast<std::int64_t>(window), pace_), true);
    }

    // Too large for a whole answer: tokens that stand once on each side, in the longest chain of theirs, are
    // taken for fixed points where they stand in a run of at least `run` tokens that match. False where they
    // are few.
    bool CutAtAnchors(const TokenBox& box, const std::vector<TokenPair>& unique, std::size_t run) {
        const auto pointOf = [&box](const TokenPair& pair) {
            PerSide<std::size_t> at;
            for (const Side side : kBothSides) at[side] = box.begin[side] + pair[side];
            return at;
        };
        std::vector<std::uint32_t> points;  // of `unique`
        points.reserve(unique.size());
        for (std::size_t i = 0; i < unique.size(); ++i)
            if (RunAround(box, pointOf(unique[i]), run) >= run)
                points.push_back(static_cast<std::uint32_t>(i));
        if (points.size() <= std::min(box.Size(Side::Left), box.Size(Side::Right)) / kTokensForAnchor)
            return false;
        PerSide<std::size_t> from = box.begin;
        for (const std::uint32_t number : points) {
            const PerSide<std::size_t> point = pointOf(unique[number]);
            TakeOrPush({std::exchange(from, point), point});
        }
        TakeOrPush({from, box.end});
        return true;
    }

    // What has nothing in between, as between most fixed points, never becomes work.
    void TakeOrPush(TokenBox box) {
        Trim(box);
        if (box.IsEmpty(Side::Left) || box.IsEmpty(Side::Right))
            MarkAll(box);
        else
            work_.push_back({box});
    }

    // How many pairs around a pair of equal tokens are equal, up to `enough`.
    std::size_t RunAround(const TokenBox& box, const PerSide<std::size_t>& at, std::size_t enough) const {
        std::size_t before = 0;
        std::size_t behind = 0;
        const auto areEqual = [&](std::size_t left, std::size_t right) {
            return tokens_[Side::Left][left] == tokens_[Side::Right][right];
        };
        while (before < enough && before < at[Side::Left] - box.begin[Side::Left] &&
               before < at[Side::Right] - box.begin[Side::Right] &&
               areEqual(at[Side::Left] - before - 1, at[Side::Right] - before - 1))
            ++before;
        while (before + behind < enough && behind < box.end[Side::Left] - at[Side::Left] &&
               behind < box.end[Side::Right] - at[Side::Right] &&
               areEqual(at[Side::Left] + behind, at[Side::Right] + behind))
            ++behind;
        return before + behind;
    }

    const PerSide<Tokens>& tokens_;
    const MatchLimits& limits_;
    double wordsLeft_;
    PacedCheck pace_;
    PerSide<std::vector<std::uint8_t>> marks_;
    struct Work {
        TokenBox box;
        bool isRest = false;  // of a box that was too large: the search for a path was tried in vain
    };
    std::vector<Work> work_;
};

}  // namespace

PerSide<std::vector<std::uint8_t>> MatchTokens(const PerSide<Tokens>& tokens, const MatchLimits& limits,
                                               const CancelCheck& check) {
    return Matcher(tokens, limits, check).Run();
}

std::optional<PerSide<std::vector<std::uint8_t>>> MatchTokensIfNear(const PerSide<Tokens>& tokens,
                                                                    const MatchLimits& limits,
                                                                    const CancelCheck& check) {
    return Matcher(tokens, limits, check).RunIfNear();
}

}  // namespace vantrel
