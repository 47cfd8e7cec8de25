#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "core/compare_ports.h"
#include "core/pair_reader.h"

namespace vantrel {

// Where the percentage of a long reading goes. It is called at most once for each new value.
class ContentProgress {
  public:
    virtual ~ContentProgress() = default;
    // `percentage` is 0 to 100; `shown` is the name of the file, in the engine's form.
    virtual void SetPercentage(int percentage, std::string_view shown) = 0;
    // Whether the last piece of a file counts as well. The line of text in the progress window goes without.
    virtual bool ShowsLastPiece() const { return true; }
};

// lblFileName of the progress window: "37% - name". A bar of another window is a sink of that window.
class FileNameProgress : public ContentProgress {
  public:
    explicit FileNameProgress(CompareProgress& progress) : progress_(progress) {}
    void SetPercentage(int percentage, std::string_view shown) override {
        std::string text = std::to_string(percentage);
        progress_.SetFileName(text.append("% - ").append(shown));
    }
    bool ShowsLastPiece() const override { return false; }

  private:
    CompareProgress& progress_;
};

// The percentages of one file of `size` bytes, told as its blocks are begun. All must outlive the object.
class ReadingShown {
  public:
    ReadingShown(const ReadingRule& rule, std::uint64_t size, ContentProgress& progress,
                 std::string_view shown)
        : rule_(rule), size_(size), progress_(progress), shown_(shown) {}

    // The block that ends at `blockEnd` is begun.
    void Show(std::uint64_t blockEnd);
    // All blocks up to the one that ends at `end` were begun, some of them told before.
    void ShowUpTo(std::uint64_t end);

  private:
    const ReadingRule& rule_;
    std::uint64_t size_;
    ContentProgress& progress_;
    std::string_view shown_;
    std::uint64_t told_ = 0;
    int percentage_ = -1;
};

}  // namespace vantrel
