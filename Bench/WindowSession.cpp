#include "EventLoop.h"
#include "TarvoApp/App/AppModel.h"
#include "TarvoApp/Views/MainWindow.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QGuiApplication>
#include <QMouseEvent>
#include <QQuickWindow>

#include <fmt/format.h>

#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <fstream>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

// What a person waits for: the first window, the first results, and each frame while the pointer wanders over
// the map and a folder opens. With --long, what it takes while nobody does anything, and whether it grows.
// Drawn by software into memory, so that any machine can measure it.
namespace {

using namespace tarvo;
using bench::Beats;
using bench::waitFor;

QElapsedTimer sinceStart;

/// The time of each frame from the moment at which all movement is settled until it is there.
class Frames {
  public:
    explicit Frames(QQuickWindow& window) {
        begun_ = QObject::connect(&window, &QQuickWindow::afterAnimating, [this] { clock_.start(); });
        ended_ = QObject::connect(&window, &QQuickWindow::frameSwapped, [this] {
            if (clock_.isValid()) {
                times_.push_back(static_cast<double>(clock_.nsecsElapsed()) / 1e6);
            }
        });
    }
    ~Frames() {
        QObject::disconnect(begun_);
        QObject::disconnect(ended_);
    }

    double tell(const char* what, double base) {
        std::ranges::sort(times_);
        const double median = times_.empty() ? 0 : times_[times_.size() / 2];
        fmt::print("{}: {} frames, median {:.1f} ms, longest {:.1f} ms", what, times_.size(), median,
                   times_.empty() ? 0 : times_.back());
        fmt::print("{}\n", base > 0 ? fmt::format(", {:.1f} x the empty scene", median / base) : "");
        return median;
    }

  private:
    QMetaObject::Connection begun_;
    QMetaObject::Connection ended_;
    QElapsedTimer clock_;
    std::vector<double> times_;
};

double tellEmptyScene(const QSize& size) {
    QQuickWindow window;
    window.resize(size);
    window.show();
    Frames frames(window);
    for (int frame = 0; frame < 60; ++frame) {
        window.update();
        waitFor(std::chrono::milliseconds(16));
    }
    return frames.tell("empty scene", 0);
}

void tellGap(const char* what, const Beats& beats) {
    fmt::print("{}: longest gap of the main thread {} ms, of the processor {:.1f} ms\n", what,
               beats.longest(), beats.longestWork());
}

void moveTo(QQuickWindow& window, const QPointF& place) {
    QMouseEvent move(QEvent::MouseMove, place, window.mapToGlobal(place), Qt::NoButton, Qt::NoButton, {});
    QCoreApplication::sendEvent(&window, &move);
}

void tellHovering(QQuickWindow& window, double base) {
    Frames frames(window);
    // The map is the left three fifths below the header.
    for (int step = 0; step < 120; ++step) {
        moveTo(window, {40.0 + step * 5 % 640, 230.0 + step * 37 % 390});
        waitFor(std::chrono::milliseconds(16));
    }
    frames.tell("hovering", base);
}

void tellZooming(AppModel& app, QQuickWindow& window, double base) {
    Frames frames(window);
    Beats beats;
    for (int index = 0; index < app.map()->count(); ++index) {
        app.map()->zoomInto(app.map()->tile(index, TileList::keyRole).toString());
        waitFor([&] { return !app.map()->isZoomLoading(); });
        if (app.map()->depth() > 0) {
            break;
        }
    }
    waitFor(std::chrono::seconds(1));
    app.map()->zoomOut(0);
    waitFor(std::chrono::seconds(1));
    frames.tell("zooming in and out", base);
    tellGap("zooming in and out", beats);
}

double processorSeconds() {
    rusage used{};
    getrusage(RUSAGE_SELF, &used);
    const auto seconds = [](const timeval& time) {
        return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
    };
    return seconds(used.ru_utime) + seconds(used.ru_stime);
}

/// What of the process lies in memory now; 0 where the system does not tell it in this place.
double residentMiB() {
    std::ifstream file("/proc/self/statm");
    double all = 0;
    double resident = 0;
    file >> all >> resident;
    return resident * static_cast<double>(sysconf(_SC_PAGESIZE)) / (1024 * 1024);
}

void waitUntilSettled(AppModel& app) {
    waitFor([&] { return !app.activity()->isBusy() && app.scanning()->hasReport(); });
    waitFor([&] { return !app.items()->isLooking(); });
}

/// What the application takes while nobody does anything, and whether it grows with each scan.
void tellSteadiness(AppModel& app) {
    constexpr std::chrono::seconds idle{20};
    constexpr int early = 5;
    constexpr int late = 30;
    QEventLoop loop;
    QTimer::singleShot(idle, &loop, &QEventLoop::quit);
    const double before = processorSeconds();
    loop.exec();
    fmt::print("idle for {} s: {:.3f} s of processor time\n", idle.count(), processorSeconds() - before);
    double atFirst = 0;
    for (int scan = 1; scan <= late; ++scan) {
        app.scanning()->scan();
        waitUntilSettled(app);
        atFirst = scan == early ? residentMiB() : atFirst;
    }
    fmt::print("resident after {} scans {:.1f} MiB, after {} scans {:.1f} MiB: {:.3f} x\n", early, atFirst,
               late, residentMiB(), residentMiB() / atFirst);
}

void run(const std::string& home, bool isLong) {
    (void)Preferences::load(home).set(preference::isWelcomeSeen, true);
    AppModel app(AppServices::ofThisMachine(home, {}));
    qint64 firstResults = 0;
    QObject::connect(app.scanning(), &tarvo::ScanningDesk::reportChanged,
                     [&] { firstResults = firstResults == 0 ? sinceStart.elapsed() : firstResults; });
    MainWindow windows(app);
    QQuickWindow& window = *windows.window();
    window.resize(1180, 760); // The screen that is none has no room for that.
    qint64 firstFrame = 0;
    QObject::connect(&window, &QQuickWindow::frameSwapped,
                     [&] { firstFrame = firstFrame == 0 ? sinceStart.elapsed() : firstFrame; });
    waitFor([&] { return firstFrame > 0; });
    fmt::print("first window after {} ms\n", firstFrame);
    waitFor([&] { return !app.activity()->isBusy() && app.scanning()->hasReport(); });
    fmt::print("first results after {} ms, all after {} ms: {} rows, {} tiles\n", firstResults,
               sinceStart.elapsed(), app.rows()->count(), app.map()->count());
    waitFor(std::chrono::seconds(2));
    if (isLong) {
        waitUntilSettled(app);
        tellSteadiness(app);
        return;
    }
    Beats beats;
    app.scanning()->scan();
    waitFor([&] { return !app.activity()->isBusy(); });
    tellGap("another scan", beats);
    const double base = tellEmptyScene(window.size());
    tellHovering(window, base);
    tellZooming(app, window, base);
    fmt::print("peak memory {} MiB\n", bench::peakMebibytes());
}

} // namespace

int main(int count, char** arguments) {
    sinceStart.start();
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_QUICK_BACKEND", "software");
    const QGuiApplication application(count, arguments);
    const bool isLong = count == 3 && std::string_view(arguments[1]) == "--long";
    if (count != 2 && !isLong) {
        fmt::print(stderr, "usage: window-session [--long] HOME\n");
        return 2;
    }
    run(arguments[count - 1], isLong);
    return 0;
}
