#pragma once

#include <cstddef>
#include <memory>
#include <string_view>
#include <vector>

namespace vantrel {

// Owns the bytes of many short texts in a few large blocks. What Add returns stays valid for the life of the
// pool.
class TextPool {
  public:
    TextPool() = default;
    TextPool(const TextPool&) = delete;
    TextPool& operator=(const TextPool&) = delete;

    std::string_view Add(std::string_view text);
    // Bytes held in blocks, used or not.
    std::size_t Capacity() const { return capacity_; }

  private:
    static constexpr std::size_t kBlockSize = std::size_t{64} << 10;
    std::vector<std::unique_ptr<char[]>> blocks_;
    char* next_ = nullptr;
    std::size_t left_ = 0;
    std::size_t capacity_ = 0;
};

}  // namespace vantrel
