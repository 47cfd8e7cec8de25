#include "core/row_texts.h"

#include "core/occupied_names.h"
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

std::string WhyUnknown(const ResultRow& row) {
    if (!row.IsUnknown()) return {};
    std::string text(DescribeReason(row.reason));
    if (text.empty())
        text = "What has this name on the other side is no file and no folder, or is not known.";
    return text + " Nothing is concluded from it, and it is left alone.";
}

std::string WhyLeftAlone(const ResultRow& row) {
    switch (row.elsewhere) {
        case Elsewhere::BehindLink:
            return "This lies behind a link to a folder. It is shown, and left alone.";
        case Elsewhere::InOtherFolder:
            return "This lies in the other of the two compared folders as well. It is shown, and left alone.";
        case Elsewhere::No:
            break;
    }
    return WhyUnknown(row);
}

std::string ObjectPath(std::string_view folder, const ResultRow& row) {
    return JoinPath(folder, row.realName);
}

}  // namespace vantrel
