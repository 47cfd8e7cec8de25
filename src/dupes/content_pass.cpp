#include "dupes/content_pass.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace vantrel {

namespace {

// What one job looks at: so many files, or so many bytes, and at least one set.
constexpr std::size_t kFilesOfJob = 128;
constexpr std::uint64_t kBytesOfJob = std::uint64_t{8} << 20;
// A job may hold three times its share of these: a process has 1,024 descriptors.
constexpr std::size_t kOpen = 256;
// Before this time no speed is told, in milliseconds.
constexpr std::uint32_t kLeastForSpeed = 1'000;

}  // namespace

void ContentPass::FindSets(const FoundFiles& files, const std::vector<DupeRun>& runs) {
    for (const DupeRun& run : runs) {
        const std::size_t begin = numbers_.size();
        for (std::size_t i = run.first; i < run.first + run.count; ++i)
            if (files[i].size != DupeFile::kUnknownSize) numbers_.push_back(static_cast<std::uint32_t>(i));
        std::stable_sort(numbers_.begin() + static_cast<std::ptrdiff_t>(begin), numbers_.end(),
                         [&](std::uint32_t a, std::uint32_t b) { return files[a].size < files[b].size; });
        for (std::size_t i = begin; i < numbers_.size();) {
            std::size_t end = i + 1;
            while (end < numbers_.size() && files[numbers_[end]].size == files[numbers_[i]].size) ++end;
            if (end - i > 1) {
                sets_.push_back({i, end - i});
                bytesTotal_ += files[numbers_[i]].seen.size * (end - i);
            }
            i = end;
        }
        parts_.check();
    }
}

void ContentPass::Look(FoundFiles& files, const std::vector<DupeRun>& runs, const ContentHashMaker& hash) {
    terms_.hash = hash;
    terms_.openAtOnce =
        std::clamp<std::size_t>(kOpen / std::max<std::size_t>(parts_.workers.Most(), 1), 4, 64);
    if (parts_.rotates) terms_.turn = std::make_shared<std::mutex>();
    maximum_ = static_cast<std::int64_t>(files.Count());
    started_ = parts_.clock.GetTickCount();
    FindSets(files, runs);
    for (const DupeRun& set : sets_) {
        Ask(files, set);
        if (filesInIt_ < kFilesOfJob && bytesInIt_ < kBytesOfJob) continue;
        while (!jobs_.HasRoom()) TakeNext(files);
        Send(numbers_[set.first + set.count - 1] + 1);
    }
    if (!filling_.empty()) Send(files.Count());
    while (!jobs_.IsEmpty()) TakeNext(files);
}

void ContentPass::Ask(FoundFiles& files, const DupeRun& set) {
    const auto begin = numbers_.begin() + static_cast<std::ptrdiff_t>(set.first);
    HashCache::Question question;
    const bool mustRead =
        parts_.cache.MustRead(files, {begin, begin + static_cast<std::ptrdiff_t>(set.count)}, question);
    const std::uint64_t size = files[*begin].seen.size;
    const std::size_t asked = mustRead ? question.files.size() : 0;
    bytesKnown_ += size * (set.count - asked);
    if (!mustRead) return;
    filesInIt_ += asked;
    bytesInIt_ += size * asked;
    filling_.push_back(std::move(question));
}

void ContentPass::Send(std::size_t reached) {
    auto questions = std::make_shared<Questions>(std::exchange(filling_, {}));
    auto sets = std::make_shared<std::vector<ContentSet>>();
    for (HashCache::Question& question : *questions) sets->push_back(std::move(question.files));
    jobs_.Add([&files = parts_.files, sets, terms = terms_](const StopFlag& stop) {
        return FindEqualContents(files, *sets, terms, stop);
    });
    sent_.push_back({std::move(questions), reached});
    filesInIt_ = 0;
    bytesInIt_ = 0;
    Tell();
    parts_.check();
}

void ContentPass::TakeNext(FoundFiles& files) {
    const std::vector<ContentClasses> answers = jobs_.TakeNext([this] {
        Tell();
        parts_.check();
    });
    const Sent sent = std::move(sent_.front());
    sent_.pop_front();
    for (std::size_t i = 0; i < answers.size(); ++i)
        parts_.cache.Learn(files, (*sent.questions)[i], answers[i]);
    reached_ = static_cast<std::int64_t>(sent.reached);
    Tell();
    parts_.check();
}

void ContentPass::Tell() {
    DupeFigures figures;
    figures.files = static_cast<std::uint64_t>(maximum_);
    figures.bytesTotal = bytesTotal_;
    figures.bytesDone =
        std::min(bytesKnown_ + terms_.bytesDone->load(std::memory_order_relaxed), bytesTotal_);
    const std::uint32_t elapsed = parts_.clock.GetTickCount() - started_;
    const std::uint64_t read = figures.bytesDone - std::min(bytesKnown_, figures.bytesDone);
    if (elapsed >= kLeastForSpeed && read > 0) {
        const double left = static_cast<double>(bytesTotal_ - figures.bytesDone);
        figures.secondsLeft = std::llround(left / static_cast<double>(read) * elapsed / 1'000.0);
    }
    parts_.progress.SetFigures(figures);
    parts_.progress.SetBar(reached_, maximum_);
}

}  // namespace vantrel
