#pragma once

#include <cstddef>
#include <optional>
#include <string>

#include "platform/files/file_system.h"
#include "platform/ports.h"
#include "views/aligned_panes.h"

namespace vantrel {

// The pair that the selected item of CurrentListview belongs to.
struct SelectedPair {
    Side side;
    std::size_t item;
    PerSide<const ResultRow*> rows{};  // the other one is null where it is not known
};

// Nothing where no item is selected that stands for an object. The left pane counts until one is pressed.
std::optional<SelectedPair> SelectedPairOf(const AlignedPanes& panes);
bool AreTwoFiles(const SelectedPair& pair);
// Of two files, in the folders that the panes show.
PerSide<std::string> PathsOf(const SelectedPair& pair, const PerSide<std::string>& folders);

// The two files whose differences are to be shown; where the selection is no such pair the user is told.
std::optional<SelectedPair> PairToShow(const AlignedPanes& panes, MessagePort& messages);

// What the boxes of a comparison of two files begin with: the file of the selected row in each folder,
// otherwise the folder, and nothing where that is not there.
PerSide<std::string> PathsToCompare(const FileSystem& files, const AlignedPanes& panes,
                                    const PerSide<std::string>& folders);

}  // namespace vantrel
