#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace vantrel {

// Files as programs hand them to each other in drag and drop: "text/uri-list", one "file:" URI a line, with
// the bytes of a name percent-encoded.

// The path of one URI in the engine's form; empty for what names no file of this machine, and for a path that
// is not absolute.
std::string PathFromFileUri(std::string_view uri);
// Comments, blank lines and what is no file are passed over.
std::vector<std::string> PathsFromUriList(std::string_view list);

std::string FileUri(std::string_view path);
// Each line ends in CR LF.
std::string UriListFromPaths(const std::vector<std::string>& paths);

}  // namespace vantrel
