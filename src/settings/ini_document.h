#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "platform/line_end.h"

namespace vantrel {

struct IniChange {
    std::string section, key, value;
};

// The bytes of a settings file, whatever they are: comments, keys that nobody knows, their order, line ends
// and plain rubbish stay as they are around what is changed. Sections and keys are matched without regard to
// ASCII letter case. Where a section or a key stands twice, the first one that has the key counts.
class IniDocument {
  public:
    IniDocument() = default;
    // Reading takes time in proportion to the size, for any bytes. At most 4 GiB.
    explicit IniDocument(std::string bytes);

    // The value without the blanks around it and without one pair of quotes; nothing where there is no such
    // key.
    std::optional<std::string> Get(std::string_view section, std::string_view key) const;
    // Makes all changes in one pass; of several to one key the last one counts. A key that is missing comes
    // behind the others of its section, a section at the end. Line ends and NUL in a value become blanks.
    // True when the text is another one than before.
    bool Apply(std::span<const IniChange> changes);
    const std::string& Text() const { return text_; }

  private:
    struct Section {
        std::uint64_t hash;
        std::uint32_t nameBegin, nameEnd;
        std::uint32_t insertAt;  // behind its last key
    };
    struct Key {
        std::uint64_t hash;  // of section and key
        std::uint32_t section;
        std::uint32_t nameBegin, nameEnd, valueBegin, valueEnd;
    };
    struct Piece {
        std::uint32_t begin, end;
        std::string text;
    };

    void Index();
    void IndexLine(std::uint32_t begin, std::uint32_t end, std::uint32_t next);
    std::string_view Cut(std::uint32_t begin, std::uint32_t end) const;
    const Section* FindSection(std::string_view section) const;
    const Key* FindKey(std::string_view section, std::string_view key) const;
    void Splice(std::vector<Piece> pieces);

    std::string text_;
    std::string_view lineEnd_ = kLineEnd;
    std::vector<Section> sections_;  // in the order of the text
    std::vector<Key> keys_;          // by hash, then in the order of the text
};

// What the platform's profile call gives for a stored value: at most 255 characters, never half of one. A
// value of fewer than two characters cannot be read and gives the default.
std::string ProfileText(const std::optional<std::string>& stored, std::string_view defaultText);

}  // namespace vantrel
