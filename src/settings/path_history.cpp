#include "settings/path_history.h"

#include <algorithm>

#include "platform/names/names.h"
#include "platform/names/paths.h"

namespace vantrel {
namespace {

constexpr std::array<const char*, 2> kSections = {"Source", "Target"};
constexpr const char* kPairsSection = "Extras";
constexpr std::array<const char*, 2> kPairKeys = {"PairLeft", "PairRight"};

std::string KeyOf(std::size_t index) {
    return "Dir" + std::to_string(index + 1);
}

PathHistory::Lists Stored(const IniDocument& document) {
    PathHistory::Lists lists;
    for (std::size_t side = 0; side < lists.size(); ++side) {
        for (std::size_t i = 0; i < PathHistory::kMostEntries; ++i) {
            std::string path = document.Get(kSections[side], KeyOf(i)).value_or("");
            if (!path.empty() && path != kNoFolderPrompt) lists[side].push_back(std::move(path));
        }
    }
    return lists;
}

using Pair = std::array<std::string, 2>;

std::string PairKeyOf(std::size_t side, std::size_t index) {
    return kPairKeys[side] + std::to_string(index + 1);
}

// Most recent first.
std::vector<Pair> StoredPairs(const IniDocument& document) {
    std::vector<Pair> pairs;
    for (std::size_t i = 0; i < PathHistory::kMostEntries; ++i) {
        Pair pair;
        for (std::size_t side = 0; side < pair.size(); ++side)
            pair[side] = document.Get(kPairsSection, PairKeyOf(side, i)).value_or("");
        if (!pair[0].empty() && !pair[1].empty()) pairs.push_back(std::move(pair));
    }
    return pairs;
}

void WritePairs(const std::vector<Pair>& pairs, const IniDocument& document,
                std::vector<IniChange>& changes) {
    for (std::size_t i = 0; i < PathHistory::kMostEntries; ++i)
        for (std::size_t side = 0; side < Pair().size(); ++side) {
            const bool used = i < pairs.size();
            if (used || document.Get(kPairsSection, PairKeyOf(side, i)))
                changes.push_back(
                    {kPairsSection, PairKeyOf(side, i), used ? pairs[i].at(side) : std::string()});
        }
}

void AddPair(const Pair& pair, const IniDocument& document, std::vector<IniChange>& changes) {
    std::vector<Pair> pairs = StoredPairs(document);
    std::erase(pairs, pair);
    pairs.insert(pairs.begin(), pair);
    WritePairs(pairs, document, changes);
}

// A folder that the user takes out of a list is remembered nowhere else.
void RemovePairsOutside(const PathHistory::Lists& lists, const IniDocument& document,
                        std::vector<IniChange>& changes) {
    std::vector<Pair> pairs = StoredPairs(document);
    const auto isListed = [&](std::size_t side, const std::string& path) {
        return std::ranges::any_of(lists.at(side),
                                   [&](const std::string& each) { return EqualIgnoringCase(each, path); });
    };
    std::erase_if(pairs, [&](const Pair& pair) { return !isListed(0, pair[0]) || !isListed(1, pair[1]); });
    WritePairs(pairs, document, changes);
}

void MoveToHead(const std::string& path, std::vector<std::string>& list) {
    std::erase_if(list, [&](const std::string& each) { return EqualIgnoringCase(each, path); });
    list.insert(list.begin(), path);
    if (list.size() > PathHistory::kMostEntries) list.resize(PathHistory::kMostEntries);
}

std::vector<IniChange> ChangesFor(const PathHistory::Lists& lists, const IniDocument& document) {
    std::vector<IniChange> changes;
    for (std::size_t side = 0; side < lists.size(); ++side) {
        for (std::size_t i = 0; i < PathHistory::kMostEntries; ++i) {
            const bool used = i < lists[side].size();
            if (used || document.Get(kSections[side], KeyOf(i)))
                changes.push_back({kSections[side], KeyOf(i), used ? lists[side][i] : std::string()});
        }
    }
    return changes;
}

}  // namespace

Error PathHistory::PopulateDirComboBoxesFromIniFile(Lists& out) const {
    IniDocument document;
    Error error = file_.Read(document);
    out = Stored(document);
    for (std::vector<std::string>& list : out)
        if (list.empty()) list.emplace_back(kNoFolderPrompt);
    return error;
}

Error PathHistory::AddPathsToIni(std::string_view leftPath, std::string_view rightPath, Lists& out) const {
    const Pair paths = {ProperCase(NormalizePath(leftPath)), ProperCase(NormalizePath(rightPath))};
    const auto withPaths = [&](Lists lists) {
        for (std::size_t side = 0; side < lists.size(); ++side) MoveToHead(paths[side], lists[side]);
        return lists;
    };
    out = withPaths({});
    return file_.Update([&](const IniDocument& document) {
        out = withPaths(Stored(document));
        std::vector<IniChange> changes = ChangesFor(out, document);
        AddPair(paths, document, changes);
        return changes;
    });
}

std::optional<std::string> PathHistory::PartnerOf(std::size_t side, std::string_view path) const {
    IniDocument document;
    if (!file_.Read(document).IsOk()) return std::nullopt;
    const std::string own = ProperCase(NormalizePath(path));
    for (const Pair& pair : StoredPairs(document))
        if (pair.at(side) == own) return pair.at(1 - side);
    return std::nullopt;
}

Error PathHistory::SaveFolderLists(const Lists& lists) const {
    return file_.Update([&](const IniDocument& document) {
        std::vector<IniChange> changes = ChangesFor(lists, document);
        RemovePairsOutside(lists, document, changes);
        return changes;
    });
}

}  // namespace vantrel
