#include "filetools/version_stamps.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>
#include <vector>

#include "platform/little_endian.h"

namespace vantrel {

namespace {

// Of the PE format. Offsets are from the beginning of the structure named.
constexpr std::size_t kDosHeader = 64, kNewHeaderAt = 0x3C;         // IMAGE_DOS_HEADER, e_lfanew
constexpr std::size_t kFileHeader = 24;                             // "PE\0\0" and IMAGE_FILE_HEADER
constexpr std::size_t kSectionCountAt = 6, kOptionalSizeAt = 20;    // of these
constexpr std::uint32_t kMagic32 = 0x10B, kMagic64 = 0x20B;         // of IMAGE_OPTIONAL_HEADER
constexpr std::size_t kDirectories32 = 96, kDirectories64 = 112;    // the data directories in it
constexpr std::size_t kDirectoryEntry = 8, kResourceDirectory = 2;  // the third of them
constexpr std::size_t kSection = 40;                                // IMAGE_SECTION_HEADER
constexpr std::size_t kResourceHeader = 16, kResourceEntry = 8;  // IMAGE_RESOURCE_DIRECTORY and its entries
constexpr std::uint32_t kSubDirectory = 0x80000000;           // an entry leads to a directory; names the same
constexpr std::uint32_t kVersionType = 16, kVersionName = 1;  // RT_VERSION, VS_VERSION_INFO
constexpr std::uint32_t kFixedSignature = 0xFEEF04BD;         // VS_FIXEDFILEINFO
constexpr std::size_t kFixedSize = 52;
constexpr std::uint32_t kPatched = 4;  // VS_FF_PATCHED

// Limits of our own, far above what linkers write.
constexpr std::uint32_t kMostSections = 1'024, kMostEntries = 4'096;
constexpr std::uint32_t kMostOptionalHeader = 4'096;

// Thrown where the file is no PE file, or not whole. It does not leave GetVersionRecord.
struct NoVersion {};

class PeFile {
  public:
    explicit PeFile(ReadFile& file) : file_(file) { ReadHeaders(); }

    VersionRecord Version() {
        const std::uint32_t names = Find(0, kVersionType).value_or(0);
        if ((names & kSubDirectory) == 0) throw NoVersion();
        std::optional<std::uint32_t> languages = Find(names & ~kSubDirectory, kVersionName);
        if (!languages) languages = First(names & ~kSubDirectory);
        if ((*languages & kSubDirectory) == 0) throw NoVersion();
        const std::uint32_t entry = First(*languages & ~kSubDirectory);
        if ((entry & kSubDirectory) != 0) throw NoVersion();
        // IMAGE_RESOURCE_DATA_ENTRY: where, how long, code page, reserved.
        const std::string data = ReadResource(entry, 16);
        return Fixed(
            ReadAddress(Little32(data, 0), std::min<std::uint32_t>(Little32(data, 4), kMostOfVersion)));
    }

  private:
    // The fixed record stands at the very beginning of the resource, behind a key of 15 letters.
    static constexpr std::uint32_t kMostOfVersion = 256;

    struct Section {
        std::uint32_t address, size, fileOffset, fileSize;
    };

    std::string Read(std::uint64_t offset, std::size_t size) {
        std::string bytes(size, '\0');
        std::size_t got = 0;
        if (!file_.ReadAt(offset, bytes.data(), size, got).IsOk() || got < size) throw NoVersion();
        return bytes;
    }

    void ReadHeaders() {
        const std::string dos = Read(0, kDosHeader);
        if (!dos.starts_with("MZ")) throw NoVersion();
        const std::uint64_t at = Little32(dos, kNewHeaderAt);
        const std::string header = Read(at, kFileHeader);
        if (!header.starts_with(std::string_view("PE\0\0", 4))) throw NoVersion();
        const std::uint32_t optionalSize = Little16(header, kOptionalSizeAt);
        if (optionalSize < 2 || optionalSize > kMostOptionalHeader) throw NoVersion();
        const std::string optional = Read(at + kFileHeader, optionalSize);
        const std::uint32_t magic = Little16(optional, 0);
        if (magic != kMagic32 && magic != kMagic64) throw NoVersion();
        const std::size_t directories = magic == kMagic32 ? kDirectories32 : kDirectories64;
        const std::size_t entry = directories + kResourceDirectory * kDirectoryEntry;
        // Their number stands right before them.
        if (entry + kDirectoryEntry > optional.size() ||
            Little32(optional, directories - 4) <= kResourceDirectory)
            throw NoVersion();
        resources_ = Little32(optional, entry);
        const std::uint32_t count = Little16(header, kSectionCountAt);
        if (resources_ == 0 || count == 0 || count > kMostSections) throw NoVersion();
        const std::string table = Read(at + kFileHeader + optionalSize, count * kSection);
        for (std::size_t section = 0; section < table.size(); section += kSection)
            sections_.push_back({Little32(table, section + 12), Little32(table, section + 8),
                                 Little32(table, section + 20), Little32(table, section + 16)});
    }

