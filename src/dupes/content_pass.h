#pragma once

#include <cstdint>
#include <deque>
#include <memory>
#include <vector>

#include "dupes/dupe_grouping.h"
#include "dupes/hash_cache.h"

namespace vantrel {

// Looks at the contents of the files that agree in everything else, by workers.
class ContentPass {
  public:
    struct Parts {
        Clock& clock;
        const FileSystem& files;
        Workers& workers;
        HashCache& cache;
        DupeProgress& progress;
        const DupeCheck& check;  // throws where the user cancelled
        bool rotates;            // a disk that has to move to another place for other files
    };
    // All must outlive the object.
    explicit ContentPass(const Parts& parts)
        : parts_(parts), jobs_(parts.workers, {.jobs = parts.workers.Most() * 2 + 4}) {}

    // Once. Sets `contents` and `hash` of all files of the runs that may be equal to another of their run.
    // The bar goes up to the number of files.
    void Look(FoundFiles& files, const std::vector<DupeRun>& runs, const ContentHashMaker& hash);

  private:
    using Questions = std::vector<HashCache::Question>;
    struct Sent {
        std::shared_ptr<const Questions> questions;
        std::size_t reached;  // files in front of the place that the search has come to
    };
    void FindSets(const FoundFiles& files, const std::vector<DupeRun>& runs);
    void Ask(FoundFiles& files, const DupeRun& set);
    void Send(std::size_t reached);
    void TakeNext(FoundFiles& files);
    void Tell();

    Parts parts_;
    ContentTerms terms_;
    // Of each run the files of equal size, of two and more.
    std::vector<std::uint32_t> numbers_;
    std::vector<DupeRun> sets_;  // of `numbers_`
    JobQueue<std::vector<ContentClasses>> jobs_;
    std::deque<Sent> sent_;
    Questions filling_;
    std::size_t filesInIt_ = 0;
    std::uint64_t bytesInIt_ = 0;
    std::uint64_t bytesTotal_ = 0, bytesKnown_ = 0;
    std::int64_t reached_ = 0, maximum_ = 0;
    std::uint32_t started_ = 0;  // tick count
};

}  // namespace vantrel
