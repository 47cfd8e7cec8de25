#include "fileops/told_at_end.h"

#include "platform/line_end.h"

namespace vantrel {

std::string DescribeNotKept(const NotKept& notKept) {
    std::string text;
    const auto add = [&text](const char* what, std::uint64_t count) {
        if (count == 0) return;
        if (!text.empty()) text += kLineEnd;
        text.append(what).append(std::to_string(count));
        text += count == 1 ? " file could not be kept." : " files could not be kept.";
    };
    add("The time of ", notKept.times);
    add("Extended attributes of ", notKept.attributes);
    return text;
}

std::string TitleOf(const NotKept& notKept) {
    return notKept.attributes == 0 ? "Times Not Kept" : "Attributes Not Kept";
}

std::string DescribeFailedCopies(const std::vector<ShellOperations::FailedCopy>& failed) {
    constexpr std::size_t kMostNamed = 10;
    std::string text;
    for (std::size_t i = 0; i < failed.size() && i < kMostNamed; ++i) {
        if (i != 0) text += kLineEnd;
        text.append("Not copied: \"").append(failed[i].target).append("\": ");
        text += WithSystemReason(failed[i].error);
    }
    if (failed.size() > kMostNamed)
        text.append(kLineEnd)
            .append("and ")
            .append(std::to_string(failed.size() - kMostNamed))
            .append(" more");
    return text;
}

std::string WithSystemReason(const Error& error) {
    if (error.SystemNumber() == 0) return error.Description();
    const std::string reason = GetErrorText(error.SystemNumber());
    if (error.Description().starts_with(reason)) return error.Description();
    return error.Description() + " (" + reason + ")";
}

}  // namespace vantrel
