#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "core/toolbox.h"
#include "filetools/diff_output.h"
#include "filetools/line_diff.h"
#include "filetools/loaded_text.h"

namespace vantrel {

class Workers;

// Two texts and what differs between them. Shared by the engine and whoever shows it, and never changed.
struct FileDiff {
    PerSide<LoadedText> texts;
    LineLikeness likeness;
    std::vector<Hunk> hunks;
    bool lineEndsIgnored = false;  // TextForm::ForReading, and they differ

    PerSide<std::string_view> Views() const {
        return {{texts[Side::Left].Text(), texts[Side::Right].Text()}};
    }
};

// Compares two files line by line. One object, GlobalDiffObject, lives for the whole run of the program; it
// keeps the output of the last comparison. Large files are read and
// split into lines by two threads below; all else runs where it is
// called, yields to the event loop and hears a cancel within some 15 milliseconds.
class FileDiffEngine : public DiffOutput {
  public:
    static constexpr std::int32_t kIdentical = 0, kDiffer = 1, kFailed = 2;

    explicit FileDiffEngine(const Toolbox& tools);
    ~FileDiffEngine() override;

    bool IgnoreCase = false;
    bool IgnoreWhitespace = false;
    TextForm Form = TextForm::AsStored;
    PerSide<std::string> Encodings;  // one for a side, empty: found by itself
    MatchLimits Limits;

    // kIdentical: nothing to show, no line of the one differs from the other's. kDiffer: the output holds the
    // script; or one line "Binary files LEFT RIGHT differ"; or one line that says in words that the files
    // differ only in the way they are stored (DiffersOnlyInForm). kFailed: the output is the text of the
    // error. A cancel passes through as Cancelled and leaves no output.
    std::int32_t CompareFiles(const std::string& fileOne, const std::string& fileTwo);

    std::int32_t OutputLineCount() const override;
    std::string OutputLine(std::int32_t index) const override;
    std::int32_t NextHeader(std::int32_t from) const override;

    // Of the last comparison that gave kDiffer or kIdentical; null where there is none.
    const std::shared_ptr<const FileDiff>& Result() const { return result_; }
    // The texts are the same, and the files are not: another encoding, byte order mark or line ends.
    // OutputLine(0) is then a sentence for the user.
    bool DiffersOnlyInForm() const { return differsOnlyInForm_; }
    // The texts of the last comparison were no texts.
    bool IsBinary() const { return isBinary_; }
    // Gives the memory of the last comparison back, as when its window closes.
    void Release();

  private:
    CancelCheck Check() const;
    bool MayUseWorkers(std::uint64_t bytes);
    PerSide<LoadedText> Load(const PerSide<std::string>& paths, bool sideBySide);
    TableMaker TablesSideBySide(const std::shared_ptr<const FileDiff>& diff);
    std::int32_t Compare(const PerSide<std::string>& paths);
    std::int32_t SayOneLine(std::int32_t code, std::string line);

    const Toolbox& tools_;
    std::unique_ptr<Workers> workers_;
    std::shared_ptr<const FileDiff> result_;
    HunkOutput output_;
    std::string onlyLine_;  // the whole output where there is no script
    bool differsOnlyInForm_ = false;
    bool isBinary_ = false;
};

// "LEFT: UTF-8 with byte order mark, CR LF" in words for a status bar or a message.
std::string FormText(const LoadedText& text);

}  // namespace vantrel
