#include "views/auto_complete_path.h"

#include <tuple>

#include "platform/names/fold.h"
#include "platform/names/names.h"
#include "platform/names/paths.h"

namespace vantrel {
namespace {

// Length of the head of `name` that has as many characters as `beginning` and agrees with it, letter case
// ignored.
std::optional<std::size_t> AgreeingHead(std::string_view name, std::string_view beginning) {
    std::size_t inName = 0;
    for (std::size_t at = 0; at < beginning.size();)
        if (inName >= name.size() || NextFolded(name, inName) != NextFolded(beginning, at)) return {};
    return inName;
}

}  // namespace

void AutoCompletePath::Run(AutoCompleteBox& box) {
    for (;;) {
        const std::string typed = box.Text();
        const bool wanted = !typed.empty() && armed_ && !searching_;
        searching_ = false;
        if (!wanted) return;
        armed_ = false;
        if (typed.front() == '\\' || typed.back() == '/' || typed.back() == '\\') return;

        searching_ = true;
        const std::optional<Match> match = Find(typed);
        if (!searching_) continue;
        if (match) {
            const std::string head = typed.substr(0, typed.size() - match->replaced) + match->named;
            box.SetTextWithProposal(head + match->proposal, head.size());
        }
        searching_ = false;
        return;
    }
}

std::optional<AutoCompletePath::Match> AutoCompletePath::Find(const std::string& typed) {
    const std::string path = PathFromUser(typed);
    if (IsFolder(path)) return Match{.replaced = 0, .named = {}, .proposal = "/"};
    const std::string_view last = GetLastItemInPath(path);
    const std::string_view folder = std::string_view(path).substr(0, path.size() - last.size());
    // The end of the typed text is written anew, which is only possible where it is the name itself.
    if (last.empty() || !typed.ends_with(last) || !IsFolder(folder)) return {};
    return FindEntry(folder, last);
}

// The folder's own order means nothing here: of the entries that agree the first by name counts, those that
// agree letter by letter before all others. A file in that place ends the search, deliberately.
std::optional<AutoCompletePath::Match> AutoCompletePath::FindEntry(std::string_view folder,
                                                                   std::string_view last) {
    struct Candidate {
        std::string name;
        std::string folded;
        std::size_t head = 0;
        bool isFolder = false;
        auto Rank(std::string_view beginning) const {
            return std::tuple(!name.starts_with(beginning), std::string_view(folded), std::string_view(name));
        }
    };
    std::optional<Candidate> best;
    OpenFolder listing;
    if (!files_.Open(folder, listing).IsOk()) return {};
    const Error error = listing.ForEach([&](const FolderEntry& entry) {
        loop_.Yield();
        if (!searching_) return false;
        if (const auto head = AgreeingHead(entry.name, last)) {
            Candidate candidate{std::string(entry.name), FoldCase(entry.name), *head,
                                entry.kind == EntryKind::Folder};
            if (!best || candidate.Rank(last) < best->Rank(last)) best = std::move(candidate);
        }
        return true;
    });
    if (!error.IsOk() || !best || !best->isFolder) return {};
    return Match{.replaced = last.size(),
                 .named = best->name.substr(0, best->head),
                 .proposal = best->name.substr(best->head) + "/"};
}

bool AutoCompletePath::IsFolder(std::string_view path) const {
    return path.starts_with('/') && files_.FolderExists(path);
}

}  // namespace vantrel
