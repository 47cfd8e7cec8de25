#include "settings/store_checks.h"

namespace vantrel {

bool IsStoreReady(MessagePort& messages, const std::string& title, StoreAccess access,
                  const std::string& name, const std::string& section, const std::string& key) {
    const std::string stop = access == StoreAccess::Set ? "." : "";
    std::string text;
    if (name.empty())
        text = "Name property must be set first";
    else if (section.empty())
        text = "Section property must be set first" + stop;
    else if (key.empty())
        text = "Key property must be set first" + stop;
    else
        return true;
    messages.Ask({title, text, MessageIcon::Stop, MessageButtons::Ok, {}});
    return false;
}

}  // namespace vantrel
