#pragma once

#include "shell/shell_run.h"

namespace vantrel::shell {

// A file, link or folder under a temporary name in the folder where it is to stand. It goes away at the end,
// with all that was put into it, unless it was published.
class TemporaryFile {
  public:
    // The folder must be held by a shared pointer, in which this takes part.
    TemporaryFile(Shared& shared, const Folder& folder)
        : shared_(shared), folder_(folder.shared_from_this()), place_{&folder, {}} {}
    ~TemporaryFile();
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    // An empty file of mode 0600, open for reading and writing, and locked as long as it is open. 0 or minus
    // errno, as below.
    int Create();
    int CreateLink(const char* target);
    int CreateFolder();  // of mode 0700
    int Fd() const { return fd_.Get(); }
    const Place& Where() const { return place_; }
    // To be called when all is written. Network file systems tell only here that the data could not be
    // stored.
    int Close() { return fd_.Close(); }
    // Gives it its name, in the same folder. What stands there is replaced where it still is `replaces`, and
    // is left alone and told otherwise; null: nothing may stand there.
    Error Publish(const Place& to, const Statx* replaces);

  private:
    void NextName();
    Shared& shared_;
    std::shared_ptr<const Folder> folder_;
    Place place_;
    Descriptor fd_;
    bool stands_ = false;
    bool isFolder_ = false;
};

// Removes from `folder` what a killed process has left there: a file, link or folder with all in it, with a
// temporary name of this machine and this user's own, whose process is gone and which nobody holds locked.
// In such a folder are copies alone, none of which had counted as done. Done once
// for each folder in the life of `shared`. What cannot be looked at or removed stays for the next time.
void SweepTemporaryFiles(Shared& shared, const Folder& folder);

}  // namespace vantrel::shell
