#pragma once

#include <functional>
#include <string_view>

#include "platform/files/file_system.h"

namespace vantrel {

// Stores the next piece of a content; throws ErrorException where that fails.
using PieceSink = std::function<void(std::string_view piece)>;

// As FileSystem::ReplaceFile does, for content that need not fit into memory: `make` is called once and hands
// its pieces, best of 64 KiB or more, to the sink. Where a piece cannot be stored, or `make` throws, the old
// file stays as it was. An ErrorException is given back as its error; anything else, a cancel, comes out.
Error ReplaceFileInPieces(const FileSystem& files, std::string_view path,
                          const std::function<void(const PieceSink& sink)>& make);

}  // namespace vantrel
