#include "core/content_comparator.h"

#include <algorithm>
#include <limits>
#include <new>

#include "core/cfile.h"
#include "core/mod_date_time.h"
#include "core/side.h"
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

// One pair being compared.
class ContentComparator::Run {
  public:
    Run(ContentComparator& owner, Pair& pair, CompareMethod method, std::int64_t size,
        ContentProgress& progress)
        : owner_(owner),
          pair_(pair),
          size_(size),
          rule_(method, owner.compare_.ChunkSize),
          progress_(progress),
          shown_(GetLastItemInPath(pair.paths[Side::Left])),
          reader_(owner.buffers_, rule_, static_cast<std::uint64_t>(size)) {}

    // True when the files differ, or the user cancelled. Throws ErrorException, FileChanged and bad_alloc.
    bool FilesDiffer();

    std::string NotedFile() const;
    std::string NotedActivity() const;

  private:
    bool IsCancelled() const;
    bool OpenBoth();
    bool BytesDiffer();

    ContentComparator& owner_;
    Pair& pair_;
    std::int64_t size_;
    ReadingRule rule_;
    ContentProgress& progress_;
    std::string shown_;
    Side opened_ = Side::Left;  // until the reading began
    PairReader reader_;
};

std::string ContentComparator::Run::NotedFile() const {
    const PairReader::Activity& noted = reader_.Noted();
    if (noted.what == PairReader::Activity::What::Comparing) return shown_;
    return pair_.paths[noted.what == PairReader::Activity::What::Nothing ? opened_ : noted.side];
}

std::string ContentComparator::Run::NotedActivity() const {
    const PairReader::Activity& noted = reader_.Noted();
    if (noted.what == PairReader::Activity::What::Nothing) return "Opening the file";
    const bool comparing = noted.what == PairReader::Activity::What::Comparing;
    std::string text = comparing ? "Comparing bytes " : "Reading bytes ";
    text += std::to_string(reader_.ChunkStart(noted.position) + 1);
    return text.append(" to ").append(std::to_string(reader_.ChunkEnd(noted.position)));
}

bool ContentComparator::Run::IsCancelled() const {
    owner_.tools_.loop.Yield();
    if (owner_.tools_.loop.CancelRequested()) owner_.compare_.CompareCancelled = true;
    return owner_.compare_.CompareCancelled;
}

bool ContentComparator::Run::OpenBoth() {
    for (const Side side : kBothSides) {
        opened_ = side;
        ReadFile& file = pair_.files[side];
        if (!file.IsOpen()) ThrowIfFailed(owner_.tools_.files.OpenScannedFile(pair_.paths[side], file));
        if (IsCancelled()) return false;
    }
    for (const Side side : kBothSides) {
        opened_ = side;
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

    if (BytesDiffer()) return true;
    if (bytes != static_cast<std::uint64_t>(size_)) ThrowOverflow();
    return false;
}

bool ContentComparator::Run::BytesDiffer() {
    const auto size = static_cast<std::uint64_t>(size_);
    ReadingShown shown(rule_, size, progress_, shown_);
    const PairReader::Answer answer = reader_.Compare(
        pair_.files, {0, size}, [this] { return !IsCancelled(); },
        [&](std::uint64_t blockEnd) { shown.Show(blockEnd); });
    if (answer == PairReader::Answer::EndedEarly)
        ThrowChanged("The file has become shorter while it was read.");
    if (answer == PairReader::Answer::Failed) throw ErrorException(reader_.Failure());
    return answer != PairReader::Answer::Alike;
}

ContentComparator::ContentComparator(const Toolbox& tools, CCompare& compare)
    : tools_(tools), compare_(compare) {
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
    if (!ReadWholeAndAlike(files, buffers_, size)) return false;
    const ReadingRule rule(CompareMethod::Contents, compare_.ChunkSize);
    ReadingShown(rule, size, progress, shown).Show(size);
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
// pair in memory takes some 10 microseconds, one that was prefetched and came from a disk five times that. A
// large one counts for many.
void ContentComparator::LookWhetherReadingWaits(std::uint64_t bytes) {
    constexpr std::uint32_t kPairsToBeQuick = 256;
    constexpr std::uint32_t kQuickMilliseconds = 6;
    constexpr std::uint64_t kBytesOfAPair = std::uint64_t{16} << 10, kMostPairsOfOne = 1 << 24;
    const std::uint32_t now = tools_.clock.GetTickCount();
    if (pairsSinceVerdict_ == 0) lastVerdict_ = now;
    pairsSinceVerdict_ += 1 + static_cast<std::uint32_t>(std::min(bytes / kBytesOfAPair, kMostPairsOfOne));
    const std::uint32_t allowed = kQuickMilliseconds * std::max(pairsSinceVerdict_ / kPairsToBeQuick, 1U);
    const bool waits = now - lastVerdict_ > allowed;
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
