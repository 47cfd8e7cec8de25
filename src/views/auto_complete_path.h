#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/files/file_system.h"
#include "platform/ports.h"

namespace vantrel {

// The box whose text is completed. The text is as the user typed it, in UTF-8, and counted in bytes.
class AutoCompleteBox {
  public:
    virtual ~AutoCompleteBox() = default;
    virtual std::string Text() const = 0;
    // Shows `text` with what stands behind the first `selectFrom` bytes selected, so that further typing
    // replaces it.
    virtual void SetTextWithProposal(const std::string& text, std::size_t selectFrom) = 0;
};

// modAutoCompletePath: proposes the rest of one folder level while a path is typed. It yields while it
// searches; a key typed meanwhile ends the search, and another one begins with the text as it is then.
class AutoCompletePath {
  public:
    AutoCompletePath(const FileSystem& files, EventLoopPort& loop) : files_(files), loop_(loop) {}

    // The last key was a printable one, or was not.
    void SetArmed(bool armed) { armed_ = armed; }
    // The box's text has changed.
    void Run(AutoCompleteBox& box);

  private:
    struct Match {
        std::size_t replaced = 0;  // bytes at the end of the typed text that `named` stands for
        std::string named;         // the same characters in the match's own letter case
        std::string proposal;      // what comes behind them, up to and with the next "/"
    };
    std::optional<Match> Find(const std::string& typed);
    std::optional<Match> FindEntry(std::string_view folder, std::string_view last);
    bool IsFolder(std::string_view path) const;

    const FileSystem& files_;
    EventLoopPort& loop_;
    bool armed_ = false;
    bool searching_ = false;
};

}  // namespace vantrel
