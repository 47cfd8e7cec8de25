#pragma once

#include <string>
#include <string_view>

// Changes of the name of one file or folder, in the engine's form and without its path. None of them asks the
// disk, and none says whether a file system would take what comes out.
namespace vantrel::names {

// The extension begins at the last dot that has anything but dots before it, and includes that dot: "a.tar"
// and ".gz", ".bashrc" and nothing, "name" and ".".
struct NameParts {
    std::string_view base, extension;
};
NameParts SplitName(std::string_view name);

// Whether any file system could take it as the name of one object: not empty, not "." or "..", without "/"
// and NUL, and no longer than 255 bytes on disk.
bool IsPossibleName(std::string_view name);

// Without the blanks (all that Unicode counts as a space) that have another character before and behind them
// somewhere in the name; those at its head and end stay.
std::string RemoveInternalSpaces(std::string_view name);
std::string RemoveFilenameExtension(std::string_view name);
// Keeps the extension.
std::string ReplaceFileName(std::string_view name, std::string_view newName);
// Keeps the base name. `newExtension` is without a dot; where it is empty the name has none.
std::string ReplaceExtension(std::string_view name, std::string_view newExtension);
// The suffix goes before the extension.
std::string AddSuffixToFileName(std::string_view name, std::string_view suffix);

// Letter case by Unicode, one character for one and in no language of its own, which is how names are
// compared: "i" becomes "I" everywhere, and "ß" has no upper case.
std::string UpperCase(std::string_view name);
std::string LowerCase(std::string_view name);
// The first letter of each word becomes a capital (of "ǆ" the title form), all others small. A word is a run
// of letters, digits, marks and apostrophes that begins with a letter or a digit: "the 2ND man's-hat" becomes
// "The 2nd Man's-Hat". The extension counts as no word and becomes small.
std::string ProperCase(std::string_view name);
// Capitals, title forms included, become small and small letters capitals; what has no case stays.
std::string ToggleCase(std::string_view name);

}  // namespace vantrel::names
