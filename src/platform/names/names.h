#pragma once

#include <string>
#include <string_view>

namespace vantrel {

// Names on disk are bytes. In the engine a name is valid UTF-8 without backslash, control character (U+0001
// to U+001F, U+007F to U+009F) or invalid sequence. A byte that the engine's form cannot hold is carried as
// the character U+10F800 + byte; so is each of the four bytes of such a character that stands in a name on
// disk already, which makes the mapping one to one. Both functions work on whole paths as well, since "/"
// maps to itself. A character that claims to carry printable ASCII (other than a backslash) is no carrier: it
// stands for itself in both directions.
std::string NameFromSystem(std::string_view bytes);
std::string NameToSystem(std::string_view name);

// True when NameFromSystem(bytes) == bytes, which is the case for nearly every name there is.
bool IsPlainName(std::string_view bytes);

// A path as a person typed or pasted it: "~/" at its head is the home folder, and what the engine's form
// cannot hold is carried; characters of the carrying range are kept, so that a path once read can be given
// again. The text ends at its first NUL.
std::string PathFromUser(std::string_view text);

// For the screen only: carried bytes and characters that would disturb a line (bidirectional overrides, line
// separators) shown as visible stand-ins. A carried backslash is shown as one.
std::string DisplayName(std::string_view name);

// Simple Unicode case folding, one code point to one. Two names are the same to the system when their keys
// are equal; lists are sorted by the bytes of the key, which is the order of its code points.
std::string FoldCase(std::string_view name);
// Appends the folded form to `to`; the cheap form for many names.
void AppendFolded(std::string_view name, std::string& to);
bool EqualIgnoringCase(std::string_view a, std::string_view b);
// Below, equal or above 0 as for the folded texts.
int CompareIgnoringCase(std::string_view a, std::string_view b);

// The "like" rule, case ignored: "*" any run, "?" one character, "#" one digit, "[abc]" or "[a-z]" one of a
// set, "[!abc]" one not in the set. A set ends at the first "]"; "-" at its head or end, and "!" alone in it,
// stand for themselves; "[]" stands for no character at all. A "[" without its "]" stands for itself. A
// character is a code point. The work is bounded by |name| * |pattern|.
bool Like(std::string_view name, std::string_view pattern);

}  // namespace vantrel
