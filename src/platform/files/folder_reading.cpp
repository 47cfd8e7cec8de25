#include "platform/files/folder_reading.h"

#include <algorithm>
#include <utility>

namespace vantrel {

namespace {

constexpr std::size_t kNamesAtATime = 4'096;
constexpr std::size_t kSlice = 256;
constexpr std::size_t kSlicesAhead = 48;

}  // namespace

FolderReading::FolderReading(Workers& workers, std::function<Error(OpenFolder&)> open, StatPolicy statPolicy)
    : workers_(workers), statPolicy_(statPolicy), slices_(workers, {.jobs = kSlicesAhead}) {
    coming_ = PendingJob<Names>(workers, [open = std::move(open)](const StopFlag&) {
        auto folder = std::make_shared<OpenFolder>();
        Error error = open(*folder);
        if (error.IsOk()) return ReadNames(std::move(folder), true);
        Names none;
        none.error = std::move(error);
        return none;
    });
}

FolderReading::FolderReading(Workers& workers, std::shared_ptr<OpenFolder> folder, StatPolicy statPolicy)
    : workers_(workers), statPolicy_(statPolicy), slices_(workers, {.jobs = kSlicesAhead}) {
    coming_ = PendingJob<Names>(
        workers, [folder = std::move(folder)](const StopFlag&) { return ReadNames(folder, true); });
}

FolderReading::Names FolderReading::ReadNames(std::shared_ptr<OpenFolder> folder, bool fromStart) {
    Names found;
    auto names = std::make_shared<ListedNames>();
    found.error = folder->ListNames(fromStart, kNamesAtATime, *names, found.atEnd);
    found.folder = std::move(folder);
    found.names = std::move(names);
    return found;
}

FolderReading::Slice FolderReading::ReadSlice(const OpenFolder& folder, const ListedNames& names,
                                              std::size_t first, std::size_t last, StatPolicy statPolicy,
                                              const StopFlag& stop) {
    Slice slice;
    slice.entries.reserve(last - first);
    (void)folder.LookAtNames(
        names, first, last, statPolicy,
        [&](const FolderEntry& entry) {
            slice.text.append(entry.name);
            slice.entries.push_back(entry);
            return !stop.IsRequested();
        },
        slice.gone);
    return slice;
}

void FolderReading::TakeNames(const WhileWaiting& whileWaiting) {
    Names found = coming_.Take(whileWaiting);
    folder_ = std::move(found.folder);
    names_ = std::move(found.names);
    next_ = 0;
    error_ = std::move(found.error);
    if (!error_.IsOk() || found.atEnd) return;
    coming_ =
        PendingJob<Names>(workers_, [folder = folder_](const StopFlag&) { return ReadNames(folder, false); });
}

void FolderReading::HandIn() {
    while (slices_.HasRoom()) {
        if (names_ && next_ < names_->Count()) {
            const std::size_t first = next_;
            next_ = std::min(first + kSlice, names_->Count());
            slices_.Add([folder = folder_, names = names_, first, last = next_,
                         statPolicy = statPolicy_](const StopFlag& stop) {
                return ReadSlice(*folder, *names, first, last, statPolicy, stop);
            });
        } else if (coming_.IsReady()) {
            TakeNames([] {});
        } else {
            return;
        }
    }
}

Error FolderReading::Open(const WhileWaiting& whileWaiting) {
    if (!folder_ && coming_.IsThere()) TakeNames(whileWaiting);
    return folder_ ? Error() : error_;
}

Error FolderReading::ForEach(const EntrySink& sink, const WhileWaiting& whileWaiting) {
    std::set<std::string> gone;
    while (true) {
        HandIn();
        if (slices_.IsEmpty()) {
            if (!coming_.IsThere()) break;
            TakeNames(whileWaiting);
            continue;
        }
        Slice slice = slices_.TakeNext([&] {
            HandIn();
            whileWaiting();
        });
        std::size_t at = 0;
        for (FolderEntry& entry : slice.entries) {
            entry.name = std::string_view(slice.text).substr(at, entry.name.size());
            at += entry.name.size();
            if (!sink(entry)) return {};
        }
        gone.merge(slice.gone);
    }
    if (error_.IsOk()) folder_->HandOutGone(gone, sink);
    return error_;
}

}  // namespace vantrel
