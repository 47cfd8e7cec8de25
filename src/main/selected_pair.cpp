#include "main/selected_pair.h"

#include "core/row_texts.h"
#include "platform/names/paths.h"

namespace vantrel {

std::optional<SelectedPair> SelectedPairOf(const AlignedPanes& panes) {
    const Side side = panes.CurrentListview().value_or(Side::Left);
    const PaneList& list = panes.Pane(side);
    const ResultRow* row = list.SelectedObject();
    if (row == nullptr) return std::nullopt;
    SelectedPair pair{side, *list.SelectedItem()};
    pair.rows[side] = row;
    pair.rows[Other(side)] = panes.CounterpartOf(side, pair.item);
    return pair;
}

bool AreTwoFiles(const SelectedPair& pair) {
    const ResultRow* other = pair.rows[Other(pair.side)];
    return pair.rows[pair.side]->kind == RowKind::File && other != nullptr && other->kind == RowKind::File;
}

PerSide<std::string> PathsOf(const SelectedPair& pair, const PerSide<std::string>& folders) {
    PerSide<std::string> paths;
    for (const Side side : kBothSides) paths[side] = ObjectPath(folders[side], *pair.rows[side]);
    return paths;
}

std::optional<SelectedPair> PairToShow(const AlignedPanes& panes, MessagePort& messages) {
    const auto tell = [&](const char* text) -> std::optional<SelectedPair> {
        messages.Ask({.title = "Show File Differences",
                      .text = text,
                      .icon = MessageIcon::Information,
                      .defaultAnswer = {}});
        return std::nullopt;
    };
    const auto pair = SelectedPairOf(panes);
    if (!pair) return tell("No file is selected");
    if (pair->rows[pair->side]->kind == RowKind::Folder) return tell("Selected object is not a file");
    if (!AreTwoFiles(*pair)) return tell("The selected file has no counterpart");
    return pair;
}

PerSide<std::string> PathsToCompare(const FileSystem& files, const AlignedPanes& panes,
                                    const PerSide<std::string>& folders) {
    const auto pair = SelectedPairOf(panes);
    PerSide<std::string> paths;
    for (const Side side : kBothSides) {
        if (!files.FolderExists(folders[side])) continue;
        paths[side] = NormalizePath(folders[side]);
        if (!pair || pair->rows[pair->side]->kind != RowKind::File) continue;
        const ResultRow* row = pair->rows[side];
        if (row == nullptr || !row->IsReal()) row = pair->rows[pair->side];
        if (const std::string path = ObjectPath(folders[side], *row); files.FileExists(path))
            paths[side] = path;
    }
    return paths;
}

}  // namespace vantrel
