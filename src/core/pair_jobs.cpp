#include "core/pair_jobs.h"

#include <algorithm>
#include <new>
#include <numeric>
#include <utility>

#include "core/content_comparator.h"
#include "platform/files/small_files.h"

namespace vantrel {

namespace {

PairBuffers& BuffersOfThisThread() {
    static thread_local PairBuffers buffers;
    return buffers;
}

// The sizes that can be compared here; the rest has rules of its own.
bool IsReadable(std::uint64_t size, SizeRule rule) {
    return SizeByRule(size, rule) == Currency::FromWhole(static_cast<std::int64_t>(size));
}

// A pair between its opening and its verdict.
struct OpenPair {
    PerSide<UnstatedFile> unstated;
    PerSide<ReadFile> files;  // where a link is followed
    bool isOpen = false;
};

class RunReader {
  public:
    RunReader(const PairRun& run, const ReadingTerms& terms, const StopFlag& stop)
        : run_(run),
          terms_(terms),
          stop_(stop),
          verdicts_(run.Count()),
          open_(run.Count()),
          closer_(terms.announced * kBothSides.size()) {}

    // `inTurn` where the disk is this job's for now.
    std::vector<PairVerdict> Read(bool waits, bool inTurn) {
        if (!waits) CompareSmall();
        std::vector<std::size_t> order(run_.Count());
        std::iota(order.begin(), order.end(), std::size_t{0});
        if (inTurn) {
            std::sort(order.begin(), order.end(), [this](std::size_t a, std::size_t b) {
                return run_[a][Side::Left].inode < run_[b][Side::Left].inode;
            });
        }
        const std::size_t announced = inTurn ? order.size() : waits ? terms_.announced : 1;
        std::size_t opened = 0;
        for (std::size_t at = 0; at < order.size() && !stop_.IsRequested(); ++at) {
            for (; opened < std::min(at + announced, order.size()); ++opened) {
                if (verdicts_[order[opened]].kind != PairVerdict::Kind::LookCloser) continue;
                Open(order[opened]);
                if (waits) Announce(order[opened]);
            }
            CompareOpen(order[at]);
        }
        return std::move(verdicts_);
    }

  private:
    // And closes it. Nothing happens where it could not be opened.
    void CompareOpen(std::size_t i) {
        OpenPair& open = open_[i];
        if (std::exchange(open.isOpen, false)) Compare(i);
        for (const Side side : kBothSides) {
            closer_.Take(std::move(open.unstated[side]));
            closer_.Take(std::move(open.files[side]));
        }
    }

    // Most pairs are small and alike: for these nothing need be known but their bytes. The rest is looked at
    // pair by pair, and so are all that follow once that is too many.
    void CompareSmall() {
        for (const Side side : kBothSides)
            if (!SmallFiles::Suits(run_.Folder(side))) return;
        std::size_t i = 0;
        if (std::ranges::any_of(kBothSides,
                                [&](Side side) { return SmallFiles::AsksForMore(run_.Folder(side)); })) {
            Open(i);
            CompareOpen(i++);
        }
        SmallFiles files;
        std::vector<std::size_t> pairs;
        std::size_t others = 0;
        while (i < run_.Count() && others * 4 <= pairs.size() && !stop_.IsRequested()) {
            files.Clear();
            pairs.clear();
            for (; i < run_.Count() && files.Count() < SmallFiles::kMost; ++i) {
                const PairToRead pair = run_[i];
                if (IsFollowed(pair) || IsTooLarge(pair)) continue;
                pairs.push_back(i);
                for (const Side side : kBothSides) files.Add(run_.Folder(side), pair[side].name);
            }
            if (!files.Read()) return;
            others = 0;
            for (std::size_t k = 0; k < pairs.size(); ++k)
                if (!TakeIfAlike(pairs[k], files[2 * k], files[2 * k + 1])) ++others;
        }
    }
    static bool IsTooLarge(const PairToRead& pair) {
        const std::optional<Currency>& listed = pair[Side::Left].listed;
        return listed && *listed >= Currency::FromWhole(std::int64_t{SmallFiles::kBytes});
    }
    bool TakeIfAlike(std::size_t i, std::optional<std::string_view> left,
                     std::optional<std::string_view> right) {
        if (!left || left != right || !AreAsListed(run_[i], left->size(), left->size())) return false;
        verdicts_[i].kind = PairVerdict::Kind::Alike;
        verdicts_[i].size = verdicts_[i].readTo = left->size();
        return true;
    }

    void Open(std::size_t i) {
        const PairToRead pair = run_[i];
        OpenPair& open = open_[i];
        open.isOpen = true;
        for (const Side side : kBothSides) {
            const FileToRead& file = pair[side];
            const Error error = IsFollowed(pair)
                                    ? run_.Folder(side).OpenScannedFile(file.name, open.files[side])
                                    : run_.Folder(side).OpenUnstatedFile(file.name, open.unstated[side]);
            open.isOpen = open.isOpen && error.IsOk();
        }
    }
    static bool IsFollowed(const PairToRead& pair) {
        return pair[Side::Left].isLink || pair[Side::Right].isLink;
    }

    void Announce(std::size_t i) {
        for (const Side side : kBothSides) {
            open_[i].unstated[side].Prefetch(ContentComparator::kPrefetchedBytes);
            open_[i].files[side].Prefetch(ContentComparator::kPrefetchedBytes);
        }
    }

