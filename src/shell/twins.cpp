#include "shell/twins.h"

#include <algorithm>
#include <cctype>
#include <cerrno>

#include "platform/names/names.h"
#include "shell/shell_run.h"
#include "shell/temporary_files.h"

namespace vantrel::shell {
namespace {

std::size_t HashIn(const Folder& folder, const std::string& name) {
    return std::hash<std::string>()(name) ^ HashOf(folder.id);
}

std::size_t FoldedHash(const Place& at) {
    return HashIn(*at.folder, FoldCase(NameFromSystem(at.name)));
}

}  // namespace

void GivenNames::Note(const Place& at) {
    exactByFolded_.try_emplace(FoldedHash(at), HashIn(*at.folder, at.name));
}

bool GivenNames::HasTwinOf(const Place& at) const {
    if (exactByFolded_.empty()) return false;
    const auto known = exactByFolded_.find(FoldedHash(at));
    return known != exactByFolded_.end() && known->second != HashIn(*at.folder, at.name);
}

int TakesTwinsForOne(Shared& shared, const Place& place) {
    const auto known = shared.takesTwinsForOne.find(place.folder->id);
    if (known != shared.takesTwinsForOne.end()) return known->second ? 1 : 0;
    TemporaryFile probe(shared, *place.folder);
    if (const int failed = probe.Create(); failed < 0) return failed;
    Place twin = probe.Where();
    std::ranges::transform(twin.name, twin.name.begin(),
                           [](unsigned char c) { return static_cast<char>(std::toupper(c)); });
    Statx stat{};
    const int looked = Look(shared.calls, twin, LinkPolicy::DoNotFollow, stat);
    if (looked < 0 && looked != -ENOENT) return looked;
    shared.takesTwinsForOne.emplace(place.folder->id, looked == 0);
    return looked == 0 ? 1 : 0;
}

}  // namespace vantrel::shell
