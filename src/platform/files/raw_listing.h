#pragma once

#include <dirent.h>

#include <cstddef>
#include <utility>

#include "platform/files/system_calls.h"

namespace vantrel {

// Hands each entry but "." and ".." of what getdents gave to `sink`, until `sink(const dirent64&)` gives
// false; the result is then false. `buffer` is aligned as dirent64 is.
template <typename Sink>
bool ForEachEntryIn(const std::byte* buffer, ssize_t size, Sink&& sink) {
    const auto isDotOrDotDot = [](const char* name) {
        return name[0] == '.' && (name[1] == 0 || (name[1] == '.' && name[2] == 0));
    };
    for (ssize_t at = 0; at < size;) {
        const auto* entry = reinterpret_cast<const dirent64*>(buffer + at);
        at += entry->d_reclen;
        if (!isDotOrDotDot(entry->d_name) && !sink(*entry)) return false;
    }
    return true;
}

// The one loop over getdents: hands out the entries of the open folder `fd` from where the descriptor stands
// to the folder's end, or until the sink gives false. 0, or minus the errno value of an error in the middle:
// what was handed out until then is not the whole folder.
template <typename Sink>
int ForEachRawEntry(SystemCalls& calls, int fd, std::byte* buffer, std::size_t bufferSize, Sink&& sink) {
    while (true) {
        const ssize_t size = calls.GetDents(fd, buffer, bufferSize);
        if (size <= 0) return static_cast<int>(size);
        if (!ForEachEntryIn(buffer, size, sink)) return 0;
    }
}

}  // namespace vantrel
