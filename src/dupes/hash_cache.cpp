#include "dupes/hash_cache.h"

#include <map>
#include <utility>

namespace vantrel {

void HashCache::UseMethod(HashMethod method) {
    if (method == method_) return;
    method_ = method;
    hashes_.assign(hashes_.size(), {});
}

void HashCache::Clear() {
    known_.clear();
    hashes_.assign(1, {});
    goings_ = 0;
}

const HashCache::Known* HashCache::Find(const Seen& seen) const {
    const auto found = known_.find(seen);
    return found == known_.end() ? nullptr : &found->second;
}

bool HashCache::MustRead(FoundFiles& found, const std::vector<std::uint32_t>& numbers,
                         Question& question) const {
    question = {};
    question.numbers = numbers;
    std::map<std::uint32_t, std::uint32_t> askedFor;  // by number of contents
    std::vector<std::uint32_t> standsFor;             // by file asked: how many
    std::vector<std::uint32_t> contents, first;       // likewise
    bool oneGoing = true;
    std::uint32_t going = 0;
    for (const std::uint32_t number : numbers) {
        const Known* const known = Find(found[number].seen);
        if (!known || (going != 0 && known->going != going)) oneGoing = false;
        if (known) going = known->going;
        const auto next = static_cast<std::uint32_t>(standsFor.size());
        const std::uint32_t asked = known ? askedFor.try_emplace(known->contents, next).first->second : next;
        question.asked.push_back(asked);
        if (asked == next) {
            standsFor.push_back(0);
            contents.push_back(known ? known->contents : 0);
            question.files.push_back({{}, found[number].seen, false});
            first.push_back(number);
        }
        ++standsFor[asked];
    }
    bool hashesKnown = true;
    for (std::size_t i = 0; i < standsFor.size(); ++i) {
        question.files[i].wantsHash = standsFor[i] > 1 && hashes_[contents[i]].empty();
        hashesKnown = hashesKnown && !question.files[i].wantsHash;
    }
    if (oneGoing && hashesKnown) {
        for (std::size_t i = 0; i < numbers.size(); ++i) {
            DupeFile& file = found[numbers[i]];
            file.contents = contents[question.asked[i]];
            found.SetHash(file, hashes_[file.contents]);
        }
        return false;
    }
    for (std::size_t i = 0; i < first.size(); ++i) question.files[i].path = found.PathOf(first[i]);
    return true;
}

void HashCache::Learn(FoundFiles& found, const Question& question, const ContentClasses& answer) {
    const std::uint32_t going = ++goings_;
    std::vector<std::uint32_t> contentsOf(answer.hashes.size());
    for (std::size_t i = 0; i < answer.hashes.size(); ++i) {
        contentsOf[i] = static_cast<std::uint32_t>(hashes_.size());
        hashes_.push_back(answer.hashes[i]);
    }
    // One that stands for several and was met by no other: its hash may be known from before.
    for (std::size_t i = 0; i < question.numbers.size(); ++i) {
        const std::uint32_t type = answer.classOf[question.asked[i]];
        const Known* const before = Find(found[question.numbers[i]].seen);
        if (type == 0 || !before) continue;
        std::string& hash = hashes_[contentsOf[type - 1]];
        if (hash.empty()) hash = hashes_[before->contents];
    }
    for (std::size_t i = 0; i < question.numbers.size(); ++i) {
        DupeFile& file = found[question.numbers[i]];
        const std::uint32_t type = answer.classOf[question.asked[i]];
        if (type == 0) {
            file.contents = 0;
            found.SetHash(file, found.PathOf(file));
            known_.erase(file.seen);
            continue;
        }
        file.contents = contentsOf[type - 1];
        found.SetHash(file, hashes_[file.contents]);
        known_[file.seen] = {going, file.contents};
    }
}

}  // namespace vantrel
