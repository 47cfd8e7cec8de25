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

void CopyBatch::AddTimes(std::shared_ptr<const Folder> folder, const Statx& times, FinalRights final) {
    ++folderCount_;
    folders_.push_back({std::move(folder), times, final});
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

void CopyBatch::Forget(const CopyOwner& owner) {
    for (std::vector<WaitingCopy>* copies : {&waiting_, &named_})
        std::erase_if(*copies, [&](const WaitingCopy& copy) { return copy.owner == &owner; });
}

void CopyBatch::Lose(std::vector<WaitingCopy>& copies, const Error& error) {
    for (const WaitingCopy& copy : std::exchange(copies, {}))
        copy.owner->Lost(copy, CopyOwner::Loss::NotSafe, error);
}

void CopyBatch::Publish() {
    std::vector<WaitingCopy> copies = std::exchange(waiting_, {});
    lastFolder_ = nullptr;
    folderCount_ = 0;
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
    SetTimes();
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
    do {
        const int noted = shared_.NoteWritten(*copy.folder);
        error = noted < 0 ? Error::FromErrno(-noted, copy.folder->path)
                          : copy.written->Publish(to, copy.replaces.get());
    } while (!error.IsOk() && owner.TriesAgain(copy, error));
    if (!error.IsOk()) {
        owner.Lost(copy, CopyOwner::Loss::Told, error);
        return;
    }
    copy.written.reset();
    copy.replaces.reset();
    copy.folder.reset();
    named_.push_back(std::move(copy));
}

void CopyBatch::SetTimes() {
    for (const FolderTimes& at : std::exchange(folders_, {})) {
        const int fd = at.folder->fd.Get();
        if (at.final.wait) shared_.calls.Fchmod(fd, at.final.mode);
        if (KeepTimes(shared_, at.times, fd) < 0) ++shared_.timesNotKept;
    }
}

Error CopyBatch::Finish() {
    Publish();
    Error synced = shared_.Sync();
    if (!synced.IsOk()) Lose(named_, synced);
    named_.clear();
    return synced;
}

}  // namespace vantrel::shell
