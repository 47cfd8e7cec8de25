#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "platform/error.h"
#include "platform/files/file_system.h"
#include "settings/ini_document.h"

namespace vantrel {

// A session ("*.vts") is a copy of the settings file, byte for byte, at the moment when it was saved: all
// options, and the recent folders.
inline constexpr std::string_view kSessionFiles = "Vantrel Session (*.vts)|*.vts";
inline constexpr std::size_t kMostSessionBytes = std::size_t{1} << 20;

// Why these bytes are no session that can be taken over, as the end of a sentence; empty where they are one.
// It is stricter than the reading of settings, which takes a default for whatever is wrong: a session must be
// text, must have each option that the program always writes, and each with a value that it can have. The
// filters, the window's place and the section of extras, which grows, may be missing.
std::string WhyNoSession(std::string_view bytes);

// Reads a session whole. A file that is none gives InvalidPropertyValue with the reason as its text; any
// other error is the system's. `bytes` changes on success only.
Error ReadSession(const FileSystem& files, std::string_view path, std::string& bytes);

// What a user is told of an error that ReadSession gave for `path`.
std::string DescribeSessionError(std::string_view path, const Error& error);

// The folder that a session leads to in "Source" or "Target": the most recent one. Empty where it has none.
std::string FolderOfSession(const IniDocument& session, std::string_view section);

}  // namespace vantrel
