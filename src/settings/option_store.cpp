#include "settings/option_store.h"

#include <algorithm>

namespace vantrel {
namespace {

std::string StoredText(const OptionLine& line, const IniDocument& document,
                       const OptionEnvironment& environment, const Options& loaded) {
    return ProfileText(document.Get(line.section, line.key), DefaultText(line, environment, loaded));
}

bool IsGeometry(const OptionLine& line) {
    return line.kind == OptionKind::Extent || line.kind == OptionKind::Position;
}

}  // namespace

Error OptionStore::Load(const OptionEnvironment& environment, Options& options) {
    IniDocument document;
    Error error = file_.Read(document);
    for (const OptionLine& line : OptionTable())
        TakeOptionText(line, StoredText(line, document, environment, options), environment, options);
    environment_ = environment;
    known_ = options;
    return error;
}

// What is in the file now means something else than what is known, and nothing was changed here.
bool OptionStore::BelongsToOther(const OptionLine& line, const IniDocument& document,
                                 const Options& options) const {
    if (!known_ || !document.Get(line.section, line.key)) return false;
    Options theirs = *known_;
    TakeOptionText(line, StoredText(line, document, environment_, theirs), environment_, theirs);
    const std::string known = OptionText(line, *known_);
    return OptionText(line, theirs) != known && OptionText(line, options) == known;
}

Error OptionStore::Save(const Options& options, SaveGeometry geometry) {
    std::vector<const OptionLine*> written;
    Error error = file_.Update([&](const IniDocument& document) {
        std::vector<IniChange> changes;
        for (const OptionLine& line : OptionTable()) {
            if (line.kind == OptionKind::FilterText) continue;
            if (geometry == SaveGeometry::No && IsGeometry(line)) continue;
            if (BelongsToOther(line, document, options)) continue;
            changes.push_back({std::string(line.section), std::string(line.key), OptionText(line, options)});
            written.push_back(&line);
        }
        return changes;
    });
    if (error.IsOk() && known_)
        for (const OptionLine* line : written)
            TakeOptionText(*line, OptionText(*line, options), environment_, *known_);
    return error;
}

bool OptionStore::HasChanges(const Options& options) const {
    const auto& table = OptionTable();
    return known_ && std::any_of(table.begin(), table.end(), [&](const OptionLine& line) {
               return line.kind != OptionKind::FilterText &&
                      OptionText(line, options) != OptionText(line, *known_);
           });
}

Error OptionStore::SaveFilters(std::string_view includeFileTypes, std::string_view excludeFileTypes) {
    return file_.Update([&](const IniDocument&) {
        return std::vector<IniChange>{
            {std::string(kOptionsSection), "IncludeFileTypes", std::string(includeFileTypes)},
            {std::string(kOptionsSection), "ExcludeFileTypes", std::string(excludeFileTypes)}};
    });
}

Error OptionStore::RestoreDefaults(const OptionEnvironment& environment, Options& options) {
    const Error deleted = file_.Delete();
    const Error loaded = Load(environment, options);
    return deleted.IsOk() ? loaded : deleted;
}

}  // namespace vantrel
