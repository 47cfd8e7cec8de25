#pragma once

#include <cstddef>
#include <unordered_map>

namespace vantrel::shell {

struct Place;
struct Shared;

// The names that were given to copied or moved objects, by folder and folded form. It can say of two names
// that they are twins where they are not, and never the reverse.
class GivenNames {
  public:
    void Note(const Place& at);
    // Whether a name that differs from this one in letter case alone was given in the same folder.
    bool HasTwinOf(const Place& at) const;
    void Clear() { exactByFolded_.clear(); }

  private:
    std::unordered_map<std::size_t, std::size_t> exactByFolded_;  // hashes of both
};

// Whether the file system of the folder at `place` takes names that differ in letter case for one: tried with
// a temporary name, once for each folder and request. Below 0: minus errno. It may show another inode for
// each spelling, so that what stands there says nothing.
int TakesTwinsForOne(Shared& shared, const Place& place);

}  // namespace vantrel::shell
