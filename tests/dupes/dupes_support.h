#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <functional>
#include <random>
#include <set>
#include <string>
#include <vector>

#include "dupes/duplicate_finder.h"
#include "platform/hashes.h"
#include "support/faulty_system_calls.h"
#include "support/temp_folder.h"
#include "support/test_toolbox.h"

namespace vantrel::testing {

class RecordingDupeProgress : public DupeProgress {
  public:
    void SetStatus(std::string_view text) override {
        statuses.emplace_back(text);
        if (onStatus) onStatus(text);
    }
    void SetFigures(const DupeFigures& now) override { figures = now; }
    void SetBar(std::int64_t value, std::int64_t maximum) override {
        bar = {value, maximum};
        most = std::max(most, value);
    }
    void SetSearching(bool on) override { searching = on; }

    std::vector<std::string> statuses;
    std::function<void(std::string_view)> onStatus;
    DupeFigures figures;
    std::pair<std::int64_t, std::int64_t> bar;
    std::int64_t most = 0;
    bool searching = false;
};

// Eight bits: it sends unequal files into one key all the time.
inline ContentHashMaker WeakHash() {
    class Weak : public ContentHash {
      public:
        void Add(const void* bytes, std::size_t size) override { crc_.Add(bytes, size); }
        std::string Text() override { return std::to_string(crc_.Value() & 0xFF); }
        std::unique_ptr<ContentHash> Clone() const override { return std::make_unique<Weak>(*this); }

      private:
        Crc32 crc_;
    };
    return [] { return std::make_unique<Weak>(); };
}

using Groups = std::set<std::set<std::string>>;  // of paths

class DupesTest : public ::testing::Test {
  protected:
    DupesTest() {
        order.folders = {drop / "in"};
        drop.MakeFolder("in");
    }

    std::string In(const std::string& name) const { return drop / ("in/" + name); }
    void Write(const std::string& name, std::string_view content, double time = 1'500'000'000) const {
        drop.Write("in/" + name, content, time);
    }
    DupeOutcome Find() { return finder.Find(order); }
    Groups Found() const {
        Groups groups;
        const DupeResults& results = finder.Results();
        for (const std::uint32_t group : results.Shown()) {
            std::set<std::string> paths;
            for (const std::uint32_t file : results.Group(group).members)
                paths.insert(results.Files().PathOf(file));
            groups.insert(std::move(paths));
        }
        return groups;
    }
    Groups FindGroups() {
        EXPECT_EQ(DupeOutcome::Completed, Find());
        return Found();
    }

    TempFolder drop;
    FaultySystemCalls calls;
    TestToolbox tools{calls};
    RecordingDupeProgress progress;
    DuplicateFinder finder{tools.Get(), progress};
    DupeSearchOrder order;
};

// How many random cases a test goes through: the number of the environment variable, for long runs.
inline int Cases(const char* variable, int otherwise) {
    const char* const text = std::getenv(variable);
    return text ? std::atoi(text) : otherwise;
}

}  // namespace vantrel::testing
