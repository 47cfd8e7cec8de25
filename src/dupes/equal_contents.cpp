#include "dupes/equal_contents.h"

#include <algorithm>
#include <cstring>
#include <map>
#include <numeric>
#include <string_view>
#include <unordered_map>
#include <utility>

#include "dupes/announced_files.h"
#include "platform/hashes.h"

namespace vantrel {

namespace {

constexpr std::size_t kEndBlock = std::size_t{16} << 10;
constexpr std::size_t kBlock = std::size_t{256} << 10;
constexpr std::size_t kBlockOnRotatingDisk = std::size_t{4} << 20;

using Members = std::vector<std::uint32_t>;  // numbers in the set

std::vector<char>& BufferOfThisThread(std::size_t which, std::size_t size) {
    static thread_local std::vector<char> buffers[2];
    if (buffers[which].size() < size) buffers[which].resize(size);
    return buffers[which];
}

// One set on its way to its classes.
class SetReader {
  public:
    SetReader(const ContentSet& set, AnnouncedFiles& announced, const ContentTerms& terms,
              const StopFlag& stop)
        : set_(set), announced_(announced), terms_(terms), stop_(stop) {
        found_.classOf.resize(set.size());
        size_ = set.empty() ? 0 : set[0].seen.size;
    }

    ContentClasses Read() {
        Members all(set_.size());
        std::iota(all.begin(), all.end(), 0U);
        if (size_ <= kReadWhole)
            ReadSmall(all);
        else
            ReadLarge(all);
        return std::move(found_);
    }

  private:
    // Small files are held in memory, one for each content, as long as there is room.
    void ReadSmall(const Members& all) {
        Members overflow;
        std::vector<Members> classes;
        std::unordered_multimap<std::uint32_t, std::size_t> byPrint;
        std::vector<std::uint32_t> overflowPrints;
        const auto size = static_cast<std::size_t>(size_);
        const std::size_t slots =
            std::max<std::size_t>(terms_.heldAtOnce / std::max<std::size_t>(size, 1), 1);
        std::size_t used = 0;
        std::vector<char>& held = BufferOfThisThread(0, 0);
        for (const std::uint32_t i : all) {
            if (stop_.IsRequested()) return;
            // The place behind the last one held takes what is read.
            const std::size_t needed = std::max<std::size_t>((used + 1) * size, 1);
            if (held.size() < needed) held.resize(std::max(held.size() * 2, needed));
            char* const bytes = held.data() + used * size;
            if (!ReadWhole(i, bytes)) continue;
            const std::uint32_t print = Crc32Of({bytes, size});
            const auto [first, last] = byPrint.equal_range(print);
            const auto same = std::find_if(first, last, [&](const auto& each) {
                return std::memcmp(held.data() + each.second * size, bytes, size) == 0;
            });
            if (same != last) {
                classes[same->second].push_back(i);
            } else if (used < slots) {
                byPrint.emplace(print, used++);
                classes.push_back({i});
            } else {
                overflow.push_back(i);
                overflowPrints.push_back(print);
            }
        }
        for (std::size_t at = 0; at < classes.size(); ++at) {
            Close(classes[at], [&] {
                const std::unique_ptr<ContentHash> hash = terms_.hash();
                hash->Add(held.data() + at * size, size);
                return hash->Text();
            });
        }
        ReadOverflow(overflow, overflowPrints);
    }

    // What found no room is read once more where its print occurs twice.
    void ReadOverflow(const Members& members, const std::vector<std::uint32_t>& prints) {
        std::map<std::uint32_t, Members> byPrint;
        for (std::size_t i = 0; i < members.size(); ++i) byPrint[prints[i]].push_back(members[i]);
        for (const auto& [print, same] : byPrint) ReadOneByOne(same);
    }

    bool ReadWhole(std::uint32_t i, char* bytes) {
        ReadFile file = announced_.Take(i);
        std::size_t got = 0;
        const bool read = file.IsOpen() &&
                          file.ReadAt(0, bytes, static_cast<std::size_t>(size_), got).IsOk() && got == size_;
        announced_.GiveBack(std::move(file));
        Count(size_);
        return read;
    }

    void ReadLarge(const Members& all) {
        kept_.resize(set_.size());
        std::vector<Members> alike = DivideByEnds(all);
        for (Members& members : alike) {
            if (stop_.IsRequested()) return;
            if (members.size() <= terms_.openAtOnce)
                ReadSideBySide(members);
            else
                ReadByPrints(members);
        }
    }

