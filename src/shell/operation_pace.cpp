#include "shell/operation_pace.h"

#include <algorithm>
#include <cmath>

#include "platform/currency.h"
#include "platform/names/paths.h"

namespace vantrel {
namespace {

constexpr std::uint32_t kSampleEvery = 250;       // milliseconds
constexpr std::uint32_t kJudgedBy = 10'000;       // milliseconds
constexpr std::uint32_t kFirstJudgement = 1'500;  // milliseconds
constexpr double kLongestTold = 100.0 * 60 * 60;  // seconds; beyond, the figure says nothing

double Share(std::uint64_t done, std::uint64_t all) {
    return all > 0 ? std::min(static_cast<double>(done) / static_cast<double>(all), 1.0) : 1.0;
}

}  // namespace

double PartDone(ShellProgress::Totals done, ShellProgress::Totals totals) {
    return std::min(Share(done.bytes, totals.bytes), Share(done.objects, totals.objects));
}

void OperationPace::Begin(std::uint32_t now) {
    samples_.assign(1, {now, 0, 0});
    last_ = samples_.front();
}

void OperationPace::Note(std::uint32_t now, ShellProgress::Totals done, ShellProgress::Totals totals) {
    // As long as it counts what there is to do it has no pace.
    if (totals.objects == 0) return Begin(now);
    last_ = {now, static_cast<double>(done.bytes), PartDone(done, totals)};
    if (samples_.empty() || now - samples_.back().at >= kSampleEvery) samples_.push_back(last_);
    while (samples_.size() > 1 && now - samples_.front().at > kJudgedBy) samples_.pop_front();
}

std::string OperationPace::Describe() const {
    if (samples_.empty() || last_.at - samples_.front().at < kFirstJudgement) return {};
    const Sample& first = samples_.front();
    const double seconds = static_cast<double>(last_.at - first.at) / 1'000;
    const double bytesPerSecond = (last_.bytes - first.bytes) / seconds;
    const double partPerSecond = (last_.part - first.part) / seconds;
    std::string text;
    if (bytesPerSecond >= 1)
        text = ConvertBytesToCorrectByteTypeString(
                   Currency::FromWhole(static_cast<std::int64_t>(bytesPerSecond))) +
               "/s";
    const double left = partPerSecond > 0 ? (1 - last_.part) / partPerSecond : kLongestTold;
    if (left >= kLongestTold) return text;
    if (!text.empty()) text += ", ";
    return text + DescribeTimeLeft(left);
}

std::string DescribeTimeLeft(double seconds) {
    constexpr double kMinute = 60, kHour = 60 * kMinute;
    const auto rounded = [](double value) { return static_cast<std::int64_t>(std::ceil(value)); };
    if (seconds < 5) return "a few seconds left";
    if (seconds <= 55) return "about " + std::to_string(rounded(seconds / 5) * 5) + " seconds left";
    const std::int64_t minutes = rounded(seconds / kMinute);
    if (minutes == 1) return "about 1 minute left";
    if (seconds < kHour) return "about " + std::to_string(minutes) + " minutes left";
    return "about " + std::to_string(minutes / 60) + " h " + std::to_string(minutes % 60) + " min left";
}

}  // namespace vantrel