    // What the loader would place at an address relative to the image.
    std::string ReadAddress(std::uint32_t address, std::size_t size) {
        for (const Section& section : sections_) {
            const std::uint64_t length = std::max(section.size, section.fileSize);
            if (address < section.address || address - section.address >= length) continue;
            const std::uint64_t within = address - section.address;
            if (within + size > section.fileSize) throw NoVersion();
            return Read(section.fileOffset + within, size);
        }
        throw NoVersion();
    }
    std::string ReadResource(std::uint32_t offset, std::size_t size) {
        if (offset > UINT32_MAX - resources_) throw NoVersion();
        return ReadAddress(resources_ + offset, size);
    }

    // Where the entries of a directory lead: names first, then numbers.
    std::string Entries(std::uint32_t directory, std::uint32_t& named) {
        const std::string header = ReadResource(directory, kResourceHeader);
        named = Little16(header, 12);
        const std::uint32_t count = named + Little16(header, 14);
        if (count == 0 || count > kMostEntries) throw NoVersion();
        return ReadResource(directory + kResourceHeader, count * kResourceEntry);
    }
    std::optional<std::uint32_t> Find(std::uint32_t directory, std::uint32_t number) {
        std::uint32_t named = 0;
        const std::string entries = Entries(directory, named);
        for (std::size_t at = named * kResourceEntry; at < entries.size(); at += kResourceEntry)
            if (Little32(entries, at) == number) return Little32(entries, at + 4);
        return std::nullopt;
    }
    std::uint32_t First(std::uint32_t directory) {
        std::uint32_t named = 0;
        return Little32(Entries(directory, named), 4);
    }

    // VS_VERSIONINFO: length, length of the value, type, a key that ends with a zero, the value at the next
    // multiple of four.
    static VersionRecord Fixed(std::string_view resource) {
        constexpr std::string_view kKey("V\0S\0_\0V\0E\0R\0S\0I\0O\0N\0_\0I\0N\0F\0O\0\0\0", 32);
        constexpr std::size_t kKeyAt = 6, kValueAt = 40;
        if (resource.size() < kValueAt + kFixedSize || Little16(resource, 0) < kValueAt + kFixedSize ||
            Little16(resource, 2) < kFixedSize || resource.substr(kKeyAt, kKey.size()) != kKey ||
            Little32(resource, kValueAt) != kFixedSignature)
            throw NoVersion();
        return {Little32(resource, kValueAt + 8), Little32(resource, kValueAt + 12),
                Little32(resource, kValueAt + 28)};
    }

    ReadFile& file_;
    std::uint32_t resources_ = 0;
    std::vector<Section> sections_;
};

std::string PairText(std::uint32_t pair) {
    const double divided = static_cast<double>(static_cast<std::int32_t>(pair)) / 65'536.0;
    return std::to_string(static_cast<std::int64_t>(std::nearbyint(divided))) + "." +
           std::to_string(pair & 0xFFFF);
}

}  // namespace

bool GetVersionRecord(const FileSystem& files, std::string_view path, VersionRecord& record) {
    ReadFile file;
    if (!files.OpenForReading(path, file).IsOk()) return false;
    try {
        record = PeFile(file).Version();
        return true;
    } catch (const NoVersion&) {
        return false;
    }
}

VersionOrder CompareVersionRecords(const VersionRecord& first, const VersionRecord& second) {
    const auto parts = [](const VersionRecord& record) {
        const auto part = [](std::uint32_t value) { return static_cast<std::int16_t>(value & 0xFFFF); };
        return std::array{part(record.dwFileVersionMS >> 16), part(record.dwFileVersionMS),
                          part(record.dwFileVersionLS >> 16), part(record.dwFileVersionLS)};
    };
    const auto one = parts(first), two = parts(second);
    if (one == two) return VersionOrder::Equal;
    return one > two ? VersionOrder::FirstIsGreater : VersionOrder::FirstIsLess;
}

std::string VersionText(const VersionRecord& record) {
    std::string text = PairText(record.dwFileVersionMS) + "." + PairText(record.dwFileVersionLS);
    if ((record.dwFileFlags & kPatched) != 0) text += "*";
    return text;
}

std::string GetFileVersionString(const Toolbox& tools, std::string_view path) {
    std::string text = "No version information is available";
    tools.reporter.Guard("modVersionStamp.GetFileVersionString", [&] {
        VersionRecord record;
        if (GetVersionRecord(tools.files, path, record)) text = VersionText(record);
    });
    return text;
}

}  // namespace vantrel