    // Those with equal first and last blocks.
    std::vector<Members> DivideByEnds(const Members& all) {
        std::map<std::string, Members, std::less<>> byEnds;
        std::string ends;
        for (const std::uint32_t i : all) {
            if (stop_.IsRequested()) return {};
            ReadFile file = announced_.Take(i);
            ends.resize(kEndBlock * 2);
            const bool read = file.IsOpen() && ReadBlock(file, 0, ends.data(), kEndBlock) &&
                              ReadBlock(file, size_ - kEndBlock, ends.data() + kEndBlock, kEndBlock);
            if (read && all.size() <= terms_.openAtOnce)
                kept_[i] = std::move(file);
            else
                announced_.GiveBack(std::move(file));
            if (!read) {
                Count(size_);
                continue;
            }
            // The blocks of many files are too much to hold: two checks of them stand for them.
            if (all.size() > kEndsHeld) ends = PrintOf(ends);
            byEnds[ends].push_back(i);
        }
        std::vector<Members> alike;
        alike.reserve(byEnds.size());
        for (auto& [print, members] : byEnds) alike.push_back(std::move(members));
        // Files come first that were found first, whatever is in them.
        std::sort(alike.begin(), alike.end());
        return alike;
    }

    // Too many to be open at once: those with equal prints are compared two at a time.
    void ReadByPrints(const Members& members) {
        std::map<std::uint32_t, Members> byPrint;
        for (const std::uint32_t i : members) {
            std::uint32_t print = 0;
            if (!PrintOfFile(i, print)) continue;
            byPrint[print].push_back(i);
        }
        for (const auto& [print, same] : byPrint) ReadOneByOne(same);
    }

    bool PrintOfFile(std::uint32_t i, std::uint32_t& print) {
        std::vector<char>& block = BufferOfThisThread(1, Block());
        ReadFile file = announced_.OpenAgain(i);
        Crc32 crc;
        bool read = file.IsOpen();
        for (std::uint64_t at = 0; read && at < size_ && !stop_.IsRequested();) {
            const std::size_t length = LengthAt(at);
            read = ReadBlock(file, at, block.data(), length);
            if (read) crc.Add(block.data(), length);
            Count(read ? length : size_ - at);
            at += length;
        }
        announced_.GiveBack(std::move(file));
        print = crc.Value();
        return read && !stop_.IsRequested();
    }

    // The first of them with each of the others; then what differs from it, in the same way.
    void ReadOneByOne(Members members) {
        while (!members.empty() && !stop_.IsRequested()) {
            Members same{members[0]}, rest;
            if (members.size() > 1 || set_[members[0]].wantsHash) {
                for (std::size_t i = 1; i < members.size() && !stop_.IsRequested(); ++i)
                    (IsEqual(members[0], members[i]) ? same : rest).push_back(members[i]);
            }
            std::string hash;
            Close(same, [&] { return HashOfFile(same[0]); });
            members = std::move(rest);
        }
    }

    bool IsEqual(std::uint32_t a, std::uint32_t b) {
        std::vector<char>& first = BufferOfThisThread(0, Block());
        std::vector<char>& second = BufferOfThisThread(1, Block());
        ReadFile files[2]{announced_.OpenAgain(a), announced_.OpenAgain(b)};
        bool equal = files[0].IsOpen() && files[1].IsOpen();
        for (std::uint64_t at = 0; equal && at < size_;) {
            const std::size_t length = LengthAt(at);
            equal = !stop_.IsRequested() && ReadBlock(files[0], at, first.data(), length) &&
                    ReadBlock(files[1], at, second.data(), length) &&
                    std::memcmp(first.data(), second.data(), length) == 0;
            at += length;
        }
        for (ReadFile& file : files) announced_.GiveBack(std::move(file));
        return equal;
    }

    std::string HashOfFile(std::uint32_t i) {
        std::vector<char>& block = BufferOfThisThread(1, Block());
        const std::unique_ptr<ContentHash> hash = terms_.hash();
        ReadFile file = announced_.OpenAgain(i);
        bool read = file.IsOpen();
        for (std::uint64_t at = 0; read && at < size_ && !stop_.IsRequested();) {
            const std::size_t length = LengthAt(at);
            read = ReadBlock(file, at, block.data(), length);
            if (read) hash->Add(block.data(), length);
            at += length;
        }
        announced_.GiveBack(std::move(file));
        return read ? hash->Text() : std::string();
    }

    struct Open {
        std::uint32_t number;
        ReadFile file;
    };
    // All of them open, block by block, each against the first.
    void ReadSideBySide(const Members& members) {
        if (members.size() == 1 && !set_[members[0]].wantsHash) {
            Close(members, [] { return std::string(); });
            Count(size_);
            return;
        }
        std::vector<Open> open;
        for (const std::uint32_t i : members) {
            open.push_back({i, kept_[i].IsOpen() ? std::move(kept_[i]) : announced_.OpenAgain(i)});
            if (open.back().file.IsOpen()) continue;
            open.pop_back();
            Count(size_);
        }
        ReadOn(std::move(open), 0, terms_.hash());
    }

