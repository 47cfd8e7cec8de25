#pragma once

#include <dirent.h>

#include <cstddef>
#include <utility>

#include "platform/files/system_calls.h"

namespace vantrel {

// The one loop over getdents: hands each entry of the open folder `fd` but "." and ".." to `sink`, from where
// the descriptor stands to the folder's end or until `sink(const dirent64&)` gives false. `buffer` is aligned
// as dirent64 is. 0, or minus the errno value of an error in the middle: what was handed out until then is
// not the whole folder.
template <typename Sink>
int ForEachRawEntry(SystemCalls& calls, int fd, std::byte* buffer, std::size_t bufferSize, Sink&& sink) {
    const auto isDotOrDotDot = [](const char* name) {
        return name[0] == '.' && (name[1] == 0 || (name[1] == '.' && name[2] == 0));
    };
    while (true) {
        const ssize_t size = calls.GetDents(fd, buffer, bufferSize);
        if (size <= 0) return static_cast<int>(size);
        for (ssize_t at = 0; at < size;) {
            const auto* entry = reinterpret_cast<const dirent64*>(buffer + at);
            at += entry->d_reclen;
            if (!isDotOrDotDot(entry->d_name) && !sink(*entry)) return 0;
        }
    }
}

}  // namespace vantrel
