#include "core/row_texts.h"

#include "platform/names/paths.h"

namespace vantrel {

std::string SizeText(const ResultRow& row, const LocaleFormats& locale) {
    if (!row.IsReal()) return {};
    return row.size > Currency() ? locale.Number(row.size) : "0";
}

std::string DateText(const ResultRow& row, const LocaleFormats& locale) {
    if (row.kind != RowKind::File) return {};
    return locale.DateTime(FileTimeToLocalFileTime(row.lastWrite));
}

std::string ObjectPath(std::string_view folder, const ResultRow& row) {
    return JoinPath(folder, row.realName);
}

}  // namespace vantrel
