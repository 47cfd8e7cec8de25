#pragma once

#include <string>
#include <vector>

#include "platform/forms/desktop.h"

namespace vantrel::testing {

// Keeps what it was asked to open; `works` is its answer.
class RecordingDesktop : public Desktop {
  public:
    bool OpenFile(const std::string& path) override { return Keep("open " + path); }
    bool OpenInTextEditor(const std::string& path) override { return Keep("edit " + path); }
    bool Explore(const std::string& folder) override { return Keep("explore " + folder); }
    bool OpenAddress(const std::string& address) override { return Keep("address " + address); }

    std::vector<std::string> asked;
    bool works = true;

  private:
    bool Keep(const std::string& what) {
        asked.push_back(what);
        return works;
    }
};

}  // namespace vantrel::testing
