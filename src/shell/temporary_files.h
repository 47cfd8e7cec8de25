#pragma once

#include "shell/shell_run.h"

namespace vantrel::shell {

// A file, or a link, under a temporary name in the folder where it is to stand. It goes away at the end
// unless it was published.
class TemporaryFile {
  public:
    TemporaryFile(Shared& shared, const Folder& folder) : shared_(shared), place_{&folder, {}} {}
    ~TemporaryFile();
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    // An empty file of mode 0600, open for reading and writing and locked. 0 or minus errno, as below.
    int Create();
    int CreateLink(const char* target);
    int Fd() const { return fd_.Get(); }
    const Place& Where() const { return place_; }
    // Gives it its name. Without `replace` nothing is replaced: -EEXIST.
    int Publish(const Place& to, bool replace);

  private:
    void NextName();
    Shared& shared_;
    Place place_;
    Descriptor fd_;
    bool stands_ = false;
};

// Removes from `folder` what a killed process has left there: a file or link, with a temporary name of this
// machine and this user's own, whose process is gone and which nobody holds locked. Done once for each folder
// in the life of `shared`. What cannot be looked at or removed stays for the next time.
void SweepTemporaryFiles(Shared& shared, const Folder& folder);

}  // namespace vantrel::shell
