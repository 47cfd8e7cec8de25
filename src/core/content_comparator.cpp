#include "core/content_comparator.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <limits>
#include <new>
#include <optional>

#include "core/cfile.h"
#include "core/mod_date_time.h"
#include "core/side.h"
#include "platform/hashes.h"
#include "platform/names/names.h"
#include "platform/names/paths.h"

namespace vantrel {

namespace {

// A file that is not what the scan saw: unlike other errors this leaves nothing for size and date to say.
struct FileChanged {
    Error error;
};

[[noreturn]] void ThrowChanged(const char* how) {
    throw FileChanged{Error(ErrorNumber::DeviceIo, how)};
}

[[noreturn]] void ThrowOverflow() {
    throw ErrorException(Error(ErrorNumber::Overflow, "Overflow"));
}

constexpr std::uint64_t kPage = 4'096;

int RoundedPercentage(std::uint64_t part, std::uint64_t whole) {
    const std::uint64_t percentage = part * 100 / whole;
    const std::uint64_t twiceRest = part * 100 % whole * 2;
    const bool up = twiceRest > whole || (twiceRest == whole && percentage % 2 == 1);
    return static_cast<int>(percentage + (up ? 1 : 0));
}

// What to show when a piece that ends at `pieceEnd` is read of a file of `size` bytes: from 0 to 100, or -1
// for nothing. It tells the end of the last whole chunk that the piece has a part in, the file's own end left
// out.
int PercentageAt(std::uint64_t pieceEnd, std::uint64_t size, std::uint64_t chunk, bool showsLastPiece) {
    std::uint64_t end = (pieceEnd - 1) / chunk * chunk + chunk;
    if (end >= size) end -= chunk;
    const bool inTail = pieceEnd == size && size % chunk != 0;
    if (inTail && showsLastPiece) end = size;
    return end == 0 ? -1 : RoundedPercentage(end, size);
}

// Whether it is the name that the number 52 speaks of: by the name on disk, where a backslash can stand too.
bool HoldsInvalidCharacter(std::string_view path) {
    return NameToSystem(GetLastItemInPath(path)).find_first_of("\\/:*?<>|") != std::string::npos;
}

constexpr std::string_view kJudgedBySizeAndDate = "Size and date/time were compared instead of contents.";

}  // namespace

struct ContentComparator::Pair {
    PerSide<std::string> paths;
    PerSide<ReadFile> files;
};

// What is kept from pair to pair.
class ContentComparator::Buffers {
  public:
    // `size` bytes for each side, aligned for the copy out of the kernel's pages.
    void Provide(std::size_t size) {
        if (size <= size_) return;
        size_ = 0;
        for (const Side side : kBothSides) {
            bytes_[side].reset(static_cast<char*>(::operator new(size, kAlignment)));
        }
        size_ = size;
    }
    char* operator[](Side side) { return bytes_[side].get(); }

    Crc32& Crc(Side side) { return crc_[side]; }
    Sha1& Sha(Side side) {
        if (!sha_[side]) sha_[side].emplace();
        return *sha_[side];
    }

  private:
    static constexpr std::align_val_t kAlignment{4'096};
    struct Release {
        void operator()(char* bytes) const { ::operator delete(bytes, kAlignment); }
    };
    PerSide<std::unique_ptr<char, Release>> bytes_;
    PerSide<Crc32> crc_;
    PerSide<std::optional<Sha1>> sha_;
    std::size_t size_ = 0;
};

// One pair being compared.
class ContentComparator::Run {
  public:
    Run(ContentComparator& owner, Pair& pair, CompareMethod method, std::int64_t size,
        ContentProgress& progress)
        : owner_(owner),
          pair_(pair),
          method_(method),
          size_(size),
          chunk_(static_cast<std::uint64_t>(std::max(owner.compare_.ChunkSize, 1))),
          unit_(std::clamp<std::uint64_t>(chunk_ / kPage * kPage, kLeastReadUnit, kReadUnit)),
          progress_(progress),
          shown_(GetLastItemInPath(pair.paths[Side::Left])) {}

    // True when the files differ, or the user cancelled. Throws ErrorException, FileChanged and bad_alloc.
    bool FilesDiffer();

    std::string NotedFile() const;
    std::string NotedActivity() const;
    const Pair& Files() const { return pair_; }

  private:
    enum class Activity { Opening, Reading, Comparing };

