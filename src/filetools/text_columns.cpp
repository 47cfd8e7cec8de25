#include "filetools/text_columns.h"

#include <unicode/uchar.h>
#include <unicode/utf8.h>

#include <algorithm>

namespace vantrel {

namespace {

// In one go over the bytes, without a branch for each: lines of many megabytes are looked at before they are
// painted.
bool IsPlain(std::string_view text) {
    constexpr std::size_t kLettersPerLook = std::size_t{16} << 10;
    for (std::size_t at = 0; at < text.size(); at += kLettersPerLook) {
        unsigned odd = 0;
        for (const char letter : text.substr(at, kLettersPerLook))
            odd |= static_cast<unsigned>(static_cast<unsigned char>(letter) >= 0x80) |
                   static_cast<unsigned>(letter == '\t');
        if (odd != 0) return false;
    }
    return true;
}

int ColumnsByProperties(char32_t character) {
    const auto point = static_cast<UChar32>(character);
    const int type = u_charType(point);
    if (type == U_NON_SPACING_MARK || type == U_ENCLOSING_MARK) return 0;
    const int width = u_getIntPropertyValue(point, UCHAR_EAST_ASIAN_WIDTH);
    return width == U_EA_WIDE || width == U_EA_FULLWIDTH ? 2 : 1;
}

// Of the first 65,536 characters: what the properties say costs more than all else.
const std::vector<std::uint8_t>& ColumnsTable() {
    static const std::vector<std::uint8_t> table = [] {
        std::vector<std::uint8_t> columns(0x10000);
        for (char32_t character = 0; character < columns.size(); ++character)
            columns[character] = static_cast<std::uint8_t>(ColumnsByProperties(character));
        return columns;
    }();
    return table;
}

}  // namespace

int ColumnsOfCharacter(char32_t character) {
    if (character == U'\t') return kTabColumns;
    if (character < 0x300) return 1;
    return character < ColumnsTable().size() ? ColumnsTable()[character] : ColumnsByProperties(character);
}

char32_t NextCharacter(std::string_view text, std::size_t& at) {
    const auto size = static_cast<std::int64_t>(text.size());
    auto next = static_cast<std::int64_t>(at);
    UChar32 point = 0;
    U8_NEXT(text.data(), next, size, point);
    at = point < 0 ? at + 1 : static_cast<std::size_t>(next);
    return point < 0 ? U'\uFFFD' : static_cast<char32_t>(point);
}

TextColumns::TextColumns(std::string_view text) : text_(text), isPlain_(IsPlain(text)) {
    if (isPlain_) {
        count_ = static_cast<std::int64_t>(text.size());
        return;
    }
    std::size_t nextEntry = kStep;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t begin = at;
        const bool isAscii = static_cast<unsigned char>(text[at]) < 0x80;
        const char32_t character = isAscii ? static_cast<char32_t>(text[at++]) : NextCharacter(text, at);
        const int columns = ColumnsOfCharacter(character);
        if (begin >= nextEntry && columns > 0) {
            places_.push_back({begin, count_});
            nextEntry = begin + kStep;
        }
        count_ += columns;
    }
}

TextColumns::Place TextColumns::At(std::int64_t column) const {
    column = std::clamp<std::int64_t>(column, 0, count_);
    if (isPlain_) return {static_cast<std::size_t>(column), column};
    const auto behind =
        std::upper_bound(places_.begin(), places_.end(), column,
                         [](std::int64_t wanted, const Place& place) { return wanted < place.column; });
    Place place = behind == places_.begin() ? Place() : *(behind - 1);
    while (place.offset < text_.size()) {
        std::size_t next = place.offset;
        const int columns = ColumnsOfCharacter(NextCharacter(text_, next));
        if (place.column + columns > column) break;
        place = {next, place.column + columns};
    }
    return place;
}

}  // namespace vantrel
