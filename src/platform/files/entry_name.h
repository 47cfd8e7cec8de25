#pragma once

#include <cstring>
#include <string>
#include <string_view>

#include "platform/names/names.h"

namespace vantrel {

// The name of an entry of a folder, brought into the system's bytes for one call and, as nearly all names are
// short and plain, without an allocation. For the sources of the file system only.
class EntryName {
  public:
    explicit EntryName(std::string_view name) {
        // Only carrying characters differ in the system's bytes, and they all begin with this one.
        constexpr char kCarrierLead = '\xF4';
        if (name.size() < sizeof short_ && name.find(kCarrierLead) == std::string_view::npos) {
            std::memcpy(short_, name.data(), name.size());
            short_[name.size()] = '\0';
            size_ = name.size();
        } else {
            long_ = NameToSystem(name);
            size_ = long_.size();
        }
    }

    const char* Bytes() const { return long_.empty() ? short_ : long_.c_str(); }
    // False where a NUL stands in it, so that a call would take it for a shorter one.
    bool IsWhole() const { return std::strlen(Bytes()) == size_; }

  private:
    char short_[256];  // NAME_MAX and the NUL
    std::string long_;
    std::size_t size_;
};

}  // namespace vantrel