    bool IsCancelled() const;
    bool OpenBoth();
    bool BytesDiffer();
    bool BlockDiffers(std::uint64_t start, std::uint64_t length);
    bool BuffersDiffer(std::uint64_t start, std::uint64_t length);
    template <typename Add, typename Compare>
    bool FingerprintsDiffer(std::uint64_t start, std::uint64_t length, Add add, Compare compare);
    void ShowPercentage(std::uint64_t blockEnd);
    // From 0; the last chunk ends with the file.
    std::uint64_t ChunkStart(std::uint64_t position) const { return position / chunk_ * chunk_; }
    std::uint64_t ChunkEnd(std::uint64_t position) const {
        return std::min(ChunkStart(position) + chunk_, static_cast<std::uint64_t>(size_));
    }
    void Note(Activity activity, Side side, std::uint64_t position = 0) {
        activity_ = activity;
        notedSide_ = side;
        notedPosition_ = position;
    }

    ContentComparator& owner_;
    Pair& pair_;
    CompareMethod method_;
    std::int64_t size_;
    std::uint64_t chunk_;
    std::uint64_t unit_;  // what is read at a time: whole pages, whatever the chunk
    ContentProgress& progress_;
    std::string shown_;
    int percentage_ = -1;
    Activity activity_ = Activity::Opening;
    Side notedSide_ = Side::Left;
    std::uint64_t notedPosition_ = 0;
};

std::string ContentComparator::Run::NotedFile() const {
    return activity_ == Activity::Comparing ? shown_ : pair_.paths[notedSide_];
}

std::string ContentComparator::Run::NotedActivity() const {
    if (activity_ == Activity::Opening) return "Opening the file";
    std::string text = activity_ == Activity::Reading ? "Reading bytes " : "Comparing bytes ";
    text += std::to_string(ChunkStart(notedPosition_) + 1);
    return text.append(" to ").append(std::to_string(ChunkEnd(notedPosition_)));
}

bool ContentComparator::Run::IsCancelled() const {
    owner_.tools_.loop.Yield();
    if (owner_.tools_.loop.CancelRequested()) owner_.compare_.CompareCancelled = true;
    return owner_.compare_.CompareCancelled;
}

bool ContentComparator::Run::OpenBoth() {
    for (const Side side : kBothSides) {
        Note(Activity::Opening, side);
        ReadFile& file = pair_.files[side];
        if (!file.IsOpen()) ThrowIfFailed(owner_.tools_.files.OpenScannedFile(pair_.paths[side], file));
        if (IsCancelled()) return false;
    }
    for (const Side side : kBothSides) {
        Note(Activity::Opening, side);
        if (SizeByRule(pair_.files[side].Size(), owner_.compare_.Sizes) != Currency::FromWhole(size_)) {
            ThrowChanged("The size of the file has changed since it was listed.");
        }
    }
    return true;
}

bool ContentComparator::Run::FilesDiffer() {
    if (IsCancelled() || !OpenBoth()) return true;
    const std::uint64_t bytes = pair_.files[Side::Left].Size();
    if (bytes != pair_.files[Side::Right].Size()) return true;
    if (bytes == 0) return false;
    if (owner_.compare_.Sizes == SizeRule::True)
        size_ = static_cast<std::int64_t>(bytes);
    else if (size_ < 0 || size_ > std::numeric_limits<std::int32_t>::max())
        ThrowOverflow();

    owner_.buffers_->Provide(std::min<std::uint64_t>(unit_, static_cast<std::uint64_t>(size_)));
    if (BytesDiffer()) return true;
    if (bytes != static_cast<std::uint64_t>(size_)) ThrowOverflow();
    return false;
}

bool ContentComparator::Run::BytesDiffer() {
    // What an earlier pair left half done.
    for (const Side side : kBothSides) {
        if (method_ == CompareMethod::Crc32) owner_.buffers_->Crc(side).Restart();
        if (method_ == CompareMethod::Sha1) owner_.buffers_->Sha(side).Restart();
    }
    const auto size = static_cast<std::uint64_t>(size_);
    for (std::uint64_t start = 0; start < size;) {
        const std::uint64_t length = std::min(unit_, size - start);
        ShowPercentage(start + length);
        if (IsCancelled() || BlockDiffers(start, length)) return true;
        start += length;
    }
    return false;
}

void ContentComparator::Run::ShowPercentage(std::uint64_t blockEnd) {
    const auto size = static_cast<std::uint64_t>(size_);
    const int percentage = PercentageAt(blockEnd, size, chunk_, progress_.ShowsLastPiece());
    if (percentage < 0 || percentage == percentage_) return;
    percentage_ = percentage;
    progress_.SetPercentage(percentage, shown_);
}

// A block can hold many chunks, and the borders of both need not meet. What an error means is told chunk by
// chunk all the same: those before the error are compared, and only when they are alike the error counts.
bool ContentComparator::Run::BlockDiffers(std::uint64_t start, std::uint64_t length) {
    Error failed;
    bool endedEarly = false;
    std::uint64_t usable = length;
    Side failedSide = Side::Left;
    for (const Side side : kBothSides) {
        if (usable == 0) break;
        std::size_t got = 0;
        Error error = pair_.files[side].ReadAt(start, (*owner_.buffers_)[side], usable, got);
        if (!error.IsOk() || got < usable) {
            const std::uint64_t wholeChunks = ChunkStart(start + got);
            usable = wholeChunks > start ? wholeChunks - start : 0;
            failedSide = side;
            endedEarly = error.IsOk();
            failed = std::move(error);
        }
        if (IsCancelled()) return true;
    }
    if (usable != 0) {
        Note(Activity::Comparing, Side::Left, start);
        if (BuffersDiffer(start, usable)) return true;
    }
    if (usable == length) return false;
    Note(Activity::Reading, failedSide, start + usable);
    if (endedEarly) ThrowChanged("The file has become shorter while it was read.");
    throw ErrorException(std::move(failed));
}

bool ContentComparator::Run::BuffersDiffer(std::uint64_t start, std::uint64_t length) {
    Buffers& buffers = *owner_.buffers_;
    switch (method_) {
        case CompareMethod::Crc32:
            return FingerprintsDiffer(
                start, length,
                [&](Side side, const char* bytes, std::size_t size) { buffers.Crc(side).Add(bytes, size); },
                [&] {
                    const bool differ = buffers.Crc(Side::Left).Value() != buffers.Crc(Side::Right).Value();
                    for (const Side side : kBothSides) buffers.Crc(side).Restart();
                    return differ;
                });
        case CompareMethod::Sha1:
            return FingerprintsDiffer(
                start, length,
                [&](Side side, const char* bytes, std::size_t size) { buffers.Sha(side).Add(bytes, size); },
                [&] { return buffers.Sha(Side::Left).Finish() != buffers.Sha(Side::Right).Finish(); });
        default:
            return std::memcmp(buffers[Side::Left], buffers[Side::Right], length) != 0;
    }
}

// Each chunk has a fingerprint of its own, which can be gathered over several blocks.
template <typename Add, typename Compare>
bool ContentComparator::Run::FingerprintsDiffer(std::uint64_t start, std::uint64_t length, Add add,
                                                Compare compare) {
    const std::uint64_t blockEnd = start + length;
    for (std::uint64_t at = start; at < blockEnd;) {
        const std::uint64_t chunkEnd = ChunkEnd(at);
        const std::uint64_t pieceEnd = std::min(chunkEnd, blockEnd);
        for (const Side side : kBothSides) {
            add(side, (*owner_.buffers_)[side] + (at - start), pieceEnd - at);
        }
        if (pieceEnd == chunkEnd && compare()) return true;
        at = pieceEnd;
    }
    return false;
}

ContentComparator::ContentComparator(const Toolbox& tools, CCompare& compare)
    : tools_(tools), compare_(compare), buffers_(std::make_unique<Buffers>()) {
}

ContentComparator::~ContentComparator() = default;

bool ContentComparator::FilesDiffer(std::string_view leftPath, std::string_view rightPath,
                                    CompareMethod method, Currency size, ContentProgress& progress) {
    LookWhetherReadingWaits();
    std::unique_ptr<Pair> pair = TakePrefetched(leftPath, rightPath);
    if (!pair) pair.reset(new Pair{{{std::string(leftPath), std::string(rightPath)}}, {}});
    Run run(*this, *pair, method, size.Whole(), progress);
    try {
        const bool differ = run.FilesDiffer();
        LetGo(std::move(pair->files));
        return differ;
    } catch (const FileChanged& changed) {
        Log(run, changed.error);
        return true;
    } catch (const ErrorException& failed) {
        Log(run, failed.Get());
    } catch (const std::bad_alloc&) {
        Log(run, Error(ErrorNumber::OutOfStringSpace, "Out of memory"));
    }
    tools_.log.AppendNote(kJudgedBySizeAndDate);
    return DifferBySizeAndDate(*pair);
}

bool ContentComparator::AreAlikeAtOnce(PerSide<UnstatedFile>& files, std::string_view shown,
                                       ContentProgress& progress, std::uint64_t& size) {
    LookWhetherReadingWaits();
    buffers_->Provide(kLeastReadUnit);
    PerSide<std::size_t> got;
    for (const Side side : kBothSides)
        if (!files[side].ReadWhole((*buffers_)[side], kLeastReadUnit, got[side])) return false;
    if (got[Side::Left] != got[Side::Right]) return false;
    size = got[Side::Left];
    if (std::memcmp((*buffers_)[Side::Left], (*buffers_)[Side::Right], size) != 0) return false;
    const auto chunk = static_cast<std::uint64_t>(std::max(compare_.ChunkSize, 1));
    const int percentage = PercentageAt(size, size, chunk, progress.ShowsLastPiece());
    if (percentage >= 0) progress.SetPercentage(percentage, shown);
    return true;
}

void ContentComparator::Log(const Run& run, const Error& error) {
    compare_.ErrorsDuringCompare = true;
    std::string file = "File Name: " + DisplayName(run.NotedFile());
    std::string text = "Error: " + error.Description();
    if (error.Number() == ErrorNumber::BadFileNameOrNumber && HoldsInvalidCharacter(run.NotedFile())) {
        file = "File Name: Contains an invalid character \\/:*?<>|";
    } else if (error.Number() == ErrorNumber::OutOfStringSpace) {
        text = "Error: Insufficient memory.  Try cutting your chunk size in half.";
    }
    tools_.log.Append({file, "Process: " + run.NotedActivity(), text});
}

bool ContentComparator::DifferBySizeAndDate(const Pair& pair) const {
    PerSide<FileInfo> infos;
    for (const Side side : kBothSides) {
        const Error failed = tools_.files.Stat(pair.paths[side], LinkPolicy::Follow, infos[side]);
        if (!failed.IsOk() || infos[side].kind != EntryKind::File) return true;
    }
    const FileInfo& left = infos[Side::Left];
    const FileInfo& right = infos[Side::Right];
    return left.size != right.size ||
           AllowedTimeDifference(left.lastWrite, right.lastWrite, compare_) != Currency();
}

bool ContentComparator::Prefetch(std::string_view leftPath, std::string_view rightPath,
                                 PerSide<ReadFile> files) {
    if (!WantsPrefetch()) return false;
    auto pair = std::make_unique<Pair>();
    pair->paths = {{std::string(leftPath), std::string(rightPath)}};
    pair->files = std::move(files);
    if (readingWaits_) {
        for (const Side side : kBothSides) {
            ReadFile& file = pair->files[side];
            if (file.IsOpen()) file.Prefetch(std::min<std::uint64_t>(file.Size(), kPrefetchedBytes));
        }
    }
    prefetched_.push_back(std::move(pair));
    return true;
}

// Where pairs go by quickly their files are in memory, and telling the kernel of them would only cost time. A
// pair in memory takes some 10 microseconds, one that was prefetched and came from a disk five times that.
void ContentComparator::LookWhetherReadingWaits() {
    constexpr std::uint32_t kPairsToBeQuick = 256;
    constexpr std::uint32_t kQuickMilliseconds = 6;
    const std::uint32_t now = tools_.clock.GetTickCount();
    if (pairsSinceVerdict_++ == 0) lastVerdict_ = now;
    const bool waits = now - lastVerdict_ > kQuickMilliseconds;
    if (!waits && pairsSinceVerdict_ <= kPairsToBeQuick) return;
    readingWaits_ = waits;
    pairsSinceVerdict_ = 1;
    lastVerdict_ = now;
}

std::unique_ptr<ContentComparator::Pair> ContentComparator::TakePrefetched(std::string_view leftPath,
                                                                           std::string_view rightPath) {
    const auto wanted = std::ranges::find_if(prefetched_, [&](const std::unique_ptr<Pair>& pair) {
        return pair->paths[Side::Left] == leftPath && pair->paths[Side::Right] == rightPath;
    });
    if (wanted == prefetched_.end()) return nullptr;
    std::unique_ptr<Pair> pair = std::move(*wanted);
    // Those before it were passed over.
    prefetched_.erase(prefetched_.begin(), wanted + 1);
    return pair;
}

}  // namespace vantrel
