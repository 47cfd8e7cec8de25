#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "dupes/equal_contents.h"

namespace vantrel {

// Opens the files of several sets, one after the other. Where files come from a disk those to come are opened
// and announced to the system ahead, so that it can fetch many at a time. Of one job.
class AnnouncedFiles {
  public:
    // All must outlive the object.
    AnnouncedFiles(const FileSystem& files, const std::vector<ContentSet>& sets, const ContentTerms& terms);

    // What follows is about this set; the sets in their order.
    void Begin(const ContentSet& set);
    // The file of this number in the set, once, in the order of the numbers. Not open where it cannot be
    // opened, or is not what was seen.
    ReadFile Take(std::uint32_t number);
    // The same for a file that is wanted again.
    ReadFile OpenAgain(std::uint32_t number) const;
    // Closes it, with others.
    void GiveBack(ReadFile file) { closer_.Take(std::move(file)); }
    // Whether the bytes came from a disk is told to the jobs to come.
    void TellPace() const;

  private:
    void Announce(std::size_t from);
    ReadFile Open(const ContentFile& file) const;

    const FileSystem& files_;
    const ContentTerms& terms_;
    std::vector<const ContentFile*> all_;
    std::size_t begin_ = 0, next_ = 0;  // of the set, and of the one behind it, in `all_`
    std::size_t announcedFrom_ = 0;
    std::vector<ReadFile> announced_;
    FileCloser closer_;
    std::uint64_t fromDisk_;   // by this thread before
    std::uint64_t bytes_ = 0;  // that the first look at each file wants
};

}  // namespace vantrel
