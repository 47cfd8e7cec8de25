#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "dupes/cls_dupe_settings.h"
#include "platform/ports.h"

namespace vantrel {

// What the user does before a search, with the questions that belong to it. Each writes the settings.

// At the very first opening of the window.
void TellImportantInformation(MessagePort& messages, clsDupeSettings& settings);

enum class IgnoreOption : std::uint8_t { ZeroByteFiles, SystemFiles, HiddenFiles, FilesInWindowsDir };
bool IsIgnored(const clsDupeSettings& settings, IgnoreOption option);
// Of the last three the user is warned before one is unchecked, No being the default.
void FlipIgnoreOption(MessagePort& messages, clsDupeSettings& settings, IgnoreOption option);

// False where the list has it already, which is told. `path` is full and in the engine's form.
bool AddSearchFolder(MessagePort& messages, clsDupeSettings& settings, const std::string& path);
// Lets the user edit the folder of this number. False where nothing changed.
bool EditSearchFolder(MessagePort& messages, clsDupeSettings& settings, std::size_t number);

// MoveToOtherFolder asks for the folder each time. False where none was chosen, which is told; the method
// then stays.
bool ChooseRemoveMethod(MessagePort& messages, clsDupeSettings& settings, RemovalMethod method);

}  // namespace vantrel
