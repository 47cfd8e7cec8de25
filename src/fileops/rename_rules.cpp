#include "fileops/rename_rules.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

#include "platform/locale/numeric_text.h"
#include "platform/names/name_changes.h"
#include "platform/names/names.h"

namespace vantrel {
namespace {

// No name is longer, so that more zeroes would only cost memory.
constexpr std::int64_t kMostDigits = 256;

std::string Capitalized(const std::string& name, Capitalization capitalization) {
    switch (capitalization) {
        case Capitalization::UpperCase:
            return names::UpperCase(name);
        case Capitalization::LowerCase:
            return names::LowerCase(name);
        case Capitalization::ProperCase:
            return names::ProperCase(name);
        case Capitalization::ToggleCase:
            return names::ToggleCase(name);
        case Capitalization::LeaveUnchanged:
            break;
    }
    return name;
}

std::string WithNumber(const std::string& name, const NumberSequence& sequence, std::int64_t number) {
    std::string text = std::to_string(number);
    const auto length = static_cast<std::size_t>(std::min(sequence.length, kMostDigits));
    if (text.size() < length) text.insert(0, length - text.size(), '0');
    return sequence.place == NumberSequence::Place::FileName ? names::ReplaceFileName(name, text)
                                                             : names::ReplaceExtension(name, text);
}

// The batch on its way to its verdicts. An object that turns out to keep its name takes it from whoever had
// counted on it, who then keeps his own in turn.
class Verdicts {
  public:
    Verdicts(const std::vector<NameToChange>& objects, std::vector<RevisedName>& revised, NamesInFolder names)
        : objects_(objects), revised_(revised), kept_(std::move(names)) {}

    void Find() {
        for (const NameToChange& object : objects_) kept_.Remove(object.name);
        for (std::size_t i = 0; i < objects_.size(); ++i) {
            if (revised_[i].name == objects_[i].name)
                Keep(i, RenameVerdict::Unchanged);
            else if (!names::IsPossibleName(revised_[i].name))
                Keep(i, RenameVerdict::Impossible);
            else
                revised_[i].verdict = RenameVerdict::Free;
        }
        for (std::size_t i = 0; i < objects_.size(); ++i)
            if (revised_[i].verdict == RenameVerdict::Free) Claim(i);
    }

  private:
    void Keep(std::size_t index, RenameVerdict verdict) {
        revised_[index].verdict = verdict;
        kept_.Add(objects_[index].name);
    }
    void Claim(std::size_t index) {
        const auto [claim, isFirst] = claims_.try_emplace(FoldCase(revised_[index].name), index);
        if (isFirst && !kept_.Contains(revised_[index].name)) return;
        if (isFirst) claims_.erase(claim);
        for (std::optional<std::size_t> loser = index; loser;) {
            Keep(*loser, RenameVerdict::Conflict);
            const auto counted = claims_.find(FoldCase(objects_[*loser].name));
            loser.reset();
            if (counted == claims_.end()) break;
            loser = counted->second;
            claims_.erase(counted);
        }
    }

    const std::vector<NameToChange>& objects_;
    std::vector<RevisedName>& revised_;
    NamesInFolder kept_;
    std::unordered_map<std::string, std::size_t> claims_;  // by the folded new name
};

}  // namespace

void NamesInFolder::Add(std::string_view name) {
    ++countsByFold_[FoldCase(name)];
}

void NamesInFolder::Remove(std::string_view name) {
    const auto found = countsByFold_.find(FoldCase(name));
    if (found != countsByFold_.end() && --found->second == 0) countsByFold_.erase(found);
}

bool NamesInFolder::Contains(std::string_view name) const {
    return countsByFold_.contains(FoldCase(name));
}

std::string ReviseName(const NameToChange& object, const RenameRules& rules, std::int64_t number) {
    std::string name = rules.shortFileName && !object.shortName.empty() ? object.shortName : object.name;
    if (rules.removeInternalSpaces) name = names::RemoveInternalSpaces(name);
    if (rules.removeExtension) name = names::RemoveFilenameExtension(name);
    name = Capitalized(name, rules.capitalization);
    if (rules.fileName) name = names::ReplaceFileName(name, *rules.fileName);
    if (rules.extension) {
        std::string_view extension = *rules.extension;
        if (extension.starts_with('.')) extension.remove_prefix(1);
        name = names::ReplaceExtension(name, extension);
    }
    if (rules.prefix) name.insert(0, *rules.prefix);
    if (rules.suffix) name = names::AddSuffixToFileName(name, *rules.suffix);
    if (rules.numbers) name = WithNumber(name, *rules.numbers, number);
    return name;
}

std::vector<RevisedName> PreviewRename(const std::vector<NameToChange>& objects, const RenameRules& rules,
                                       NamesInFolder names) {
    std::vector<RevisedName> revised;
    revised.reserve(objects.size());
    std::int64_t number = rules.numbers ? rules.numbers->startsWith : 0;
    for (const NameToChange& object : objects) {
        revised.push_back({ReviseName(object, rules, number), RenameVerdict::Unchanged});
        if (rules.numbers) number += rules.numbers->incrementBy;
    }
    Verdicts(objects, revised, std::move(names)).Find();
    return revised;
}

std::optional<std::int64_t> PositiveWholeNumber(std::string_view text) {
    const auto value = NumericValue(text);
    constexpr double kMost = std::numeric_limits<std::int32_t>::max();
    if (!value || !(*value >= 1) || *value > kMost) return std::nullopt;
    return static_cast<std::int64_t>(std::floor(*value));
}

}  // namespace vantrel
