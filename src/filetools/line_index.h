#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "filetools/cancel_check.h"
#include "filetools/hunk.h"

namespace vantrel {

// Where each line of a text begins: eight bytes a line. The text must outlive it.
class LineIndex {
  public:
    LineIndex() = default;
    // Throws ErrorException where the text has more than kMostLines lines.
    LineIndex(std::string_view text, const CancelCheck& check);

    LineNumber Count() const { return static_cast<LineNumber>(starts_.empty() ? 0 : starts_.size() - 1); }
    // The line at `index`, from 0, without its LF or CR LF.
    std::string_view Line(LineNumber index) const;
    std::string_view Text() const { return text_; }
    // Where a line begins; of Count(), the end of the text.
    std::uint64_t Offset(LineNumber index) const {
        return starts_.empty() ? 0 : starts_[static_cast<std::size_t>(index)];
    }
    // The index of the line that holds the byte at `offset`, which must be within the text.
    LineNumber LineOf(std::uint64_t offset) const;

  private:
    std::string_view text_;
    std::vector<std::uint64_t> starts_;  // and the end of the text
};

}  // namespace vantrel
