#pragma once

#include <random>
#include <string>

#include "diagnostics/error_reporter.h"
#include "settings/options.h"
#include "support/scripted_ports.h"
#include "views/result_panes.h"

namespace vantrel::testing {

// One half of a pair as tests name it.
struct Half {
    ResultType type = ResultType::None;
    std::int64_t size = 0;
};

inline void AddPair(HoldLists& hold, const std::string& name, Half left, Half right) {
    for (Side side : kBothSides) {
        const Half& half = side == Side::Left ? left : right;
        if (half.type == ResultType::None) {
            hold[side].AddPlaceholder();
            continue;
        }
        const bool folder = half.type >= ResultType::IdenticalFolder;
        const std::string text = folder ? kFolderMarker + name : name;
        ResultRow row;
        row.text = text;
        row.realName = name;
        row.size = Currency::FromWhole(half.size);
        row.lastWrite = FileTime::FromUnix(1'600'000'000 + half.size, 0);
        row.type = half.type;
        row.kind = folder ? RowKind::Folder : RowKind::File;
        hold[side].AddCopy(row);
    }
}

// A random result of `pairs` pairs, in which all ten kinds of pair occur; files first.
inline void FillAtRandom(HoldLists& hold, std::size_t pairs, std::mt19937& random) {
    using enum ResultType;
    static constexpr std::array<std::array<ResultType, 2>, 10> kPairs{{{Newer, Older},
                                                                       {Older, Newer},
                                                                       {Same, Same},
                                                                       {Binary, Binary},
                                                                       {Orphan, None},
                                                                       {None, Orphan},
                                                                       {IdenticalFolder, IdenticalFolder},
                                                                       {DifferentFolder, DifferentFolder},
                                                                       {OrphanFolder, None},
                                                                       {None, OrphanFolder}}};
    for (Side side : kBothSides) hold[side].Reserve(hold[side].Count() + pairs);
    for (std::size_t i = 0; i < pairs; ++i) {
        const bool folder = i >= pairs - pairs / 4;
        const auto& types = kPairs[folder ? 6 + random() % 4 : random() % 6];
        const auto size = [&random] { return static_cast<std::int64_t>(random() % 3'000'000); };
        AddPair(hold, "name" + std::to_string(i) + ".txt", {types[0], size()}, {types[1], size()});
    }
}

// Panes with all they need, without a window.
struct PanesStage {
    SystemCalls calls;
    FileSystem files{calls};
    ProgramFolders folders;
    FakeClock clock;
    LocaleFormats locale{"en_US"};
    ScriptedMessages messages;
    ScriptedLoop loop;
    ErrorReporter reporter{files, folders, clock, locale, messages, loop};
    Options options;
    CViewSelections selections{options};
    HoldLists hold;
    BusyState busy;
    ResultPanes panes{hold, selections, reporter, messages, busy};

    const PaneList& Left() const { return panes.Pane(Side::Left); }
    const PaneList& Right() const { return panes.Pane(Side::Right); }
};

}  // namespace vantrel::testing
