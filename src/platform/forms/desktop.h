#pragma once

#include <string>

namespace vantrel {

// What the user's desktop does for the program. Each call only starts something and returns at once; false
// where nothing could be started.
class Desktop {
  public:
    virtual ~Desktop() = default;
    // A file with its default program. `path` is absolute and in the engine's form.
    virtual bool OpenFile(const std::string& path) = 0;
    // A file with the text editor, whatever kind of file it is.
    virtual bool OpenInTextEditor(const std::string& path) = 0;
    // A folder in the file manager.
    virtual bool Explore(const std::string& folder) = 0;
    // An address of the web, or one that begins a mail.
    virtual bool OpenAddress(const std::string& address) = 0;
};

class QtDesktop : public Desktop {
  public:
    bool OpenFile(const std::string& path) override;
    bool OpenInTextEditor(const std::string& path) override;
    bool Explore(const std::string& folder) override;
    bool OpenAddress(const std::string& address) override;
};

}  // namespace vantrel
