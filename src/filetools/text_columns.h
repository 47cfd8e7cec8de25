#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace vantrel {

// How many columns of a fixed grid a character takes: a tab kTabColumns, what combines with the character
// before it none, wide characters of the East two, all others one.
inline constexpr int kTabColumns = 3;
int ColumnsOfCharacter(char32_t character);

// The character at `at`, which goes behind it; U+FFFD for a byte that is no valid UTF-8.
char32_t NextCharacter(std::string_view text, std::size_t& at);

// Which bytes of a line stand in which columns. A line of plain ASCII without tabs takes no table; of others
// there is an entry for every kStep bytes, so that a place in a line of many megabytes is found at once. The
// text must outlive the object.
class TextColumns {
  public:
    static constexpr std::size_t kStep = 4096;

    explicit TextColumns(std::string_view text = {});

    std::string_view Text() const { return text_; }
    std::int64_t Count() const { return count_; }  // columns of the whole line

    struct Place {
        std::size_t offset = 0;   // where a character begins, or the end of the text
        std::int64_t column = 0;  // of that character
    };
    // The character that stands in a column; one that combines belongs to the one before it.
    Place At(std::int64_t column) const;

  private:
    std::string_view text_;
    std::int64_t count_ = 0;
    bool isPlain_ = true;
    std::vector<Place> places_;
};

}  // namespace vantrel
