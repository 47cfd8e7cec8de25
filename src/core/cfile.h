#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "core/seen_pool.h"
#include "core/size_rule.h"
#include "platform/currency.h"
#include "platform/locale/file_time.h"

namespace vantrel {

// One file of a scanned folder. There can be a great many of them, so it is small: its texts, and what was
// seen of it, live in the pools of the CDir that holds it.
class CFile {
  public:
    // `texts` is the name and right behind it its key; `keySize` is 0 where the name is its own key.
    CFile(std::string_view texts, std::size_t keySize, const Seen* seen, SizeRule rule)
        : text_(texts.data()),
          seen_(seen),
          nameSize_(static_cast<std::uint16_t>(texts.size() - keySize)),
          keySize_(static_cast<std::uint16_t>(keySize)),
          rule_(rule) {}
    // Of a link to a file.
    CFile(std::string_view texts, std::size_t keySize, const SeenLink* seen, SizeRule rule)
        : CFile(texts, keySize, static_cast<const Seen*>(seen), rule) {
        isLink_ = true;
    }

    // Without path, as it stands on the disk.
    std::string_view FileName() const { return {text_, nameSize_}; }
    // The name folded.
    std::string_view Key() const {
        return keySize_ == 0 ? FileName() : std::string_view(text_ + nameSize_, keySize_);
    }
    // By the rule of the run; of what a link leads to, as the time.
    Currency Size() const { return SizeByRule(isLink_ ? Link().targetSize : seen_->size, rule_); }
    FileTime LastWrite() const { return isLink_ ? Link().targetLastWrite : seen_->lastWrite; }  // UTC
    std::int32_t ModifiedDateHigh() const { return LastWrite().High(); }
    std::int32_t ModifiedDateLow() const { return LastWrite().Low(); }
    bool IsLink() const { return isLink_; }
    // Of the file, or the link, itself.
    const Seen* ItselfSeen() const { return seen_; }

  private:
    const SeenLink& Link() const { return static_cast<const SeenLink&>(*seen_); }

    const char* text_;
    const Seen* seen_;
    std::uint16_t nameSize_, keySize_;  // no file system has names that come near
    SizeRule rule_;
    bool isLink_ = false;
};
static_assert(sizeof(CFile) <= 24);

// One half of a pair, as the scan saw it.
struct ScannedFile {
    Currency size;       // by the size rule
    FileTime lastWrite;  // UTC
};

}  // namespace vantrel
