// Times of what a person does with a result of 1,000,000 pairs, in the engine and in the shown window, and
// the memory of a pair. The window runs on the offscreen platform where there is no display.
#include <benchmark/benchmark.h>

#include <QApplication>
#include <QLineEdit>
#include <random>

#include "diagnostics/error_reporter.h"
#include "settings/options.h"
#include "silent_messages.h"
#include "views/forms/panes_widget.h"
#include "views/mod_listview.h"
#include "views/result_panes.h"
#include "views/result_summary.h"
#include "views/select_criteria.h"

namespace vantrel {
namespace {

constexpr std::size_t kPairs = 1'000'000;

class NoLoop : public EventLoopPort {
  public:
    void Yield() override {}
    bool CancelRequested() const override { return false; }
    void ResetCancel() override {}
};

ResultRow RowOf(const std::string& name, ResultType type, std::int64_t size) {
    ResultRow row;
    row.text = row.realName = name;
    row.size = Currency::FromWhole(size);
    row.lastWrite = FileTime::FromUnix(1'600'000'000 + size, 0);
    row.type = type;
    row.kind = RowKind::File;
    return row;
}

// Half of the pairs the same, the others newer, older and orphans, at random.
void Fill(HoldLists& hold) {
    using enum ResultType;
    std::mt19937 random(1);
    for (Side side : kBothSides) hold[side].Reserve(kPairs);
    for (std::size_t i = 0; i < kPairs; ++i) {
        const std::string name = "a file of usual length " + std::to_string(i) + ".jpeg";
        const auto add = [&](Side side, ResultType type) {
            if (type == None)
                hold[side].AddPlaceholder();
            else
                hold[side].AddCopy(RowOf(name, type, static_cast<std::int64_t>(random() % 10'000'000)));
        };
        const unsigned kind = random() % 8;
        const ResultType left = kind < 4    ? Same
                                : kind == 4 ? Newer
                                : kind == 5 ? Older
                                : kind == 6 ? Orphan
                                            : None;
        const ResultType right = kind < 4    ? Same
                                 : kind == 4 ? Older
                                 : kind == 5 ? Newer
                                 : kind == 6 ? None
                                             : Orphan;
        add(Side::Left, left);
        add(Side::Right, right);
    }
}

struct Stage {
    Stage() {
        Fill(hold);
        panes.ApplyViewTypes();
    }
    SystemCalls calls;
    FileSystem files{calls};
    ProgramFolders folders;
    SystemClock clock;
    LocaleFormats locale;
    SilentMessages messages;
    NoLoop loop;
    ErrorReporter reporter{files, folders, clock, locale, messages, loop};
    Options options;
    CViewSelections selections{options};
    HoldLists hold;
    BusyState busy;
    ResultPanes panes{hold, selections, reporter, messages, busy};
};

Stage& TheStage() {
    static Stage stage;
    return stage;
}

class Window {
  public:
    Window() : widget_(TheStage().panes, TheStage().locale, {}) {
        widget_.resize(1200, 800);
        for (const Side side : kBothSides) widget_.SetColumnsFitted(side, true);
        widget_.show();
        QApplication::processEvents();
    }
    // Until the change stands on the screen.
    void Paint() {
        widget_.repaint();
        QApplication::processEvents();
    }

    PanesWidget& Panes() { return widget_; }

  private:
    PanesWidget widget_;
};

void ChangeView(benchmark::State& state, std::int32_t view) {
    ResultPanes& panes = TheStage().panes;  // made before the clock runs
    for (auto _ : state) panes.ChooseView(view);
    state.counters["bytes_per_pair"] = static_cast<double>(TheStage().panes.MemoryUsed()) / kPairs;
}
void BM_ViewAll(benchmark::State& state) {
    ChangeView(state, kViewAll);
}
void BM_ViewDifferent(benchmark::State& state) {
    ChangeView(state, kViewDifferent);
}
void BM_ViewSimilar(benchmark::State& state) {
    ChangeView(state, kViewSimilar);
}

void BM_SelectAll(benchmark::State& state) {
    TheStage().panes.ChooseView(kViewAll);
    for (auto _ : state) {
        TheStage().panes.SelectAll(Side::Left);
        state.PauseTiming();
        TheStage().panes.DeselectAll(Side::Left);
        state.ResumeTiming();
    }
}
void BM_Invert(benchmark::State& state) {
    TheStage().panes.SetCurrentListview(Side::Left);
    for (auto _ : state) TheStage().panes.InvertSelection();
}
// Every criterion at once, and several patterns, of which the first ones fit nothing.
void BM_SelectByCriteria(benchmark::State& state) {
    ResultPanes& panes = TheStage().panes;
    panes.ChooseView(kViewAll);
    SelectCriteria criteria;
    criteria.patterns = state.range(0) == 0 ? "*" : "*.bmp, *.tif, *us?al*7.png, *[a-c]*9?.gif, *.jp*g";
    criteria.byteSize = Currency::FromWhole(5);
    criteria.date = DayOf(FileTime::FromUnix(1'600'000'000, 0));
    criteria.dateOperator = DateOperator::IsAfter;
    for (auto _ : state) panes.SelectFileTypesInList(Side::Left, criteria);
    state.counters["selected"] = static_cast<double>(panes.Pane(Side::Left).SelectedCount());
    panes.DeselectAll(Side::Left);
}
void BM_Summary(benchmark::State& state) {
    for (auto _ : state) benchmark::DoNotOptimize(GetFileTypeCounts(TheStage().hold));
}
// No name fits, so all of them are looked at.
void BM_FindNothing(benchmark::State& state) {
    ResultPanes& panes = TheStage().panes;
    panes.ChooseView(kViewAll);
    const RowSearch search(state.range(0) == 0 ? "usual width" : "*of usual*.jpg");
    const PerSide<const PaneList*> lists{{&panes.Pane(Side::Left), &panes.Pane(Side::Right)}};
    for (auto _ : state) benchmark::DoNotOptimize(search.Find(lists, 0, RowSearch::Direction::Forwards));
}
// Rows of the same names take the place of all that were there and were selected.
void BM_RefreshAllSelected(benchmark::State& state) {
    Stage& stage = TheStage();
    stage.panes.ChooseView(kViewAll);
    for (auto _ : state) {
        state.PauseTiming();
        stage.panes.SelectAll(Side::Left);
        HoldLists others;
        Fill(others);
        for (const Side side : kBothSides) stage.hold[side].Swap(others[side]);
        state.ResumeTiming();
        stage.panes.ApplyViewTypes();
    }
    stage.panes.DeselectAll(Side::Left);
}
void BM_Totals(benchmark::State& state) {
    for (auto _ : state)
        for (Side side : kBothSides) benchmark::DoNotOptimize(TotalsText(TheStage().panes.Pane(side)));
}

// One pane of a million rows.
void BM_TextReport(benchmark::State& state) {
    TheStage().panes.ChooseView(kViewAll);
    const PrintedList list{&TheStage().panes.Pane(Side::Left).Rows(), "/left/"};
    const LocaleFormats locale("en_US");
    std::size_t bytes = 0;
    for (auto _ : state)
        WriteListview(list, true, "", locale, [&](std::string_view piece) { bytes += piece.size(); });
    benchmark::DoNotOptimize(bytes);
}

void BM_WindowChangeView(benchmark::State& state) {
    Window window;
    std::int32_t view = kViewAll;
    for (auto _ : state) {
        TheStage().panes.ChooseView(view = view == kViewAll ? kViewDifferent : kViewAll);
        window.Paint();
    }
    TheStage().panes.ChooseView(kViewAll);
}
// From row to row, with the other pane behind and a search that marks what is painted.
void BM_WindowScroll(benchmark::State& state) {
    Window window;
    window.Panes().Scrolling().SetOn(true);
    window.Panes().Scrolling().SetFollows(PaneScrolling::Follows::AllMoves);
    window.Panes().OpenFind();
    window.Panes().Find().txtFind->setText(QStringLiteral("7"));
    int row = 0;
    for (auto _ : state) {
        window.Panes().View(Side::Left).SetTopItem(row = (row + 997) % static_cast<int>(kPairs));
        window.Paint();
    }
}
void BM_WindowSelectAll(benchmark::State& state) {
    Window window;
    for (auto _ : state) {
        TheStage().panes.SelectAll(Side::Left);
        window.Paint();
        state.PauseTiming();
        TheStage().panes.DeselectAll(Side::Left);
        state.ResumeTiming();
    }
}
void BM_WindowExtendByKey(benchmark::State& state) {
    Window window;
    std::size_t row = 0;
    for (auto _ : state) {
        TheStage().panes.MoveTo(Side::Left, row++ % kPairs, {.extend = true});
        window.Paint();
    }
}

BENCHMARK(BM_ViewAll)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ViewDifferent)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ViewSimilar)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_SelectAll)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Invert)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_SelectByCriteria)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Summary)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_FindNothing)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_RefreshAllSelected)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Totals)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_TextReport)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_WindowChangeView)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_WindowScroll)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_WindowSelectAll)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_WindowExtendByKey)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace vantrel

int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("DISPLAY") && qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
