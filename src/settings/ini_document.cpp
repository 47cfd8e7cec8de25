#include "settings/ini_document.h"

#include <algorithm>
#include <tuple>

#include "platform/byte_order_mark.h"

namespace vantrel {
namespace {

constexpr std::string_view kBlanks = " \t\r\v\f";

char Lower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c;
}

bool Same(std::string_view a, std::string_view b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](char x, char y) { return Lower(x) == Lower(y); });
}

// FNV-1a of the text in small letters.
std::uint64_t Hash(std::string_view text, std::uint64_t hash = 0xCBF29CE484222325U) {
    for (const char c : text) hash = (hash ^ static_cast<unsigned char>(Lower(c))) * 0x100000001B3U;
    return hash;
}

std::uint64_t KeyHash(std::uint64_t sectionHash, std::string_view key) {
    return Hash(key, Hash("\n", sectionHash));
}

bool IsQuoted(std::string_view value) {
    return value.size() >= 2 && value.front() == value.back() &&
           (value.front() == '"' || value.front() == '\'');
}

bool IsBlank(char c) {
    return kBlanks.find(c) != std::string_view::npos;
}

// The value as it must stand in the file to be read back as it is.
std::string Written(std::string_view value) {
    std::string text(value);
    for (char& c : text)
        if (c == '\r' || c == '\n' || c == '\0') c = ' ';
    if (!text.empty() && (IsBlank(text.front()) || IsBlank(text.back()) || IsQuoted(text)))
        text = '"' + text + '"';
    return text;
}

}  // namespace

IniDocument::IniDocument(std::string bytes) : text_(std::move(bytes)) {
    Index();
}

std::string_view IniDocument::Cut(std::uint32_t begin, std::uint32_t end) const {
    return std::string_view(text_).substr(begin, end - begin);
}

void IniDocument::Index() {
    sections_.clear();
    keys_.clear();
    const std::size_t firstEnd = text_.find('\n');
    if (firstEnd != std::string::npos)
        lineEnd_ = firstEnd > 0 && text_[firstEnd - 1] == '\r' ? kLineEnd : "\n";

    std::size_t begin = text_.starts_with(kByteOrderMark) ? kByteOrderMark.size() : 0;
    while (begin < text_.size()) {
        const std::size_t end = std::min(text_.find('\n', begin), text_.size());
        const std::size_t next = std::min(end + 1, text_.size());
        IndexLine(static_cast<std::uint32_t>(begin), static_cast<std::uint32_t>(end),
                  static_cast<std::uint32_t>(next));
        begin = next;
    }
    std::sort(keys_.begin(), keys_.end(), [](const Key& a, const Key& b) {
        return std::tie(a.hash, a.nameBegin) < std::tie(b.hash, b.nameBegin);
    });
}

void IniDocument::IndexLine(std::uint32_t begin, std::uint32_t end, std::uint32_t next) {
    const auto trim = [this](std::uint32_t& from, std::uint32_t& to) {
        while (from < to && IsBlank(text_[from])) ++from;
        while (to > from && IsBlank(text_[to - 1])) --to;
    };
    trim(begin, end);
    if (begin == end || text_[begin] == ';') return;

    if (text_[begin] == '[') {
        const std::size_t close = Cut(begin, end).rfind(']');
        if (close == std::string_view::npos) return;
        std::uint32_t nameBegin = begin + 1;
        std::uint32_t nameEnd = begin + static_cast<std::uint32_t>(close);
        trim(nameBegin, nameEnd);
        sections_.push_back({Hash(Cut(nameBegin, nameEnd)), nameBegin, nameEnd, next});
        return;
    }
    const std::size_t equals = Cut(begin, end).find('=');
    if (equals == std::string_view::npos || sections_.empty()) return;
    Key key{};
    key.section = static_cast<std::uint32_t>(sections_.size() - 1);
    key.nameBegin = begin;
    key.nameEnd = begin + static_cast<std::uint32_t>(equals);
    key.valueBegin = key.nameEnd + 1;
    key.valueEnd = end;
    trim(key.nameBegin, key.nameEnd);
    trim(key.valueBegin, key.valueEnd);
    key.hash = KeyHash(sections_.back().hash, Cut(key.nameBegin, key.nameEnd));
    keys_.push_back(key);
    sections_.back().insertAt = next;
}

