#include "shell/copy_batch.h"

#include <algorithm>
#include <utility>

namespace vantrel::shell {

void CopyBatch::Add(WaitingCopy copy) {
    if (waiting_.empty()) began_ = std::chrono::steady_clock::now();
    bytes_ += copy.bytes;
    if (std::exchange(lastFolder_, copy.folder.get()) != copy.folder.get()) ++folderCount_;
    waiting_.push_back(std::move(copy));
}

void CopyBatch::Add(WaitingFolder folder) {
    GiveTimesAgain(*folder.made.above);
    ++folderCount_;
    folders_.push_back(std::move(folder));
}

void CopyBatch::Keep(WaitingFolder folder) {
    if (!folder.made.unnamed) {
        times_.insert_or_assign(folder.made.folder->id, Times{folder.like, folder.owner});
        return Add(std::move(folder));
    }
    if (kept_.size() >= kMostFolders) {
        Publish();
        NameKept(*folder.owner);
    }
    GiveTimesAgain(*folder.made.above);
    kept_.push_back(std::move(folder));
}

void CopyBatch::GiveTimesAgain(const Folder& folder) {
    const auto known = times_.empty() ? times_.end() : times_.find(folder.id);
    if (known == times_.end() || (!folders_.empty() && folders_.back().made.folder->id == folder.id)) return;
    WaitingFolder& again = folders_.emplace_back();
    again.made.folder = folder.shared_from_this();
    again.like = known->second.like;
    ++folderCount_;
}

std::shared_ptr<const Folder> CopyBatch::Unnamed(const Place& place) const {
    for (const WaitingFolder& folder : kept_) {
        if (folder.made.name == place.name && folder.made.above->id == place.folder->id)
            return folder.made.folder;
    }
    return nullptr;
}

bool CopyBatch::IsFull() const {
    if (folderCount_ >= kMostFolders) return true;
    if (waiting_.empty()) return false;
    return waiting_.size() >= kMostCopies || bytes_ >= kMostBytes ||
           std::chrono::steady_clock::now() - began_ >= kLongest;
}

bool CopyBatch::Holds(const Place& place) const {
    return std::ranges::any_of(waiting_, [&](const WaitingCopy& copy) {
        return copy.name == place.name && copy.folder->id == place.folder->id;
    });
}

bool CopyBatch::HoldsFolder(const Place& place) const {
    return std::ranges::any_of(folders_, [&](const WaitingFolder& folder) {
        return folder.made.unnamed && folder.made.name == place.name &&
               folder.made.above->id == place.folder->id;
    });
}

void CopyBatch::Forget(const CopyOwner& owner) {
    for (std::vector<WaitingCopy>* copies : {&waiting_, &named_})
        std::erase_if(*copies, [&](const WaitingCopy& copy) { return copy.owner == &owner; });
    for (std::vector<WaitingFolder>* folders : {&folders_, &kept_}) {
        while (!folders->empty() && folders->back().owner == &owner) folders->pop_back();
        std::erase_if(*folders, [&](const WaitingFolder& folder) { return folder.owner == &owner; });
    }
    std::erase_if(times_, [&](const auto& times) { return times.second.owner == &owner; });
}

void CopyBatch::Lose(std::vector<WaitingCopy>& copies, const Error& error) {
    for (const WaitingCopy& copy : std::exchange(copies, {}))
        copy.owner->Lost(copy, CopyOwner::Loss::NotSafe, error);
}

void CopyBatch::Publish() {
    std::vector<WaitingCopy> copies = std::exchange(waiting_, {});
    lastFolder_ = nullptr;
    bytes_ = 0;
    if (!copies.empty()) {
        const Error synced = shared_.Sync();
        if (!synced.IsOk()) {
            Lose(named_, synced);
            Lose(copies, synced);
        }
        named_.clear();
    }
    for (WaitingCopy& copy : copies) NameOne(std::move(copy));
    FinishFolders();
}

template <typename Step>
bool CopyBatch::Try(ToldCopy& copy, Step&& step) {
    Error error;
    do {
        error = step();
    } while (!error.IsOk() && copy.owner->TriesAgain(copy, error));
    if (error.IsOk()) return true;
    copy.owner->Lost(copy, CopyOwner::Loss::Told, error);
    copy.objects = copy.bytes = 0;  // taken back
    return false;
}

void CopyBatch::NameOne(WaitingCopy copy) {
    CopyOwner& owner = *copy.owner;
    Error error = owner.MayPublish();
    if (!error.IsOk()) {
        owner.Lost(copy, CopyOwner::Loss::NotSafe, error);
        return;
    }
    if (owner.CancelAsked()) {
        owner.Lost(copy, CopyOwner::Loss::Cancelled, {});
        return;
    }
    const Place to{copy.folder.get(), copy.name};
    const bool named = Try(copy, [&] {
        const int noted = shared_.NoteWritten(*copy.folder);
        return noted < 0 ? Error::FromErrno(-noted, copy.folder->path)
                         : copy.written->Publish(to, copy.replaces.get());
    });
    if (!named) return;
    GiveTimesAgain(*copy.folder);
    NoteContent(*copy.folder, copy);
    copy.written.reset();
    copy.replaces.reset();
    copy.folder.reset();
    named_.push_back(std::move(copy));
}

void CopyBatch::FinishFolder(WaitingFolder folder) {
    MadeFolder& made = folder.made;
    const int fd = made.folder->fd.Get();
    // Where that fails the folder gets its name all the same, for the sake of what is in it.
    if (made.finalMode) {
        Try(folder,
            [&] { return Error::FromErrno(-shared_.calls.Fchmod(fd, *made.finalMode), made.folder->path); });
    }
    if (KeepTimes(shared_, folder.like, fd) < 0) ++shared_.notKept.times;
    if (!made.unnamed || !NameFolder(folder)) return;
    GiveTimesAgain(*made.above);
    for (const ToldCopy& copy : folder.content) NoteContent(*made.above, copy);
}

bool CopyBatch::NameFolder(WaitingFolder& folder) {
    const MadeFolder& made = folder.made;
    Error error = folder.owner->MayPublish();
    if (!error.IsOk()) {
        folder.owner->Lost(folder, CopyOwner::Loss::NotSafe, error);
    } else if (Try(folder, [&] {
                   const int noted = shared_.NoteWritten(*made.above);
                   error = noted < 0 ? Error::FromErrno(-noted, made.above->path)
                                     : made.unnamed->Publish({made.above.get(), made.name}, nullptr);
                   return error;
               })) {
        return true;
    }
    for (const ToldCopy& copy : folder.content) folder.owner->Lost(copy, CopyOwner::Loss::Told, error);
    return false;
}

void CopyBatch::NoteContent(const Folder& folder, const ToldCopy& copy) {
    for (WaitingFolder& kept : kept_) {
        if (kept.made.folder->id == folder.id) kept.content.push_back(copy);
    }
}

void CopyBatch::FinishFolders() {
    while (!folders_.empty()) {
        for (WaitingFolder& folder : std::exchange(folders_, {})) FinishFolder(std::move(folder));
    }
    folderCount_ = 0;
}

void CopyBatch::NameKept(const CopyOwner& owner) {
    for (std::size_t i = kept_.size(); i-- > 0;) {
        if (kept_[i].owner != &owner) continue;
        WaitingFolder folder = std::move(kept_[i]);
        kept_.erase(kept_.begin() + static_cast<std::ptrdiff_t>(i));
        FinishFolder(std::move(folder));
    }
    FinishFolders();
}

Error CopyBatch::Finish(const CopyOwner& owner) {
    Publish();
    NameKept(owner);
    Error synced = shared_.Sync();
    if (!synced.IsOk()) Lose(named_, synced);
    named_.clear();
    return synced;
}

}  // namespace vantrel::shell