    // All are equal up to `at`, and `hash` has seen that.
    void ReadOn(std::vector<Open> open, std::uint64_t at, std::unique_ptr<ContentHash> hash) {
        while (at < size_ && IsWorthReading(open) && !stop_.IsRequested()) {
            const std::size_t length = LengthAt(at);
            std::vector<char>& first = BufferOfThisThread(0, Block());
            if (!ReadBlock(open[0].file, at, first.data(), length)) {
                Leave(open[0], at);
                open.erase(open.begin());
                continue;
            }
            std::vector<Open> others = Part(open, at, length, first);
            std::unique_ptr<ContentHash> before = others.empty() ? nullptr : hash->Clone();
            hash->Add(first.data(), length);
            Count(length * open.size());
            if (!others.empty()) ReadOn(std::move(others), at, std::move(before));
            at += length;
        }
        Members members;
        for (Open& each : open) {
            members.push_back(each.number);
            Leave(each, at);
        }
        if (!stop_.IsRequested() && !members.empty()) Close(members, [&] { return hash->Text(); });
    }

    bool IsWorthReading(const std::vector<Open>& open) const {
        return open.size() > 1 || (open.size() == 1 && set_[open[0].number].wantsHash);
    }

    // Takes those out that differ from the first in the block; what cannot be read goes altogether.
    std::vector<Open> Part(std::vector<Open>& open, std::uint64_t at, std::size_t length,
                           const std::vector<char>& first) {
        std::vector<char>& second = BufferOfThisThread(1, Block());
        std::vector<Open> others, same;
        same.push_back(std::move(open[0]));
        for (std::size_t i = 1; i < open.size(); ++i) {
            if (!ReadBlock(open[i].file, at, second.data(), length)) {
                Leave(open[i], at);
                continue;
            }
            const bool equal = std::memcmp(first.data(), second.data(), length) == 0;
            (equal ? same : others).push_back(std::move(open[i]));
        }
        open = std::move(same);
        return others;
    }

    void Leave(Open& open, std::uint64_t at) {
        announced_.GiveBack(std::move(open.file));
        Count(size_ - at);
    }

    // Makes a class of those that are still what was seen. The hash is asked for where it is wanted.
    template <typename Hash>
    void Close(const Members& members, const Hash& hash) {
        const auto number = static_cast<std::uint32_t>(found_.hashes.size() + 1);
        std::size_t count = 0;
        bool wanted = false;
        for (const std::uint32_t i : members) {
            // One alone is equal to nothing, whatever it has become.
            if (members.size() > 1 && !IsStill(i)) continue;
            found_.classOf[i] = number;
            wanted = wanted || set_[i].wantsHash;
            ++count;
        }
        found_.hashes.push_back(count > 1 || wanted ? hash() : std::string());
        if ((count > 1 || wanted) && found_.hashes.back().empty())
            for (const std::uint32_t i : members) found_.classOf[i] = 0;
    }

    // Opening it again takes fewer calls than any other look at all that was seen.
    bool IsStill(std::uint32_t i) {
        ReadFile now = announced_.OpenAgain(i);
        const bool still = now.IsOpen();
        announced_.GiveBack(std::move(now));
        return still;
    }

    static bool ReadBlock(ReadFile& file, std::uint64_t at, char* bytes, std::size_t length) {
        std::size_t got = 0;
        return file.ReadAt(at, bytes, length, got).IsOk() && got == length;
    }

    static std::string PrintOf(const std::string& bytes) {
        const std::size_t half = bytes.size() / 2;
        const std::string_view text = bytes;
        return HexText(Crc32Of(text.substr(0, half))) + HexText(Crc32Of(text.substr(half)));
    }

    std::size_t Block() const { return terms_.turn ? kBlockOnRotatingDisk : kBlock; }
    std::size_t LengthAt(std::uint64_t at) const {
        return static_cast<std::size_t>(std::min<std::uint64_t>(Block(), size_ - at));
    }
    void Count(std::uint64_t bytes) const { terms_.bytesDone->fetch_add(bytes, std::memory_order_relaxed); }

    static constexpr std::size_t kEndsHeld = 256;

    const ContentSet& set_;
    AnnouncedFiles& announced_;
    const ContentTerms& terms_;
    const StopFlag& stop_;
    std::uint64_t size_ = 0;
    std::vector<ReadFile> kept_;  // open from the look at their ends, as long as these are few
    ContentClasses found_;
};

}  // namespace

std::vector<ContentClasses> FindEqualContents(const FileSystem& files, const std::vector<ContentSet>& sets,
                                              const ContentTerms& terms, const StopFlag& stop) {
    const bool inTurn = terms.turn && terms.waits->load(std::memory_order_relaxed);
    const auto turn = inTurn ? std::unique_lock(*terms.turn) : std::unique_lock<std::mutex>();
    AnnouncedFiles announced(files, sets, terms);
    std::vector<ContentClasses> found;
    found.reserve(sets.size());
    for (const ContentSet& set : sets) {
        if (stop.IsRequested()) break;
        announced.Begin(set);
        found.push_back(SetReader(set, announced, terms, stop).Read());
    }
    announced.TellPace();
    return found;
}

}  // namespace vantrel
