#include "platform/text_pool.h"

#include <algorithm>
#include <cstring>

namespace vantrel {

std::string_view TextPool::Add(std::string_view text) {
    if (text.empty()) return {};
    if (text.size() > left_) {
        const std::size_t size = std::max(kBlockSize, text.size());
        blocks_.push_back(std::make_unique_for_overwrite<char[]>(size));
        next_ = blocks_.back().get();
        left_ = size;
        capacity_ += size;
    }
    std::memcpy(next_, text.data(), text.size());
    const std::string_view added(next_, text.size());
    next_ += text.size();
    left_ -= text.size();
    return added;
}

}  // namespace vantrel
