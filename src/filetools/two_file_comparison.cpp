#include "filetools/two_file_comparison.h"

#include <algorithm>
#include <atomic>
#include <bitset>
#include <memory>

#include "core/ccrc32.h"
#include "core/content_comparator.h"
#include "core/level_contents.h"
#include "core/mod_date_time.h"
#include "core/mod_sha1_hash.h"
#include "core/size_rule.h"
#include "filetools/version_stamps.h"
#include "platform/files/attribute_text.h"
#include "platform/hashes.h"
#include "platform/names/names.h"
#include "platform/names/paths.h"
#include "platform/workers.h"

namespace vantrel {

namespace {

constexpr std::size_t kHashBlock = std::size_t{256} << 10;
constexpr std::size_t kBytesShown = 37;

constexpr std::array<std::string_view, kFileMethods.size()> kCaptions = {
    "Size", "Date/Time", "Attributes", "Version", "Binary Contents", "CRC32", "SHA1"};

constexpr std::string_view kSame = "The files are the same";
constexpr std::string_view kDifferent = "The files are different";

// A step that can be cancelled, for as long as it lives.
class CancellableStep {
  public:
    CancellableStep(TwoFileDisplay& display, const Toolbox& tools, CCompare& compare) : display_(display) {
        tools.loop.ResetCancel();
        compare.CompareCancelled = false;
        display_.SetCancellable(true);
    }
    ~CancellableStep() { display_.SetCancellable(false); }
    CancellableStep(const CancellableStep&) = delete;
    CancellableStep& operator=(const CancellableStep&) = delete;

  private:
    TwoFileDisplay& display_;
};

class DisplayedPercentage : public ContentProgress {
  public:
    explicit DisplayedPercentage(TwoFileDisplay& display) : display_(display) {}
    void SetPercentage(int percentage, std::string_view) override { display_.SetPercentage(percentage); }

