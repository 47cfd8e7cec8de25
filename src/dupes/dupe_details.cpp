#include "dupes/dupe_details.h"

#include <algorithm>
#include <vector>

#include "filetools/version_stamps.h"
#include "platform/files/attribute_text.h"
#include "platform/hashes.h"
#include "platform/names/names.h"

namespace vantrel {

namespace {

constexpr std::array<std::string_view, kDupeColumnCount> kCaptions{
    "Name", "Path", "Size", "Create Date/Time", "Last Mod Date/Time", "Attributes", "Version Stamp", "CRC32"};

std::string TimeText(const Toolbox& tools, FileTime utc) {
    return utc.ticks == 0 ? std::string() : tools.locale.DateTime(FileTimeToLocalFileTime(utc));
}

}  // namespace

std::string_view DupeColumnCaption(DupeColumn column) {
    return kCaptions[static_cast<std::size_t>(column)];
}

DupeRow DetailsOf(const Toolbox& tools, const FoundFiles& found, const DupeFile& file) {
    const std::string path = found.PathOf(file);
    DupeRow row;
    const auto column = [&](DupeColumn which) -> std::string& {
        return row[static_cast<std::size_t>(which)];
    };
    column(DupeColumn::Name) = file.name;
    column(DupeColumn::Path) = path;
    column(DupeColumn::Size) = file.size == DupeFile::kUnknownSize
                                   ? "(unknown)"
                                   : tools.locale.Number(Currency::FromWhole(file.size));
    FileInfo info;
    FileTime created = file.createTime;
    if (created.ticks == 0 && tools.files.Stat(path, LinkPolicy::DoNotFollow, info).IsOk())
        created = info.created;
    column(DupeColumn::CreateTime) = TimeText(tools, created);
    column(DupeColumn::LastModTime) = TimeText(tools, file.LastModTime());
    // One that is gone has none.
    if (!GetAttributeText(tools.files, path, column(DupeColumn::Attributes)).IsOk())
        column(DupeColumn::Attributes).clear();
    VersionRecord version;
    column(DupeColumn::VersionStamp) =
        GetVersionRecord(tools.files, path, version) ? VersionText(version) : "No version stamp";
    column(DupeColumn::Crc32) = "Not calculated";
    return row;
}

std::string CalculateCrc32(const Toolbox& tools, const FoundFiles& found, const DupeFile& file,
                           DupeProgress& progress) {
    progress.SetStatus("Calculating the CRC32 value for " + std::string(file.name) + " ...");
    ReadFile open;
    ThrowIfFailed(tools.files.OpenForReading(found.PathOf(file), open));
    std::vector<char> block(std::size_t{256} << 10);
    Crc32 crc;
    std::size_t got = block.size();
    for (std::uint64_t at = 0; got == block.size(); at += got) {
        tools.loop.Yield();
        if (tools.loop.CancelRequested()) throw Cancelled();
        ThrowIfFailed(open.ReadAt(at, block.data(), block.size(), got));
        crc.Add(block.data(), got);
    }
    return HexText(crc.Value());
}

void AddFileToExcludeList(const Toolbox& tools, clsDupeSettings& settings, std::string_view name) {
    std::vector<std::string> patterns = settings.ExcludeFiles();
    const bool isThere = std::any_of(patterns.begin(), patterns.end(), [=](const std::string& pattern) {
        return EqualIgnoringCase(pattern, name);
    });
    const std::string quoted = "'" + std::string(name) + "'";
    if (!isThere) {
        patterns.emplace_back(name);
        settings.SetExcludeFiles(patterns);
    }
    tools.messages.ShowInformationMessage("Add File to Exclude List",
                                          quoted + (isThere ? " is already in the Exclude Files list."
                                                            : " has been added to the Exclude Files list."));
}

DupeRename RenameDupeFile(const Toolbox& tools, ShellWrappers& wrappers, DupeResults& results,
                          std::uint32_t group, std::uint32_t file) {
    FoundFiles& files = results.Files();
    const std::string present(files[file].name);
    const std::optional<std::string> answer =
        tools.messages.AskForText("Rename File", "Enter the new name for the file.", present);
    if (!answer || answer->empty() || *answer == present) return DupeRename::NotDone;
    const std::string& folder = files.FolderOf(files[file]);
    // A name with a "/" would be another place.
    if (answer->find('/') != std::string::npos || *answer == "." || *answer == "..") {
        tools.messages.Ask({.title = "Rename File",
                            .text = "A file name cannot contain \"/\", and cannot be \".\" or \"..\".",
                            .icon = MessageIcon::Warning});
        return DupeRename::NotDone;
    }
    if (!wrappers.RenameFile(folder + present, folder + *answer, {}).AllDone()) return DupeRename::NotDone;
    OpenFolder opened;
    FolderEntry entry;
    if (tools.files.Open(folder, opened).IsOk() && opened.LookAt(*answer, entry))
        files.Rename(file, *answer, entry.seen);
    if (!results.Criteria().names) return DupeRename::Renamed;
    results.Forget(group, {file});
    return DupeRename::LeftGroup;
}

}  // namespace vantrel