const IniDocument::Section* IniDocument::FindSection(std::string_view section) const {
    const std::uint64_t hash = Hash(section);
    const auto found = std::find_if(sections_.begin(), sections_.end(), [&](const Section& each) {
        return each.hash == hash && Same(Cut(each.nameBegin, each.nameEnd), section);
    });
    return found == sections_.end() ? nullptr : &*found;
}

const IniDocument::Key* IniDocument::FindKey(std::string_view section, std::string_view key) const {
    const std::uint64_t hash = KeyHash(Hash(section), key);
    auto found = std::lower_bound(keys_.begin(), keys_.end(), hash,
                                  [](const Key& each, std::uint64_t wanted) { return each.hash < wanted; });
    for (; found != keys_.end() && found->hash == hash; ++found) {
        const Section& home = sections_[found->section];
        if (Same(Cut(found->nameBegin, found->nameEnd), key) &&
            Same(Cut(home.nameBegin, home.nameEnd), section))
            return &*found;
    }
    return nullptr;
}

std::optional<std::string> IniDocument::Get(std::string_view section, std::string_view key) const {
    const Key* found = FindKey(section, key);
    if (!found) return std::nullopt;
    std::string_view value = Cut(found->valueBegin, found->valueEnd);
    if (IsQuoted(value)) value = value.substr(1, value.size() - 2);
    return std::string(value);
}

bool IniDocument::Apply(std::span<const IniChange> changes) {
    std::vector<Piece> pieces;
    std::vector<std::pair<std::string_view, std::string>> newSections;  // name, lines
    for (auto change = changes.begin(); change != changes.end(); ++change) {
        const bool overtaken = std::any_of(change + 1, changes.end(), [&](const IniChange& later) {
            return Same(later.key, change->key) && Same(later.section, change->section);
        });
        if (overtaken || Get(change->section, change->key) == change->value) continue;

        const std::string line = change->key + "=" + Written(change->value);
        if (const Key* key = FindKey(change->section, change->key)) {
            pieces.push_back({key->valueBegin, key->valueEnd, Written(change->value)});
        } else if (const Section* section = FindSection(change->section)) {
            const bool endsOpen = text_[section->insertAt - 1] != '\n';
            pieces.push_back({section->insertAt, section->insertAt,
                              endsOpen ? std::string(lineEnd_) + line : line + std::string(lineEnd_)});
        } else {
            auto home = std::find_if(newSections.begin(), newSections.end(),
                                     [&](const auto& each) { return Same(each.first, change->section); });
            if (home == newSections.end()) home = newSections.insert(home, {change->section, std::string()});
            home->second.append(line).append(lineEnd_);
        }
    }
    if (pieces.empty() && newSections.empty()) return false;

    const std::string before = text_;
    Splice(std::move(pieces));
    for (const auto& [name, lines] : newSections) {
        const bool empty = text_.empty() || text_ == kByteOrderMark;
        if (!empty) text_.append(text_.back() == '\n' ? "" : lineEnd_).append(lineEnd_);
        text_.append("[").append(name).append("]").append(lineEnd_).append(lines);
    }
    Index();
    return text_ != before;
}

void IniDocument::Splice(std::vector<Piece> pieces) {
    std::stable_sort(pieces.begin(), pieces.end(),
                     [](const Piece& a, const Piece& b) { return a.begin < b.begin; });
    std::string spliced;
    std::uint32_t done = 0;
    for (const Piece& piece : pieces) {
        spliced.append(Cut(done, piece.begin)).append(piece.text);
        done = piece.end;
    }
    text_ = spliced.append(Cut(done, static_cast<std::uint32_t>(text_.size())));
}

std::string ProfileText(const std::optional<std::string>& stored, std::string_view defaultText) {
    constexpr std::size_t kMostCharacters = 255;
    std::size_t characters = 0;
    if (stored) {
        for (std::size_t at = 0; at < stored->size(); ++at) {
            const bool continues = (static_cast<unsigned char>((*stored)[at]) & 0xC0) == 0x80;
            if (!continues && ++characters > kMostCharacters) return stored->substr(0, at);
        }
    }
    return std::string(characters < 2 ? defaultText : std::string_view(*stored));
}

}  // namespace vantrel
