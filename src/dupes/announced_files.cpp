#include "dupes/announced_files.h"

#include <algorithm>
#include <utility>

#include "platform/files/disk_reads.h"

namespace vantrel {

namespace {

// What is read of a file at first is fetched ahead; the system goes on by itself.
constexpr std::uint64_t kFetched = std::uint64_t{256} << 10;
constexpr std::uint64_t kFetchedAtEnd = std::uint64_t{16} << 10;

}  // namespace

AnnouncedFiles::AnnouncedFiles(const FileSystem& files, const std::vector<ContentSet>& sets,
                               const ContentTerms& terms)
    : files_(files), terms_(terms), closer_(terms.openAtOnce), fromDisk_(BytesReadFromDisk()) {
    for (const ContentSet& set : sets)
        for (const ContentFile& file : set) all_.push_back(&file);
}

void AnnouncedFiles::Begin(const ContentSet& set) {
    begin_ = next_;
    next_ += set.size();
}

ReadFile AnnouncedFiles::Take(std::uint32_t number) {
    const std::size_t at = begin_ + number;
    bytes_ += std::min(all_[at]->seen.size, kFetched);
    if (!terms_.waits->load(std::memory_order_relaxed)) return Open(*all_[at]);
    if (at < announcedFrom_ || at >= announcedFrom_ + announced_.size()) Announce(at);
    ReadFile file = std::move(announced_[at - announcedFrom_]);
    return file.Seen() == all_[at]->seen ? std::move(file) : ReadFile();
}

void AnnouncedFiles::Announce(std::size_t from) {
    announced_.clear();
    announcedFrom_ = from;
    announced_.resize(std::min(terms_.openAtOnce, all_.size() - from));
    std::vector<std::size_t> order(announced_.size());
    for (std::size_t i = 0; i < order.size(); ++i) order[i] = i;
    if (terms_.turn) {
        std::sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) {
            return all_[from + a]->seen.id.inode < all_[from + b]->seen.id.inode;
        });
    }
    for (const std::size_t i : order) {
        const ContentFile& file = *all_[from + i];
        announced_[i] = Open(file);
        if (!announced_[i].IsOpen()) continue;
        announced_[i].Prefetch(std::min(file.seen.size, kFetched));
        if (file.seen.size > kFetched) announced_[i].Prefetch(kFetchedAtEnd, file.seen.size - kFetchedAtEnd);
    }
}

ReadFile AnnouncedFiles::OpenAgain(std::uint32_t number) const {
    return Open(*all_[begin_ + number]);
}

ReadFile AnnouncedFiles::Open(const ContentFile& file) const {
    ReadFile open;
    if (!files_.OpenScannedFile(file.path, open).IsOk() || open.Seen() != file.seen) return {};
    return open;
}

void AnnouncedFiles::TellPace() const {
    if (bytes_ > 0)
        terms_.waits->store((BytesReadFromDisk() - fromDisk_) * 8 > bytes_, std::memory_order_relaxed);
}

}  // namespace vantrel
