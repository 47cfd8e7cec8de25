#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "filetools/hunk.h"
#include "platform/locale/file_time.h"

namespace vantrel {

// A script of differences in the default form of `diff`, line by line.
class DiffOutput {
  public:
    virtual ~DiffOutput() = default;
    virtual std::int32_t OutputLineCount() const = 0;
    // The line at `index`, from 0, without its line end.
    virtual std::string OutputLine(std::int32_t index) const = 0;
    // The first line at or behind `from` that begins with a digit, OutputLineCount() where there is none.
    virtual std::int32_t NextHeader(std::int32_t from) const;
};

// The script of hunks over their texts, made when a line is asked for: it keeps four bytes a hunk. Lines
// asked for in order cost no more than their own length. The hunks and texts must outlive it.
class HunkOutput : public DiffOutput {
  public:
    HunkOutput() = default;
    // Throws ErrorException where the script has more lines than a number of 32 bits counts.
    HunkOutput(const std::vector<Hunk>& hunks, const PerSide<std::string_view>& texts);

    std::int32_t OutputLineCount() const override { return starts_.empty() ? 0 : starts_.back(); }
    std::string OutputLine(std::int32_t index) const override;
    std::int32_t NextHeader(std::int32_t from) const override;

  private:
    std::int64_t LinesOf(const Hunk& hunk) const;
    bool EndsIncomplete(const LineRange& range, Side side) const;
    std::string TextLine(const Hunk& hunk, Side side, LineNumber line) const;

    const std::vector<Hunk>* hunks_ = nullptr;
    PerSide<std::string_view> texts_;
    std::vector<std::int32_t> starts_;  // of each hunk's lines in the output, and behind the last
    // Where the last line of a text that was asked for stands, so that the next one is found from there.
    struct Place {
        LineNumber line = -1;
        std::uint64_t offset = 0;
    };
    mutable PerSide<Place> places_;
};

// Takes pieces of an output in order.
using TextSink = std::function<void(std::string_view piece)>;

// The same script whole, with LF behind each line, written piece by piece.
void WriteNormal(const std::vector<Hunk>& hunks, const PerSide<std::string_view>& texts,
                 const TextSink& sink);

// What stands behind "---" and "+++" of a unified script: the path, quoted where it holds what would end a
// name, and the time of the last write in UTC.
std::string UnifiedName(std::string_view path, FileTime lastWrite);

// A unified script with three lines around each hunk, as `patch` and reviewers take it. `names` are what
// stands behind
// "---" and "+++" (UnifiedName).
void WriteUnified(const std::vector<Hunk>& hunks, const PerSide<std::string_view>& texts,
                  const PerSide<std::string>& names, const TextSink& sink);

}  // namespace vantrel
