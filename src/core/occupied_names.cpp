#include "core/occupied_names.h"

namespace vantrel {

bool HoldSameText(const PerSide<const OpenFolder*>& folders, const PerSide<std::string_view>& names) {
    PerSide<std::string> texts;
    for (const Side side : kBothSides)
        if (!folders[side]->IsOpen() || !folders[side]->ReadLink(names[side], texts[side]).IsOk())
            return false;
    return texts[Side::Left] == texts[Side::Right];
}

void NoteUnknown(const ComparisonContext& context, const std::string& path, UnknownReason reason) {
    if (reason == UnknownReason::None) return;
    if (reason != UnknownReason::NotTold) {
        context.tools.log.AppendNote("Left alone on both sides. " + std::string(DescribeReason(reason)) +
                                     " " + path);
        return;
    }
    context.compare.ErrorsDuringCompare = true;
    context.tools.log.Append({"File Name: " + path, "Process: Examining the folder",
                              "Error: What this is could not be found out. It is left alone on both sides."});
}

std::string_view DescribeReason(UnknownReason reason) {
    switch (reason) {
        case UnknownReason::SpecialObject:
            return "This is a FIFO, a socket or a device.";
        case UnknownReason::LeadsNowhere:
            return "This is a link that leads nowhere or in circles.";
        case UnknownReason::NotTold:
            return "What this is could not be found out.";
        case UnknownReason::None:
            break;
    }
    return {};
}

}  // namespace vantrel
