#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace vantrel {

enum class Capitalization { LeaveUnchanged, UpperCase, LowerCase, ProperCase, ToggleCase };

struct NumberSequence {
    enum class Place { FileName, Extension };
    Place place = Place::FileName;
    std::int64_t startsWith = 1, incrementBy = 1;
    std::int64_t length = 8;  // padded with zeroes on the left up to here
};

// What is done to each name, in the order of the members. Names and texts are in the engine's form.
struct RenameRules {
    bool shortFileName = false;
    bool removeInternalSpaces = false;
    bool removeExtension = false;
    Capitalization capitalization = Capitalization::LeaveUnchanged;
    std::optional<std::string> fileName;
    std::optional<std::string> extension;  // with or without its dot
    std::optional<std::string> prefix;
    std::optional<std::string> suffix;
    std::optional<NumberSequence> numbers;
};

struct NameToChange {
    std::string name;
    std::string shortName;  // empty: the name itself
};

// The names of a folder, without regard to letter case. A folder can hold several that differ in case alone.
class NamesInFolder {
  public:
    void Add(std::string_view name);
    void Remove(std::string_view name);  // of one that is there
    bool Contains(std::string_view name) const;

  private:
    std::unordered_map<std::string, std::size_t> countsByFold_;
};

enum class RenameVerdict : std::uint8_t {
    Free,      // nothing stands in the way
    Conflict,  // an object that keeps its name, or an earlier one of the batch, has the new name
    Unchanged,
    Impossible,  // no file system takes it: empty, ".", "..", with "/" in it, or too long
};
struct RevisedName {
    std::string name;
    RenameVerdict verdict = RenameVerdict::Unchanged;
};

// What becomes of one name; `number` is its number in the sequence.
std::string ReviseName(const NameToChange& object, const RenameRules& rules, std::int64_t number);

// What becomes of a batch. `names` are all names of the folder, those of the batch among them. The batch is
// taken as a whole: a name that an object of it gives up is free for another, so that names can be swapped
// or handed on; an object that keeps its name for whatever reason gives up nothing. Depends on nothing else.
std::vector<RevisedName> PreviewRename(const std::vector<NameToChange>& objects, const RenameRules& rules,
                                       NamesInFolder names);

// The value of a field that must be a positive whole number, at most 2,147,483,647; of "2.5" it is 2.
std::optional<std::int64_t> PositiveWholeNumber(std::string_view text);

}  // namespace vantrel
