#include "platform/files/sighting.h"

#include "platform/files/entry_info.h"

namespace vantrel {
namespace {

Sighting::Kind SightedKindOf(const struct statx& found) {
    if (S_ISREG(found.stx_mode)) return Sighting::Kind::File;
    if (S_ISDIR(found.stx_mode)) return Sighting::Kind::Folder;
    return S_ISLNK(found.stx_mode) ? Sighting::Kind::Link : Sighting::Kind::Special;
}

}  // namespace

Sighting SightingOf(const struct statx& found) {
    return {Sighting::State::Present, SightedKindOf(found), SeenOf(found)};
}

Sighting SightingOf(const FolderEntry& entry) {
    if (entry.seen == Seen()) return {};
    Sighting sighting{Sighting::State::Present, Sighting::Kind::Special, entry.seen};
    if (entry.kind == EntryKind::File) sighting.kind = Sighting::Kind::File;
    if (entry.kind == EntryKind::Folder) sighting.kind = Sighting::Kind::Folder;
    if (entry.isLink) sighting.kind = Sighting::Kind::Link;
    return sighting;
}

bool IsStill(const Sighting& sighting, const struct statx* now, SightingTolerance tolerance) {
    if (sighting.state == Sighting::State::NotKnown) return true;
    if (sighting.state == Sighting::State::Absent || now == nullptr)
        return sighting.state == Sighting::State::Absent && now == nullptr;
    if (SightedKindOf(*now) != sighting.kind) return false;
    Seen current = SeenOf(*now);
    if (tolerance.inode) current.id.inode = sighting.seen.id.inode;
    if (sighting.kind == Sighting::Kind::Folder)
        return current.id == sighting.seen.id && MadeAlike(current.changed, sighting.seen.changed);
    if (tolerance.changed) current.changed = sighting.seen.changed;
    return current == sighting.seen;
}

Error ChangedSinceSeen(const std::string& path) {
    return {kChangedSinceSeen, "\"" + path + "\" has changed since it was compared, and is left alone"};
}

}  // namespace vantrel
