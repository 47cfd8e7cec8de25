#pragma once

#include <functional>
#include <memory>
#include <string>

#include "settings/option_values.h"

namespace vantrel {

// The hash of one stretch of bytes after the other. Of one thread at a time.
class ContentHash {
  public:
    virtual ~ContentHash() = default;
    virtual void Add(const void* bytes, std::size_t size) = 0;
    // Of all that was added; nothing may be added afterwards.
    virtual std::string Text() = 0;
    virtual std::unique_ptr<ContentHash> Clone() const = 0;
};

// Makes a hash. Any thread may call it. Throws ErrorException where this machine has no such hash.
using ContentHashMaker = std::function<std::unique_ptr<ContentHash>()>;

// CRCs as signed numbers in decimal, an MD5 in upper-case hexadecimal.
ContentHashMaker HashMakerFor(HashMethod method);

}  // namespace vantrel
