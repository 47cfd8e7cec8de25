#pragma once

#include <string>

#include "core/toolbox.h"

namespace vantrel {

// What a property page shows of one object; of a link itself where the object is one.
struct ObjectProperties {
    std::string path, name, folder;
    EntryKind kind = EntryKind::Other;
    bool isLink = false;
    std::string leadsTo;                      // of a link, in the engine's form
    Currency size;                            // of a file
    std::string created, accessed, modified;  // date and time as shown; `created` can be empty
    std::string owner, group;                 // names, or numbers where there are none
    std::uint32_t mode = 0;                   // permission bits
};

Error ReadProperties(const Toolbox& tools, const std::string& path, ObjectProperties& out);

// Sets the nine bits of reading, writing and executing; all other bits of the mode stay. Not for links.
Error ApplyPermissions(const Toolbox& tools, const std::string& path, std::uint32_t mode);

}  // namespace vantrel
