#include "fileops/confirmation_details.h"

#include <algorithm>

#include "platform/line_end.h"
#include "platform/names/names.h"
#include "platform/names/paths.h"

namespace vantrel {

bool IsForGood(const Confirmation& confirmation) {
    return confirmation.operation == "Delete" && confirmation.question.starts_with(kAboutToDeleteForGood);
}

std::string ConfirmationDetails(const Confirmation& confirmation, std::size_t mostLines) {
    std::string operation = confirmation.operation;
    for (char& c : operation)
        if (c >= 'a' && c <= 'z') c = static_cast<char>(c - ('a' - 'A'));
    std::string ending = " FROM " + DisplayName(confirmation.source);
    if (confirmation.operation != "Delete") ending.append(" TO ").append(DisplayName(confirmation.target));
    ending.append(kLineEnd);

    const std::size_t lines = std::min(confirmation.names.size(), mostLines);
    std::string text;
    for (std::size_t i = 0; i < lines; ++i) {
        const std::string path = WithoutTrailingSlash(confirmation.names[i]);
        text.append(operation).append(" ").append(DisplayName(GetLastItemInPath(path))).append(ending);
    }
    if (lines < confirmation.names.size())
        text.append("... and ").append(std::to_string(confirmation.names.size() - lines)).append(" more");
    return text;
}

}  // namespace vantrel
