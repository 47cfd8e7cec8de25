#pragma once

#include <string>
#include <utility>

#include "core/cfile.h"
#include "core/classification.h"
#include "core/comparison_context.h"
#include "core/content_comparator.h"
#include "core/level_contents.h"

namespace vantrel {

// Decides the types of pairs of files under the options of a run. It belongs to the one thread.
class PairComparison {
  public:
    // `turn` is that of ContentsAhead.
    explicit PairComparison(const ComparisonContext& context, std::shared_ptr<std::mutex> turn = nullptr)
        : context_(context),
          method_(context.compare.CompareMethod),
          comparator_(context.tools, context.compare),
          shownName_(context.progress),
          ahead_(context.workers, ReadingRule(method_, context.compare.ChunkSize), context.compare.Sizes,
                 std::move(turn)) {}

    bool ReadsContents() const { return method_ != CompareMethod::SizeAndDate; }
    bool NeedsContents(const PerSide<ScannedFile>& pair) const {
        return vantrel::NeedsContents(method_, pair[Side::Left].size != pair[Side::Right].size);
    }
    // `pathOf(side)` gives the full path; it is asked only where contents must be read. Throws
    // ComparisonCancelled, since a comparison of contents that was cancelled has no answer.
    template <typename PathOf>
    PairTypes Classify(const PerSide<ScannedFile>& pair, const PathOf& pathOf) {
        const bool contentsDiffer =
            NeedsContents(pair) &&
            ContentsDiffer(pathOf(Side::Left), pathOf(Side::Right), pair[Side::Left].size);
        return ClassifyPair(method_, Difference(pair), pair[Side::Left].size != pair[Side::Right].size,
                            contentsDiffer);
    }

    // The same of a pair whose contents were read already.
    PairTypes ClassifyRead(const PerSide<ScannedFile>& pair, bool contentsDiffer) const {
        return ClassifyPair(method_, Difference(pair), pair[Side::Left].size != pair[Side::Right].size,
                            contentsDiffer);
    }

    // What workers compare ahead, and the taking of a verdict: its percentages are shown as if the pair were
    // read here. `shown` is the name for them. What `whileWaiting` throws comes out.
    ContentsAhead& Ahead() { return ahead_; }
    PairVerdict Take(LevelContents& contents, std::size_t position, std::string_view shown,
                     const LevelContents::WhileWaiting& whileWaiting);

    // Pairs that need contents may be prefetched, in the order in which they will be classified and
    // without leaving one out; while as many as can be are prefetched, nothing more is wanted.
    bool WantsPrefetch() const { return comparator_.WantsPrefetch(); }
    void Prefetch(const std::string& leftPath, const std::string& rightPath, PerSide<ReadFile> files) {
        (void)comparator_.Prefetch(leftPath, rightPath, std::move(files));
    }
    bool ReadingWaits() const { return comparator_.ReadingWaits(); }
    bool AreAlikeAtOnce(PerSide<UnstatedFile>& files, std::string_view shown, std::uint64_t& size) {
        return comparator_.AreAlikeAtOnce(files, shown, shownName_, size);
    }
    // Closes files that turned out not to be needed.
    template <typename File>
    void LetGo(PerSide<File> files) {
        comparator_.LetGo(std::move(files));
    }

  private:
    Currency Difference(const PerSide<ScannedFile>& pair) const;
    bool ContentsDiffer(const std::string& left, const std::string& right, Currency size);

    const ComparisonContext& context_;
    CompareMethod method_;
    ContentComparator comparator_;
    FileNameProgress shownName_;
    ContentsAhead ahead_;
};

}  // namespace vantrel