    void Compare(std::size_t i) {
        const PairToRead pair = run_[i];
        PairVerdict& verdict = verdicts_[i];
        if (!IsFollowed(pair)) {
            if (ReadWholeAndAlike(open_[i].unstated, BuffersOfThisThread(), verdict.size) &&
                AreAsListed(pair, verdict.size, verdict.size)) {
                verdict.kind = PairVerdict::Kind::Alike;
                verdict.readTo = verdict.size;
                return;
            }
            for (const Side side : kBothSides)
                if (!std::move(open_[i].unstated[side]).Stat(open_[i].files[side]).IsOk()) return;
        }
        JudgeFiles(pair, open_[i].files, verdict);
    }

    bool AreAsListed(const PairToRead& pair, std::uint64_t left, std::uint64_t right) const {
        const auto isAsListed = [this](const FileToRead& file, std::uint64_t size) {
            return !file.listed || *file.listed == SizeByRule(size, terms_.sizes);
        };
        return isAsListed(pair[Side::Left], left) && isAsListed(pair[Side::Right], right);
    }

    void JudgeFiles(const PairToRead& pair, PerSide<ReadFile>& files, PairVerdict& verdict) {
        const std::uint64_t left = files[Side::Left].Size(), right = files[Side::Right].Size();
        if (!AreAsListed(pair, left, right) || !IsReadable(left, terms_.sizes) ||
            !IsReadable(right, terms_.sizes))
            return;
        verdict.hasSeen = true;
        for (const Side side : kBothSides) verdict.seen[side] = files[side].Seen();
        verdict.size = left;
        if (left != right) {
            verdict.kind = PairVerdict::Kind::SizesDiffer;
        } else if (left > ReadingTerms::kLarge) {
            verdict.kind = PairVerdict::Kind::Large;
        } else {
            CompareBytes(files, {0, left}, terms_, stop_, verdict);
        }
    }

  public:
    static void CompareBytes(PerSide<ReadFile>& files, PairReader::Range range, const ReadingTerms& terms,
                             const StopFlag& stop, PairVerdict& verdict) {
        PairReader reader(BuffersOfThisThread(), terms.rule, verdict.size);
        const PairReader::Answer answer = reader.Compare(
            files, range, [&] { return !stop.IsRequested(); },
            [&](std::uint64_t blockEnd) { verdict.readTo = blockEnd; });
        verdict.kind = answer == PairReader::Answer::Alike    ? PairVerdict::Kind::Alike
                       : answer == PairReader::Answer::Differ ? PairVerdict::Kind::Differ
                                                              : PairVerdict::Kind::LookCloser;
    }

  private:
    const PairRun& run_;
    const ReadingTerms& terms_;
    const StopFlag& stop_;
    std::vector<PairVerdict> verdicts_;
    std::vector<OpenPair> open_;
    FileCloser closer_;
};

}  // namespace

void PairRun::Add(const PairToRead& pair) {
    PerSide<Kept>& kept = pairs_.emplace_back();
    for (const Side side : kBothSides) {
        kept[side] = {static_cast<std::uint32_t>(names_.size()),
                      static_cast<std::uint32_t>(pair[side].name.size()), pair[side]};
        names_.append(pair[side].name);
    }
}

PairToRead PairRun::operator[](std::size_t position) const {
    PairToRead pair;
    for (const Side side : kBothSides) {
        const Kept& kept = pairs_[position][side];
        pair[side] = kept.rest;
        pair[side].name = std::string_view(names_).substr(kept.at, kept.size);
    }
    return pair;
}

std::vector<PairVerdict> ReadPairs(const PairRun& run, const ReadingTerms& terms, const StopFlag& stop) {
    const bool waits = terms.waits->load(std::memory_order_relaxed);
    const bool inTurn = waits && terms.turn;
    const auto turn = inTurn ? std::unique_lock(*terms.turn) : std::unique_lock<std::mutex>();
    try {
        return RunReader(run, terms, stop).Read(waits, inTurn);
    } catch (const ErrorException&) {
        // No SHA-1, for one.
    } catch (const std::bad_alloc&) {
        // The one thread will say so where it comes to it.
    }
    return std::vector<PairVerdict>(run.Count());
}

PairVerdict ReadStretch(const Stretch& stretch, const ReadingTerms& terms, const StopFlag& stop) {
    const bool waits = terms.waits->load(std::memory_order_relaxed);
    const auto turn = waits && terms.turn ? std::unique_lock(*terms.turn) : std::unique_lock<std::mutex>();
    PairVerdict verdict;
    verdict.size = stretch.seen[Side::Left].size;
    PerSide<ReadFile> files;
    for (const Side side : kBothSides) {
        const FileToRead file = (*stretch.pair)[0][side];
        if (!stretch.pair->Folder(side).OpenScannedFile(file.name, files[side]).IsOk() ||
            files[side].Seen() != stretch.seen[side])
            return verdict;
        if (waits) files[side].Prefetch(stretch.range.to - stretch.range.from, stretch.range.from);
    }
    try {
        RunReader::CompareBytes(files, stretch.range, terms, stop, verdict);
    } catch (const ErrorException&) {
        verdict.kind = PairVerdict::Kind::LookCloser;
    } catch (const std::bad_alloc&) {
        verdict.kind = PairVerdict::Kind::LookCloser;
    }
    return verdict;
}

std::uint64_t StretchLength(const ReadingRule& rule) {
    const std::uint64_t step = rule.method == CompareMethod::Contents ? rule.unit : rule.chunk;
    return std::max<std::uint64_t>(ReadingTerms::kStretch / step, 1) * step;
}

}  // namespace vantrel
