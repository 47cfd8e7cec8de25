#include "filetools/file_diff_engine.h"

#include <algorithm>
#include <new>
#include <utility>

#include "platform/workers.h"

namespace vantrel {

namespace {

// Smaller files are done before a thread has begun.
constexpr std::uint64_t kWorthAThread = std::uint64_t{1} << 20;

template <typename Work>
auto OfBothSides(Work&& work) {
    PerSide<decltype(work(Side::Left))> results;
    for (const Side side : kBothSides) results[side] = work(side);
    return results;
}

CancelCheck UntilStopped(const StopFlag& stop) {
    return [&stop] {
        if (stop.IsRequested()) throw Cancelled();
    };
}

// The same file, byte for byte, whatever it was decoded from.
bool AreStoredAlike(const LoadedText& left, const LoadedText& right) {
    return left.encoding == right.encoding && left.hasByteOrderMark == right.hasByteOrderMark &&
           left.lineEnds == right.lineEnds && left.isDecoded == right.isDecoded &&
           left.storedHash == right.storedHash && left.Text() == right.Text();
}

// Whether the texts differ in nothing but a line end behind the last line.
bool DifferInLastLineEnd(const FileDiff& diff) {
    if (diff.hunks.size() != 1) return false;
    PerSide<std::string_view> lines;
    for (const Side side : kBothSides) {
        const LineRange& range = diff.hunks.front().lines[side];
        if (range.count != 1) return false;
        lines[side] = diff.texts[side].Text().substr(range.offset, range.size);
        if (lines[side].ends_with('\n')) lines[side].remove_suffix(1);
    }
    return lines[Side::Left] == lines[Side::Right];
}

std::string DifferenceOfForm(const FileDiff& diff) {
    std::vector<std::string> parts;
    const LoadedText& left = diff.texts[Side::Left];
    const LoadedText& right = diff.texts[Side::Right];
    const auto both = [](std::string_view what, std::string_view one, std::string_view two) {
        return std::string(what).append(" (").append(one).append(" and ").append(two).append(")");
    };
    if (left.encoding != right.encoding) parts.push_back(both("encoding", left.encoding, right.encoding));
    if (left.hasByteOrderMark != right.hasByteOrderMark)
        parts.push_back(std::string("byte order mark (only ") +
                        (left.hasByteOrderMark ? "file one" : "file two") + " has one)");
    if (left.lineEnds != right.lineEnds)
        parts.push_back(both("line ends", LineEndsText(left.lineEnds), LineEndsText(right.lineEnds)));
    if (!diff.hunks.empty()) {
        const bool leftLacks = !left.Text().ends_with('\n');
        parts.push_back(std::string("the line end behind the last line (missing in ") +
                        (leftLacks ? "file one" : "file two") + ")");
    }
    if (parts.empty()) parts.push_back("bytes that are no text in " + left.encoding);
    std::string text = "The lines of the files are the same. The files differ in ";
    for (std::size_t index = 0; index < parts.size(); ++index) {
        if (index > 0) text += index + 1 == parts.size() ? " and " : ", ";
        text += parts[index];
    }
    return text;
}

}  // namespace

FileDiffEngine::FileDiffEngine(const Toolbox& tools) : tools_(tools) {
}

FileDiffEngine::~FileDiffEngine() = default;

CancelCheck FileDiffEngine::Check() const {
    return [this] {
        tools_.loop.Yield();
        if (tools_.loop.CancelRequested()) throw Cancelled();
    };
}

void FileDiffEngine::Release() {
    output_ = {};
    result_ = nullptr;
    onlyLine_.clear();
    differsOnlyInForm_ = false;
    isBinary_ = false;
}

std::int32_t FileDiffEngine::SayOneLine(std::int32_t code, std::string line) {
    onlyLine_ = std::move(line);
    return code;
}

std::int32_t FileDiffEngine::CompareFiles(const std::string& fileOne, const std::string& fileTwo) {
    Release();
    try {
        return Compare({{fileOne, fileTwo}});
    } catch (const ErrorException& error) {
        Release();
        return SayOneLine(kFailed, error.Get().Description());
    } catch (const std::bad_alloc&) {
        Release();
        return SayOneLine(kFailed, "Out of memory");
    } catch (const Cancelled&) {
        Release();
        throw;
    }
}

bool FileDiffEngine::MayUseWorkers(std::uint64_t bytes) {
    if (bytes < kWorthAThread || ProcessorCount() < kBothSides.size()) return false;
    if (workers_ == nullptr) workers_ = std::make_unique<Workers>(kBothSides.size());
    return true;
}

PerSide<LoadedText> FileDiffEngine::Load(const PerSide<std::string>& paths, bool sideBySide) {
    const CancelCheck check = Check();
    const FileSystem& files = tools_.files;
    PerSide<TextRequest> requests;
    for (const Side side : kBothSides) requests[side] = {paths[side], Encodings[side], Form};
    if (!sideBySide) return OfBothSides([&](Side side) { return LoadText(files, requests[side], check); });
    JobQueue<LoadedText> queue(*workers_, {});
    for (const Side side : kBothSides)
        queue.Add([request = requests[side], &files](const StopFlag& stop) {
            return LoadText(files, request, UntilStopped(stop));
        });
    return OfBothSides([&](Side) { return queue.TakeNext(check); });
}

TableMaker FileDiffEngine::TablesSideBySide(const std::shared_ptr<const FileDiff>& diff) {
    // A job that is no longer waited for goes on to its next look at the flag: it owns the texts until then.
    return [this, diff](const PerSide<std::string_view>& stretches, std::uint64_t seed) {
        JobQueue<LineTable> queue(*workers_, {});
        for (const Side side : kBothSides)
            queue.Add([diff, stretch = stretches[side], side, seed](const StopFlag& stop) {
                return MakeLineTable(stretch, diff->likeness, side, seed, UntilStopped(stop));
            });
        const CancelCheck check = Check();
        return OfBothSides([&](Side) { return queue.TakeNext(check); });
    };
}

std::int32_t FileDiffEngine::Compare(const PerSide<std::string>& paths) {
    std::uint64_t bytes = 0;
    for (const Side side : kBothSides) {
        FileInfo info;
        // What cannot be looked at is told about where it is opened.
        if (tools_.files.Stat(paths[side], LinkPolicy::Follow, info).IsOk()) bytes += info.size;
    }
    ThrowIfFailed(CheckMemoryFor(tools_.files, bytes));
    const bool sideBySide = MayUseWorkers(bytes);
    auto diff = std::make_shared<FileDiff>();
    const CancelCheck check = Check();
    diff->texts = Load(paths, sideBySide);
    check();
    const LoadedText& left = diff->texts[Side::Left];
    const LoadedText& right = diff->texts[Side::Right];
    result_ = diff;
    isBinary_ = left.isBinary || right.isBinary;
    if (AreStoredAlike(left, right)) return kIdentical;
    if (isBinary_)
        return SayOneLine(kDiffer,
                          "Binary files " + paths[Side::Left] + " " + paths[Side::Right] + " differ");

    if (Form == TextForm::ForReading) diff->lineEndsIgnored = SettleLineEnds(diff->texts, check);
    ThrowIfFailed(CheckMemoryForLines(tools_.files, diff->texts));
    diff->likeness = {.ignoreCase = IgnoreCase, .ignoreWhitespace = IgnoreWhitespace};
    for (const Side side : kBothSides)
        diff->likeness.western[side] = diff->texts[side].encoding == kWestern && !diff->texts[side].isDecoded;
    diff->hunks = DiffLines(diff->Views(), diff->likeness, check, Limits,
                            sideBySide ? TablesSideBySide(diff) : TableMaker());

    check();
    const bool sameText = diff->hunks.empty() && left.Text() == right.Text();
    const bool sameLines = sameText || (Form == TextForm::ForReading && DifferInLastLineEnd(*diff));
    if (sameLines) {
        differsOnlyInForm_ = true;
        return SayOneLine(kDiffer, DifferenceOfForm(*diff));
    }
    if (diff->hunks.empty()) return kIdentical;  // but for what is ignored
    output_ = HunkOutput(diff->hunks, diff->Views());
    return kDiffer;
}

std::int32_t FileDiffEngine::OutputLineCount() const {
    return onlyLine_.empty() ? output_.OutputLineCount() : 1;
}

std::string FileDiffEngine::OutputLine(std::int32_t index) const {
    if (onlyLine_.empty()) return output_.OutputLine(index);
    return index == 0 ? onlyLine_ : std::string();
}

std::int32_t FileDiffEngine::NextHeader(std::int32_t from) const {
    return onlyLine_.empty() ? output_.NextHeader(from) : DiffOutput::NextHeader(from);
}

std::string FormText(const LoadedText& text) {
    std::string form = text.encoding;
    if (text.hasByteOrderMark) form += " with byte order mark";
    if (text.lineEnds != LineEnds::None) form.append(", ").append(LineEndsText(text.lineEnds));
    return form;
}

}  // namespace vantrel
