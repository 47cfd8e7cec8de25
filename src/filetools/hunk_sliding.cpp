#include "filetools/hunk_sliding.h"

#include <algorithm>
#include <limits>
#include <string_view>

namespace vantrel {

namespace {

// How far back the best place is looked for, and the steps that all slides may take for each line.
constexpr std::size_t kLongestLook = 100;
constexpr std::size_t kStepsForLine = 64;

// The run of changed lines, perhaps empty, between two unchanged ones. The n-th run of the left side and the
// n-th of the right one stand at the same place.
class Run {
  public:
    explicit Run(std::vector<std::uint8_t>& changed) : changed_(changed) { Extend(); }

    std::size_t begin = 0;
    std::size_t end = 0;
    bool IsEmpty() const { return begin == end; }
    std::size_t Size() const { return end - begin; }

    bool Next() {
        if (end == changed_.size()) return false;
        begin = end = end + 1;
        Extend();
        return true;
    }
    void Previous() {
        end = --begin;
        ExtendBack();
    }
    // One line up: the line in front is marked, and the last one is not. Takes in the run that it meets.
    void Up() {
        changed_[--begin] = 1;
        changed_[--end] = 0;
        ExtendBack();
    }
    void Down() {
        changed_[begin++] = 0;
        changed_[end++] = 1;
        Extend();
    }

  private:
    void Extend() {
        while (end < changed_.size() && changed_[end] != 0) ++end;
    }
    void ExtendBack() {
        while (begin > 0 && changed_[begin - 1] != 0) --begin;
    }

    std::vector<std::uint8_t>& changed_;
};

// How badly a text is cut in front of a line: best behind a blank line and where the indent is small.
int CutCost(const LineTable& table, std::size_t index) {
    constexpr int kBlankBonus = 30;
    constexpr int kMostIndent = 100;
    const auto indentOf = [&](std::size_t line) {
        int indent = 0;
        for (const char letter : table.Line(line)) {
            if (letter != ' ' && letter != '\t')
                return letter == '\n' || letter == '\r' ? -1 : std::min(indent, kMostIndent);
            indent += letter == '\t' ? 8 - indent % 8 : 1;
            if (indent > kMostIndent) return kMostIndent;
        }
        return -1;
    };
    if (index == 0 || index >= table.Count()) return -kBlankBonus;
    const int own = indentOf(index);
    const int before = indentOf(index - 1);
    // A blank line belongs to what stands above it.
    if (own < 0) return kMostIndent;
    return 3 * own - (before < 0 ? kBlankBonus : 0) + (before >= 0 && own > before ? 4 : 0);
}

class Slider {
  public:
    Slider(const LineTable& table, const LineLikeness& likeness, Side side,
           std::vector<std::uint8_t>& changed, std::vector<std::uint8_t>& changedOfOther, PacedCheck& pace)
        : table_(table),
          reader_(likeness, side),
          run_(changed),
          other_(changedOfOther),
          pace_(pace),
          stepsLeft_(kStepsForLine * changed.size() + 1'000'000) {}

    void SlideAll() {
        do {
            if (!run_.IsEmpty()) Slide();
        } while (run_.Next() && other_.Next());
    }

  private:
    bool MayMove() {
        pace_.Count();
        return stepsLeft_ > 0 && stepsLeft_-- > 0;
    }
    bool AreAlike(std::size_t one, std::size_t two) {
        return table_.tokens[one] == table_.tokens[two] &&
               reader_.IsLike(table_.Line(one), reader_, table_.Line(two));
    }
    bool MoveUp() {
        if (run_.begin == 0 || !MayMove() || !AreAlike(run_.begin - 1, run_.end - 1)) return false;
        run_.Up();
        other_.Previous();
        return true;
    }
    bool MoveDown() {
        if (run_.end == table_.Count() || !MayMove() || !AreAlike(run_.begin, run_.end)) return false;
        run_.Down();
        other_.Next();
        return true;
    }

    void Slide() {
        std::size_t size = 0;
        std::size_t least = 0;  // the least end that the run can have
        std::size_t meets = 0;  // an end at which the other side has a change as well; 0 for none
        do {
            size = run_.Size();
            meets = 0;
            while (MoveUp()) {
            }
            least = run_.end;
            if (!other_.IsEmpty()) meets = run_.end;
            while (MoveDown())
                if (!other_.IsEmpty()) meets = run_.end;
        } while (run_.Size() != size);
        if (run_.end == least) return;
        if (meets != 0) {
            while (other_.IsEmpty() && MoveUp()) {
            }
            return;
        }
        const std::size_t best = BestEnd(least);
        while (run_.end > best && MoveUp()) {
        }
    }

    std::size_t BestEnd(std::size_t least) const {
        const std::size_t size = run_.Size();
        const std::size_t from = run_.end - std::min({run_.end - least, kLongestLook, size});
        std::size_t best = run_.end;
        int bestCost = std::numeric_limits<int>::max();
        for (std::size_t end = run_.end + 1; end-- > from;) {
            const int cost = CutCost(table_, end - size) + CutCost(table_, end);
            if (cost >= bestCost) continue;
            bestCost = cost;
            best = end;
        }
        return best;
    }

    const LineTable& table_;
    LineReader reader_;
    Run run_;
    Run other_;
    PacedCheck& pace_;
    std::size_t stepsLeft_;
};

}  // namespace

void SlideHunks(const PerSide<LineTable>& tables, const LineLikeness& likeness,
                PerSide<std::vector<std::uint8_t>>& changed, const CancelCheck& check) {
    PacedCheck pace(check, 500'000);
    for (const Side side : kBothSides)
        Slider(tables[side], likeness, side, changed[side], changed[Other(side)], pace).SlideAll();
}

}  // namespace vantrel
