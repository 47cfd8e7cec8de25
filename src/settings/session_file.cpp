#include "settings/session_file.h"

#include <algorithm>
#include <cerrno>

#include "platform/locale/numeric_text.h"
#include "settings/option_table.h"
#include "settings/path_history.h"
#include "settings/plain_text.h"

namespace vantrel {
namespace {

// Always in a settings file that the program wrote.
bool IsAlwaysWritten(const OptionLine& line) {
    return line.section != kExtrasSection && line.kind != OptionKind::FilterText &&
           line.kind != OptionKind::Extent && line.kind != OptionKind::Position;
}

// Whether the option can have the value that this text stands for.
bool CanHave(const OptionLine& line, const std::string& text) {
    if (std::holds_alternative<bool Options::*>(line.field)) return text == "True" || text == "False";
    if (std::holds_alternative<std::string Options::*>(line.field)) return true;
    if (const auto* words = std::get_if<WordField>(&line.field))
        return std::any_of(words->words.begin(), words->words.end(),
                           [&text](const OptionWord& word) { return word.text == text; });
    const std::optional<double> number = NumericValue(text);
    if (!number) return false;
    if (const auto* field = std::get_if<NumberField>(&line.field))
        return *number >= field->minimum && *number <= field->maximum;
    constexpr double kMostPoints = 50;
    return *number > 0 && *number <= kMostPoints;
}

// A part of the text that is short enough for a message.
std::string Quoted(const std::string& text) {
    constexpr std::size_t kMostQuoted = 60;
    std::size_t end = std::min(text.size(), kMostQuoted);
    while (end < text.size() && (static_cast<unsigned char>(text[end]) & 0xC0) == 0x80) --end;
    return "\"" + text.substr(0, end) + (end < text.size() ? "..." : "") + "\"";
}

}  // namespace

std::string WhyNoSession(std::string_view bytes) {
    if (bytes.size() > kMostSessionBytes) return "it is too large";
    if (!IsPlainText(bytes)) return "it holds something else than text";
    const IniDocument document{std::string(bytes)};
    const auto stored = [&document](const OptionLine& line) { return document.Get(line.section, line.key); };
    const auto table = OptionTable();
    if (std::none_of(table.begin(), table.end(),
                     [&stored](const OptionLine& line) { return stored(line).has_value(); }))
        return "it holds no settings of this program";
    for (const OptionLine& line : table) {
        const std::optional<std::string> text = stored(line);
        if (!text && IsAlwaysWritten(line))
            return "it is damaged: there is nothing for \"" + std::string(line.key) + "\"";
        if (text && !CanHave(line, *text))
            return "it is damaged: \"" + std::string(line.key) + "\" cannot be " + Quoted(*text);
    }
    return {};
}

Error ReadSession(const FileSystem& files, std::string_view path, std::string& bytes) {
    std::string read;
    // Beyond the limit it is a session no more, however much of it there is.
    Error error = files.ReadWholeFile(path, kMostSessionBytes, read);
    std::string wrong;
    if (error.SystemNumber() == ENOMEM)
        wrong = "it is too large";
    else if (!error.IsOk())
        return error;
    else
        wrong = WhyNoSession(read);
    if (!wrong.empty()) return {ErrorNumber::InvalidPropertyValue, std::move(wrong)};
    bytes = std::move(read);
    return {};
}

std::string DescribeSessionError(std::string_view path, const Error& error) {
    const std::string name = "\"" + std::string(path) + "\"";
    if (error.Number() == ErrorNumber::InvalidPropertyValue)
        return name + " is no session: " + error.Description();
    return "The session " + name + " could not be read: " + error.Description();
}

std::string FolderOfSession(const IniDocument& session, std::string_view section) {
    std::string path = session.Get(section, "Dir1").value_or("");
    return path == kNoFolderPrompt ? std::string() : path;
}

}  // namespace vantrel
