#include "dupes/dupes_folder.h"

#include <algorithm>
#include <array>
#include <set>
#include <unordered_set>
#include <utility>

#include "dupes/dupe_collecting.h"
#include "platform/names/paths.h"

namespace vantrel {

namespace {

constexpr std::size_t kLargestLog = std::size_t{512} << 20;
constexpr std::size_t kFields =
    3;  // time, former path, path in DUPES; with tabs between, which no name holds

// Without parts that lead elsewhere.
bool IsPlainPath(std::string_view path) {
    if (!path.starts_with('/') || path.size() < 2) return false;
    path.remove_prefix(1);
    while (true) {
        const std::size_t end = path.find('/');
        const std::string_view part = path.substr(0, end);
        if (part.empty() || part == "." || part == "..") return false;
        if (end == std::string_view::npos) return true;
        path.remove_prefix(end + 1);
    }
}

bool Parse(std::string_view line, const std::string& folder, StoredDupe& stored) {
    std::array<std::string_view, kFields> fields;
    for (std::size_t i = 0; i < kFields; ++i) {
        const std::size_t end = line.find('\t');
        if ((end == std::string_view::npos) != (i + 1 == kFields)) return false;
        fields[i] = line.substr(0, end);
        line.remove_prefix(end == std::string_view::npos ? line.size() : end + 1);
    }
    if (!IsPlainPath(fields[1]) || !IsPlainPath(fields[2]) || !fields[2].starts_with(folder + "/"))
        return false;
    stored.when = fields[0];
    stored.original = fields[1];
    stored.stored = fields[2];
    return true;
}

template <typename Take>
void ForEachLine(std::string_view content, const Take& take) {
    while (true) {
        const std::size_t end = content.find('\n');
        if (end == std::string_view::npos) return;  // torn
        take(content.substr(0, end));
        content.remove_prefix(end + 1);
    }
}

Error ReadLog(const FileSystem& files, const std::string& path, std::string& content) {
    content.clear();
    return files.Exists(path) ? files.ReadWholeFile(path, kLargestLog, content) : Error();
}

bool IsThere(const FileSystem& files, const std::string& path, std::uint64_t& size) {
    FileInfo info;
    if (!files.Stat(path, LinkPolicy::DoNotFollow, info).IsOk() || info.kind != EntryKind::File) return false;
    size = info.size;
    return true;
}

}  // namespace

DupesFolder::DupesFolder(const Toolbox& tools)
    : tools_(tools), folder_(DupesFolderPath(tools.folders)), log_(tools.folders.appPath + "Dupes.Log") {
}

std::string DupesFolder::PlaceFor(const std::string& original) const {
    std::string place = folder_ + original;
    const std::string_view extension = GetFilenameExtension(GetLastItemInPath(original));
    const std::size_t end = place.size() - (extension.empty() ? 0 : extension.size() + 1);
    for (int number = 2; tools_.files.Exists(place); ++number)
        place = (folder_ + original).insert(end, " (" + std::to_string(number) + ")");
    return place;
}

Error DupesFolder::Note(const std::string& original, const std::string& stored) const {
    return tools_.files.AppendToFile(log_,
                                     UtcText(tools_.clock.Now()) + "\t" + original + "\t" + stored + "\n");
}

Error DupesFolder::Read(std::vector<StoredDupe>& out) const {
    out.clear();
    std::string content;
    if (Error error = ReadLog(tools_.files, log_, content); !error.IsOk()) return error;
    std::vector<StoredDupe> lines;
    ForEachLine(content, [&](std::string_view line) {
        StoredDupe stored;
        if (Parse(line, folder_, stored)) lines.push_back(std::move(stored));
    });
    // A place that was used again belongs to the file that came last.
    std::unordered_set<std::string> places;
    for (auto line = lines.rbegin(); line != lines.rend(); ++line) {
        if (!places.insert(line->stored).second || !IsThere(tools_.files, line->stored, line->size)) continue;
        out.push_back(std::move(*line));
    }
    return {};
}

DupesFolder::Restored DupesFolder::Restore(const std::vector<StoredDupe>& files, ShellOperations& shell,
                                           DupeProgress& progress) const {
    Restored result;
    std::set<std::string, std::less<>> done;
    DupeFigures figures;
    for (const StoredDupe& file : files) {
        tools_.loop.Yield();
        if (tools_.loop.CancelRequested()) {
            result.cancelled = true;
            break;
        }
        progress.SetBar(static_cast<std::int64_t>(figures.files), static_cast<std::int64_t>(files.size()));
        progress.SetFigures(figures);
        ++figures.files;
        if (Error error = RestoreOne(file, shell); !error.IsOk()) {
            result.failed.push_back({file, std::move(error)});
            continue;
        }
        ++result.done;
        done.insert(file.stored);
        RemoveEmptyFolders(file.stored, shell);
    }
    progress.SetBar(0, 0);
    if (done.empty()) return result;
    std::string content, kept;
    result.unlogged = ReadLog(tools_.files, log_, content);
    if (!result.unlogged.IsOk()) return result;
    ForEachLine(content, [&](std::string_view line) {
        StoredDupe stored;
        if (!Parse(line, folder_, stored) || !done.contains(stored.stored)) kept.append(line).push_back('\n');
    });
    result.unlogged = tools_.files.ReplaceFile(log_, kept);
    return result;
}

Error DupesFolder::RestoreOne(const StoredDupe& file, ShellOperations& shell) const {
    ReadFile now;
    if (Error error = tools_.files.OpenForReading(file.stored, now); !error.IsOk()) return error;
    ShellRequest request;
    request.operation = ShellOperation::Move;
    request.sources = {file.stored};
    request.target = file.original;
    request.targetIsFullPath = request.noConfirmation = request.noErrorUi = true;
    Sighting stands;
    stands.state = Sighting::State::Present;
    stands.seen = now.Seen();
    now = ReadFile();
    request.expected = {{stands, Sighting::Nothing(), nullptr}};
    if (tools_.files.Exists(file.original)) return {ErrorNumber::FileAlreadyExists, "File already exists"};
    const ShellResult result = shell.Run(request);
    if (result.AllDone()) return {};
    const Error& error = result.items.empty() ? Error() : result.items[0].error;
    return error.IsOk() ? Error(ErrorNumber::PathFileAccess, "The file was not moved") : error;
}

void DupesFolder::RemoveEmptyFolders(const std::string& stored, ShellOperations& shell) const {
    ShellRequest request;
    request.operation = ShellOperation::Delete;
    request.silent = request.noErrorUi = request.noConfirmation = true;
    // A folder that holds anything stays: none of it was looked at.
    request.expected = {{{}, {}, std::make_shared<SeenBelow>()}};
    for (std::string folder = GetParentFolderName(stored); folder.size() > folder_.size();
         folder = GetParentFolderName(folder)) {
        request.sources = {folder};
        if (!shell.Run(request).AllDone()) return;
    }
}

}  // namespace vantrel
