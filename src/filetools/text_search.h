#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace vantrel {

// Finds a text in the lines of a long one without looking at the lines, letter case ignored. It is for texts
// that can only be found within the characters of a line as they are stored.
class TextSearch {
  public:
    // Nothing where the text is not of that kind: it holds other than printable ASCII characters; it could be
    // found in the number in front of a line; or `text` holds characters that stand for others (tabs where a
    // blank is looked for, and the few beyond ASCII that fold to ASCII letters).
    static std::optional<TextSearch> Make(std::string_view wanted, std::string_view text);

    // The first place at or behind `from` where it stands whole before `end`; npos for none.
    std::size_t FindIn(std::string_view text, std::size_t from, std::size_t end) const;

  private:
    bool IsAt(const char* place) const;

    std::string lower_, upper_;
    std::size_t anchor_ = 0;  // index of the character that is looked for first
};

}  // namespace vantrel
