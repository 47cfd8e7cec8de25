// The texts of the options as they stand in the settings file.
#include <algorithm>
#include <charconv>
#include <cmath>

#include "platform/locale/numeric_text.h"
#include "settings/option_table.h"

namespace vantrel {
namespace {

using O = Options;

std::string PaddedTo(std::size_t length, std::string text) {
    if (text.size() < length) text.insert(0, length - text.size(), '0');
    return text;
}

std::string FontSizeText(double points) {
    char buffer[32];
    const auto [end, fault] = std::to_chars(buffer, buffer + sizeof buffer, points);
    return PaddedTo(2, fault == std::errc() ? std::string(buffer, end) : std::string());
}

std::int32_t Bounded(double value, const NumberField& field) {
    return static_cast<std::int32_t>(std::lround(
        std::clamp(value, static_cast<double>(field.minimum), static_cast<double>(field.maximum))));
}

bool IsTop(const NumberField& field) {
    return field.member == &O::top;
}

std::int32_t Centred(const NumberField& field, const OptionEnvironment& environment, const Options& options) {
    return std::max(0, IsTop(field) ? (environment.screenHeight - options.height) / 2
                                    : (environment.screenWidth - options.width) / 2);
}

void TakeNumber(const OptionLine& line, const NumberField& field, std::string_view text,
                const OptionEnvironment& environment, Options& options) {
    const std::optional<double> value = NumericValue(text);
    if (line.kind != OptionKind::Position) {
        const bool damaged = value && *value < field.minimum && field.tooSmall == TooSmall::IsNoNumber;
        if (value && !damaged) options.*field.member = Bounded(*value, field);
        return;
    }
    const double edge = IsTop(field) ? std::max(environment.screenHeight, environment.desktopHeight)
                                     : std::max(environment.screenWidth, environment.desktopWidth);
    options.*field.member =
        value && *value > edge ? Centred(field, environment, options) : Bounded(value.value_or(0), field);
}

// The word of a code; that of the fallback where this key has no word for it.
std::string_view WordOf(const WordField& field, std::int32_t code) {
    const auto word = std::find_if(field.words.begin(), field.words.end(),
                                   [code](const OptionWord& each) { return each.code == code; });
    return word != field.words.end() ? word->text : WordOf(field, field.fallback);
}

template <typename... Visitors>
struct Overloaded : Visitors... {
    using Visitors::operator()...;
};
template <typename... Visitors>
Overloaded(Visitors...) -> Overloaded<Visitors...>;

}  // namespace

Options::Options() {
    for (const OptionLine& line : OptionTable()) TakeOptionText(line, line.defaultText, {}, *this);
}

std::string DefaultText(const OptionLine& line, const OptionEnvironment& environment, const Options& loaded) {
    if (line.kind == OptionKind::Position)
        return std::to_string(Centred(std::get<NumberField>(line.field), environment, loaded));
    if (line.kind == OptionKind::FontSize) return FontSizeText(environment.fontSize);
    if (const auto* text = std::get_if<std::string O::*>(&line.field)) {
        if (*text == &O::fontName) return environment.fontName;
        if (*text == &O::comparisonCompleteSound || *text == &O::syncCompleteSound)
            return environment.doneSound;
    }
    return std::string(line.defaultText);
}

void TakeOptionText(const OptionLine& line, std::string_view text, const OptionEnvironment& environment,
                    Options& options) {
    std::visit(
        Overloaded{[&](bool O::*member) { options.*member = text == "True"; },
                   [&](std::string O::*member) { options.*member = text; },
                   [&](double O::*member) {
                       const std::optional<double> points = NumericValue(text);
                       if (points && *points > 0) options.*member = *points > 50 ? 8 : *points;
                   },
                   [&](const NumberField& field) { TakeNumber(line, field, text, environment, options); },
                   [&](const WordField& field) {
                       const auto word =
                           std::find_if(field.words.begin(), field.words.end(),
                                        [&](const OptionWord& each) { return each.text == text; });
                       field.set(options, word == field.words.end() ? field.fallback : word->code);
                   }},
        line.field);
}

std::string OptionText(const OptionLine& line, const Options& options) {
    return std::visit(
        Overloaded{[&](bool O::*member) { return std::string(options.*member ? "True" : "False"); },
                   [&](std::string O::*member) { return options.*member; },
                   [&](double O::*member) { return FontSizeText(options.*member); },
                   [&](const NumberField& field) {
                       return PaddedTo(10, std::to_string(Bounded(options.*field.member, field)));
                   },
                   [&](const WordField& field) { return std::string(WordOf(field, field.get(options))); }},
        line.field);
}

Options DefaultOptions(const OptionEnvironment& environment) {
    Options options;
    for (const OptionLine& line : OptionTable())
        TakeOptionText(line, DefaultText(line, environment, options), environment, options);
    return options;
}

}  // namespace vantrel
