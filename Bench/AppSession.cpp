#include "TarvoApp/App/AppModel.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QTimer>

#include <fmt/format.h>

#include <algorithm>
#include <functional>
#include <string>
#include <vector>

// How long the application's main thread is busy at a time: with the layout of the map, with taking over a
// large report, and in a session of scan, zoom, clean and undo.
namespace {

using namespace tarvo;

double microseconds(const std::function<void()>& work) {
    QElapsedTimer clock;
    clock.start();
    work();
    return static_cast<double>(clock.nsecsElapsed()) / 1000;
}

double median(int rounds, const std::function<void()>& work) {
    std::vector<double> times;
    for (int round = 0; round < rounds; ++round) {
        times.push_back(microseconds(work));
    }
    std::ranges::nth_element(times, times.begin() + rounds / 2);
    return times[static_cast<std::size_t>(rounds / 2)];
}

/// Sizes as disks have them: few large, many small.
std::vector<double> sizes(std::size_t count) {
    std::vector<double> values;
    for (std::size_t index = 0; index < count; ++index) {
        values.push_back(5e10 / static_cast<double>((index + 1) * (index + 3)));
    }
    return values;
}

void tellLayout(std::size_t count) {
    constexpr int rounds = 1001;
    const std::vector<double> values = sizes(count);
    const double layout =
        median(rounds, [&] { (void)Squarify::layout(values, {.width = 700, .height = 500}); });
    const double sort = median(rounds, [&] {
        std::vector<double> sorted(values.rbegin(), values.rend());
        std::ranges::sort(sorted);
    });
    fmt::print("layout of {} tiles: {:.1f} us, {:.1f} x sorting their sizes\n", count, layout, layout / sort);
}

ShownPlan madeUp(std::size_t count, std::size_t first) {
    ShownPlan made;
    const std::vector<double> values = sizes(count);
    for (std::size_t index = 0; index < count; ++index) {
        const std::string id = fmt::format("proyecto:/home/somebody/projects/{}/node_modules", first + index);
        const auto bytes = static_cast<std::int64_t>(values[index]);
        made.entries.push_back({.action = {.id = id,
                                           .title = fmt::format("project {} · node_modules", index),
                                           .safety = lumo::Safety::safe,
                                           .estimatedBytes = bytes,
                                           .method = lumo::method::TrashItems{{"/home/somebody/x"}}},
                                .skipReason = {}});
        made.rows.push_back({.id = id,
                             .title = made.entries.back().action.title,
                             .detail = "npm install brings it back",
                             .bytes = bytes,
                             .safety = lumo::Safety::safe,
                             .paths = {"/home/somebody/x"}});
        made.defaults.insert(id);
    }
    return made;
}

/// All that the main thread does with a report that is ready.
void tellApplying(std::size_t count) {
    TickedPlan plan;
    const std::map<std::string, lumo::Explanation> none;
    const std::map<std::string, std::string> nothing;
    RowList list(plan, none, nothing, "/home/somebody");
    Background background(1);
    MapModel map(plan, background, {.list = {}, .canOpen = [](const auto&) { return false; }});
    map.setWidth(700);
    map.setHeight(500);
    std::vector<double> times;
    std::vector<double> copies;
    constexpr int rounds = 21;
    for (std::size_t round = 0; round < rounds; ++round) {
        const auto made = WholePlan::of(madeUp(count, round * 40));
        copies.push_back(microseconds([&] { const ShownPlan copy = *made->plan(); }));
        times.push_back(microseconds([&] {
            plan.take(made);
            list.show(made->rows());
            map.show(made->rows(), {.totalBytes = 500'000'000'000, .availableBytes = 1}, true);
            (void)plan.shares();
        }));
    }
    std::ranges::sort(times);
    std::ranges::sort(copies);
    fmt::print("applying {} rows: median {:.1f} ms, longest {:.1f} ms, {:.1f} x copying them\n", count,
               times[rounds / 2] / 1000, times.back() / 1000, times[rounds / 2] / copies[rounds / 2]);
}

/// A beat every millisecond; what is longer between two is how long the thread did not listen.
class Heartbeat {
  public:
    Heartbeat() {
        QObject::connect(&timer_, &QTimer::timeout, [this] { gaps_.push_back(beat_.restart()); });
        timer_.setTimerType(Qt::PreciseTimer);
        beat_.start();
        timer_.start(1);
    }

    void wait(const std::function<bool()>& isOver) {
        QEventLoop loop;
        while (!isOver()) {
            loop.processEvents(QEventLoop::WaitForMoreEvents);
        }
    }

    void tell(const char* what) {
        std::ranges::sort(gaps_);
        fmt::print("{}: {} beats, longest gap {} ms, {} over 16 ms\n", what, gaps_.size(),
                   gaps_.empty() ? 0 : gaps_.back(),
                   std::ranges::count_if(gaps_, [](qint64 gap) { return gap > 16; }));
        gaps_.clear();
        beat_.restart();
    }

  private:
    QTimer timer_;
    QElapsedTimer beat_;
    std::vector<qint64> gaps_;
};

void tellSession(const std::string& home) {
    AppModel app(AppServices::ofThisMachine(home, {}));
    app.map()->setWidth(700);
    app.map()->setHeight(500);
    Heartbeat heart;
    QElapsedTimer clock;
    clock.start();
    const auto untilIdle = [&] { heart.wait([&] { return !app.activity()->isBusy(); }); };
    heart.wait([&] { return clock.elapsed() > 2000; });
    heart.tell("nothing going on for 2 s");
    app.scanning()->scan();
    untilIdle();
    heart.tell("scan");
    fmt::print("  {} rows, {} tiles\n", app.rows()->count(), app.map()->count());
    if (app.map()->count() > 0) {
        const QString key = app.map()->tile(0, TileList::keyRole).toString();
        app.map()->zoomInto(key);
        heart.wait([&] { return !app.map()->isZoomLoading(); });
        app.map()->zoomOut(0);
    }
    heart.tell("zoom in and out");
    for (int row = 0; row < app.rows()->count(); ++row) {
        const QString key = app.rows()->data(app.rows()->index(row), RowList::keyRole).toString();
        const auto* entry = app.ticked()->plan().entry(key.toLatin1().toStdString());
        if (entry != nullptr && entry->action.safety == lumo::Safety::review) {
            app.ticked()->toggle(key);
        }
    }
    heart.tell("ticking all that needs a look");
    app.cleaning()->requestClean();
    app.question()->accept();
    untilIdle();
    heart.tell("clean and scan");
    app.holding()->undoLastCleanup();
    untilIdle();
    heart.tell("undo and scan");
}

} // namespace

int main(int count, char** arguments) {
    const QCoreApplication application(count, arguments);
    if (count != 2) {
        fmt::print(stderr, "usage: app-session HOME (which is cleaned)\n");
        return 2;
    }
    tellLayout(151);
    tellLayout(41);
    tellApplying(2000);
    tellSession(arguments[1]);
    return 0;
}