  private:
    TwoFileDisplay& display_;
};

std::string_view WithoutSpacesAround(std::string_view text) {
    while (text.starts_with(' ')) text.remove_prefix(1);
    while (text.ends_with(' ')) text.remove_suffix(1);
    return text;
}

// Bytes of each file that were hashed.
using HashedBytes = std::array<std::atomic<std::uint64_t>, 2>;

// Reads a file to its end as it then is. The hash sees every byte in order; `done` counts them. Runs in a
// worker.
template <typename Hash>
void HashFile(const FileSystem& files, const std::string& path, std::atomic<std::uint64_t>& done,
              const StopFlag& stop, Hash& hash) {
    ReadFile file;
    ThrowIfFailed(files.OpenForReading(path, file));
    const auto block = std::make_unique_for_overwrite<char[]>(kHashBlock);
    std::uint64_t position = 0;
    for (std::size_t got = kHashBlock; got == kHashBlock; position += got) {
        if (stop.IsRequested()) throw Cancelled();
        ThrowIfFailed(file.ReadAt(position, block.get(), kHashBlock, got));
        if (got != 0) hash.Add(block.get(), got);
        done.store(position + got, std::memory_order_relaxed);
    }
}

// The job that hashes the file of a side, which owns all that it needs but the files.
PendingJob<std::string>::Job HashJob(FileMethod method, const FileSystem& files, const std::string& path,
                                     const std::shared_ptr<HashedBytes>& done, std::size_t side) {
    return [&files, path, done, side, method](const StopFlag& stop) {
        if (method == FileMethod::Crc32) {
            Crc32 hash;
            HashFile(files, path, (*done)[side], stop, hash);
            return HexText(hash.Value());
        }
        Sha1 hash;
        HashFile(files, path, (*done)[side], stop, hash);
        return HexText(hash.Finish());
    };
}

// The beginning of a file as bits, with dots behind it; empty for an empty file.
std::string FirstBits(const FileSystem& files, const std::string& path) {
    ReadFile file;
    ThrowIfFailed(files.OpenForReading(path, file));
    std::string bytes(kBytesShown, '\0');
    std::size_t got = 0;
    ThrowIfFailed(file.ReadAt(0, bytes.data(), bytes.size(), got));
    bytes.resize(got);
    return bytes.empty() ? std::string() : ConvertTextToBinaryDigits(bytes + "...");
}

}  // namespace

struct TwoFileComparison::Files {
    PerSide<std::string> paths;
    PerSide<FileInfo> infos;
    PerSide<Currency> sizes;  // by the rule
};

std::string_view FileMethodCaption(FileMethod method) {
    return kCaptions[static_cast<std::size_t>(method)];
}

bool IsAvailable(FileMethod method) {
    return method != FileMethod::Sha1 || IsSHA1Available();
}

std::string ConvertTextToBinaryDigits(std::string_view text) {
    std::string digits;
    for (const char letter : text) {
        if (!digits.empty()) digits += ' ';
        digits += std::bitset<8>(static_cast<unsigned char>(letter)).to_string();
    }
    return digits;
}

bool CompareStringsExact(std::string_view one, std::string_view two, ExactCompare how) {
    if (one.size() != two.size()) return false;
    return how == ExactCompare::Exact ? one == two : EqualIgnoringCase(one, two);
}

bool AreExistingFiles(const Toolbox& tools, const PerSide<std::string>& paths) {
    for (const Side side : kBothSides) {
        const bool isFirst = side == Side::Left;
        std::string text;
        if (paths[side].empty())
            text = isFirst ? "File 1 not specified." : "File 2 not specified.";
        else if (!tools.files.FileExists(paths[side]))
            text = isFirst ? "\"" + paths[side] + "\" is not an existing file."
                           : paths[side] + "  is not an existing file.";
        if (text.empty()) continue;
        tools.messages.Ask(
            {.title = "File Not Found", .text = text, .icon = MessageIcon::Warning, .defaultAnswer = {}});
        return false;
    }
    return true;
}

TwoFileReport TwoFileComparison::Compare(const PerSide<std::string>& paths,
                                         const std::vector<FileMethod>& methods) {
    TwoFileReport report;
    const Error notEmptied = tools_.log.Recreate();
    compare_.CompareCancelled = compare_.ErrorsDuringCompare = false;
    tools_.loop.ResetCancel();
    Files files;
    for (const Side side : kBothSides) files.paths[side] = WithoutSpacesAround(paths[side]);
    if (!AreExistingFiles(tools_, files.paths)) {
        report.outcome = TwoFileOutcome::NotFound;
        return report;
    }
    display_.Begin();
    for (const Side side : kBothSides) {
        ThrowIfFailed(tools_.files.Stat(files.paths[side], LinkPolicy::Follow, files.infos[side]));
        files.sizes[side] = SizeByRule(files.infos[side].size, compare_.Sizes);
    }
    try {
        for (const FileMethod method : kFileMethods) {
            if (std::find(methods.begin(), methods.end(), method) == methods.end() || !IsAvailable(method))
                continue;
            report.findings.push_back(Find(method, files));
            report.findings.back().method = method;
            display_.ShowFinding(report.findings.back());
        }
    } catch (const Cancelled&) {
        tools_.messages.ShowInformationMessage("Compare Files", "User cancelled the comparison");
        report.outcome = TwoFileOutcome::Cancelled;
    }
    const Error notWritten = tools_.log.TakeFailure();
    report.unlogged = notEmptied.IsOk() ? notWritten : notEmptied;
    return report;
}

FileFinding TwoFileComparison::Find(FileMethod method, const Files& files) {
    tools_.loop.Yield();
    switch (method) {
        case FileMethod::Size:
            display_.SetStatus("Comparing file sizes...");
            return BySize(files);
        case FileMethod::DateTime:
            display_.SetStatus("Comparing date/time...");
            return ByDateTime(files);
        case FileMethod::Attributes:
            display_.SetStatus("Comparing attributes...");
            return ByAttributes(files);
        case FileMethod::Version:
            display_.SetStatus("Comparing version stamps...");
            return ByVersion(files);
        case FileMethod::Contents:
            display_.SetStatus("Comparing file contents...");
            return ByContents(files);
        case FileMethod::Crc32:
        case FileMethod::Sha1:
            break;
    }
    return ByHash(method, files);
}

FileFinding TwoFileComparison::BySize(const Files& files) const {
    FileFinding finding;
    for (const Side side : kBothSides)
        finding.shown[side] = ConvertBytesToCorrectByteTypeString(files.sizes[side]);
    const Currency one = files.sizes[Side::Left], two = files.sizes[Side::Right];
    finding.differs = one != two;
    finding.result = one > two   ? "File 1 is larger than file 2"
                     : one < two ? "File 1 is smaller than file 2"
                                 : "The files are the same size";
    return finding;
}

FileFinding TwoFileComparison::ByDateTime(const Files& files) const {
    FileFinding finding;
    for (const Side side : kBothSides)
        finding.shown[side] = tools_.locale.DateTime(FileTimeToLocalFileTime(files.infos[side].lastWrite));
    const Currency difference = AllowedTimeDifference(files.infos[Side::Left].lastWrite,
                                                      files.infos[Side::Right].lastWrite, compare_);
    const Currency none = Currency::FromWhole(0);
    finding.differs = difference != none;
    finding.result = difference < none   ? "File 1 is older than file 2"
                     : difference > none ? "File 1 is newer than file 2"
                                         : std::string(kSame);
    return finding;
}

FileFinding TwoFileComparison::ByAttributes(const Files& files) const {
    FileFinding finding;
    for (const Side side : kBothSides)
        ThrowIfFailed(GetAttributeText(tools_.files, files.paths[side], finding.shown[side]));
    finding.differs = finding.shown[Side::Left] != finding.shown[Side::Right];
    finding.result =
        finding.differs ? "The files have different attributes" : "The files have the same attributes";
    return finding;
}

FileFinding TwoFileComparison::ByVersion(const Files& files) const {
    FileFinding finding;
    PerSide<VersionRecord> records;
    bool both = true;
    for (const Side side : kBothSides) {
        const bool has = GetVersionRecord(tools_.files, files.paths[side], records[side]);
        finding.shown[side] = has ? VersionText(records[side]) : std::string("No version stamp");
        both = both && has;
    }
    if (!both) {
        finding.result = "Version not available for both files";
        return finding;
    }
    const VersionOrder order = CompareVersionRecords(records[Side::Left], records[Side::Right]);
    finding.differs = order != VersionOrder::Equal;
    finding.result = order == VersionOrder::FirstIsLess      ? "File 1 is older than file 2"
                     : order == VersionOrder::FirstIsGreater ? "File 1 is newer than file 2"
                                                             : std::string(kSame);
    return finding;
}

void TwoFileComparison::ThrowIfCancelled() const {
    tools_.loop.Yield();
    if (tools_.loop.CancelRequested()) throw Cancelled();
}

bool TwoFileComparison::ContentsDiffer(const Files& files) {
    if (files.sizes[Side::Left] != files.sizes[Side::Right]) return true;
    const CancellableStep step(display_, tools_, compare_);
    if (const auto differ = DifferByWorkers(files)) return *differ;
    DisplayedPercentage progress(display_);
    ContentComparator comparator(tools_, compare_);
    const bool differ = comparator.FilesDiffer(files.paths[Side::Left], files.paths[Side::Right],
                                               CompareMethod::Contents, files.sizes[Side::Left], progress);
    if (compare_.CompareCancelled) throw Cancelled();
    return differ;
}

// Nothing where there are no workers, and where the pair must be looked at closer: whatever fails has its
// words there.
std::optional<bool> TwoFileComparison::DifferByWorkers(const Files& files) {
    if (workers_.Count() == 0) return std::nullopt;
    PerSide<std::shared_ptr<OpenFolder>> folders;
    PairToRead wanted;
    for (const Side side : kBothSides) {
        folders[side] = std::make_shared<OpenFolder>();
        const std::string folder = GetParentFolderName(files.paths[side]);
        if (!tools_.files.Open(folder, *folders[side]).IsOk()) return std::nullopt;
        wanted[side] = {.name = GetLastItemInPath(files.paths[side]),
                        .inode = files.infos[side].id.inode,
                        .isLink = files.infos[side].isLink,
                        .listed = files.sizes[side]};
    }
    DisplayedPercentage progress(display_);
    const ReadingRule rule(CompareMethod::Contents, compare_.ChunkSize);
    ReadingShown shown(rule, files.infos[Side::Left].size, progress, wanted[Side::Left].name);
    ContentsAhead ahead(workers_, rule, compare_.Sizes, nullptr);
    LevelContents contents(ahead, {{folders[Side::Left], folders[Side::Right]}}, 1,
                           [&](std::size_t, PairToRead& pair) {
                               pair = wanted;
                               return true;
                           });
    const auto goOn = [&] {
        ThrowIfCancelled();
        contents.Advance();
    };
    const PairVerdict verdict = contents.Take(0, goOn, [&](std::uint64_t, std::uint64_t to) {
        shown.ShowUpTo(to);
        goOn();
    });
    if (verdict.kind == PairVerdict::Kind::LookCloser) return std::nullopt;
    return verdict.kind != PairVerdict::Kind::Alike;
}

FileFinding TwoFileComparison::ByContents(const Files& files) {
    FileFinding finding;
    finding.differs = ContentsDiffer(files);
    finding.result = finding.differs ? kDifferent : kSame;
    for (const Side side : kBothSides)
        if (files.sizes[side] != Currency()) finding.shown[side] = FirstBits(tools_.files, files.paths[side]);
    return finding;
}

// In the one thread, with a look at the cancel flag between the pieces.
std::string TwoFileComparison::HashHere(FileMethod method, const std::string& path) {
    DisplayedPercentage progress(display_);
    std::string text = method == FileMethod::Crc32
                           ? CCRC32(tools_, compare_).GetHexCRC32OfFile(path, &progress)
                           : SHA1OfFile(tools_, compare_, path, &progress);
    if (compare_.CompareCancelled) throw Cancelled();
    return text;
}

PerSide<std::string> TwoFileComparison::HashBoth(FileMethod method, const Files& files) {
    const std::string name = method == FileMethod::Crc32 ? "CRC" : "SHA";
    const bool hasWorkers = workers_.Count() != 0;
    // Shared with jobs that may outlive this call where a cancel leaves them behind.
    const auto done = std::make_shared<HashedBytes>();
    JobQueue<std::string> queue(workers_, {});
    if (hasWorkers)
        for (const Side side : kBothSides)
            queue.Add(HashJob(method, tools_.files, files.paths[side], done, Index(side)));
    FileFinding finding;
    finding.method = method;
    for (const Side side : kBothSides) {
        display_.SetStatus("Calculating File " + std::to_string(Index(side) + 1) + " " + name + "...");
        const std::uint64_t size = std::max<std::uint64_t>(files.infos[side].size, 1);
        const auto showProgress = [&] {
            ThrowIfCancelled();
            const std::uint64_t bytes = (*done)[Index(side)].load(std::memory_order_relaxed);
            display_.SetPercentage(static_cast<int>(std::min(bytes, size) * 100 / size));
        };
        finding.shown[side] = hasWorkers ? queue.TakeNext(showProgress) : HashHere(method, files.paths[side]);
        display_.ShowFinding(finding);
        ThrowIfCancelled();
    }
    return finding.shown;
}

FileFinding TwoFileComparison::ByHash(FileMethod method, const Files& files) {
    FileFinding finding;
    {
        const CancellableStep step(display_, tools_, compare_);
        finding.shown = HashBoth(method, files);
    }
    finding.differs =
        !CompareStringsExact(finding.shown[Side::Left], finding.shown[Side::Right], ExactCompare::IgnoreCase);
    finding.result = finding.differs ? kDifferent : kSame;
    return finding;
}

}  // namespace vantrel
