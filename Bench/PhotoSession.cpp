#include "EventLoop.h"
#include "LumoCore/Basics/Parallel.h"
#include "TarvoApp/App/AppModel.h"
#include "TarvoApp/Views/MainWindow.h"

#include <QCoreApplication>
#include <QFile>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QQuickItem>
#include <QQuickWindow>

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <fcntl.h>
#include <filesystem>
#include <string>
#include <unistd.h>
#include <utility>
#include <vector>

// The review of photos, drawn by software into memory: how long until somebody sees pictures, each frame
// while they scroll, what it takes, and comparing all pictures beside only reading their small ones.
namespace {

using namespace tarvo;
using bench::Beats;
using bench::processorTime;
using bench::waitFor;

constexpr double frameTime = 1000.0 / 60;

double medianOf(std::vector<double> values) {
    std::ranges::sort(values);
    return values.empty() ? 0 : values[values.size() / 2];
}

/// Steps of somebody who scrolls, one a sixtieth of a second as long as that suffices, and all that the
/// thread does from each of them until its frame is there.
class Frames {
  public:
    explicit Frames(QQuickWindow& window) : window_(window) {
        QObject::connect(&window, &QQuickWindow::frameSwapped, &swaps_, [this] { ++count_; });
    }

    void step(const std::function<void()>& move) {
        const double before = processorTime();
        QElapsedTimer clock;
        clock.start();
        int shown = -1;
        // As an event, like a person's: what a view lets go of outside of all events would never be deleted.
        QMetaObject::invokeMethod(
            &swaps_,
            [&] {
                shown = count_;
                move();
                window_.update();
            },
            Qt::QueuedConnection);
        waitFor([&] { return shown >= 0 && count_ > shown; });
        times_.push_back(static_cast<double>(clock.nsecsElapsed()) / 1e6);
        processorTimes_.push_back(processorTime() - before);
        waitFor([&] { return static_cast<double>(clock.nsecsElapsed()) / 1e6 > frameTime; });
    }

    /// Returns the median.
    double tell(const char* what, double base) const {
        const double median = medianOf(times_);
        const auto inTime = std::ranges::count_if(times_, [](double time) { return time < frameTime; });
        fmt::print("{}: {} frames, median {:.1f} ms, longest {:.1f} ms, {:.1f} % under {:.1f} ms", what,
                   times_.size(), median, std::ranges::max(times_),
                   100.0 * static_cast<double>(inTime) / static_cast<double>(times_.size()), frameTime);
        fmt::print("; of the processor {:.1f} and {:.1f} ms", medianOf(processorTimes_),
                   std::ranges::max(processorTimes_));
        fmt::print("{}\n", base > 0 ? fmt::format("; {:.1f} x an empty window", median / base) : "");
        return median;
    }

  private:
    QQuickWindow& window_;
    QObject swaps_;
    int count_ = 0;
    std::vector<double> times_;
    std::vector<double> processorTimes_;
};

double tellEmptyWindow(const QSize& size) {
    QQuickWindow window;
    window.resize(size);
    window.show();
    Frames frames(window);
    for (int frame = 0; frame < 60; ++frame) {
        frames.step([] {});
    }
    return frames.tell("empty window", 0);
}

/// Below the item, all that are of that type.
void collect(QQuickItem& item, const char* type, std::vector<QQuickItem*>& found) {
    if (item.inherits(type)) {
        found.push_back(&item);
    }
    for (QQuickItem* const child : item.childItems()) {
        collect(*child, type, found);
    }
}

std::vector<QQuickItem*> itemsIn(const QQuickWindow& window, const char* type) {
    std::vector<QQuickItem*> found;
    collect(*window.contentItem(), type, found);
    return found;
}

/// How many tiles have their pictures and how many have not; one of a single point stands for none.
std::pair<int, int> pictures(const QQuickWindow& review) {
    constexpr int ready = 1;
    std::pair<int, int> counts;
    for (const QQuickItem* const image : itemsIn(review, "QQuickImage")) {
        if (image->isVisible()) {
            const bool isShown = image->property("status").toInt() == ready && image->implicitWidth() > 1;
            ++(isShown ? counts.first : counts.second);
        }
    }
    return counts;
}

QQuickItem& gridOf(const QQuickWindow& review) {
    // The lists beside it are another kind.
    const auto flickables = itemsIn(review, "QQuickFlickable");
    return **std::ranges::find_if(flickables,
                                  [](const QQuickItem* item) { return !item->inherits("QQuickItemView"); });
}

void tellScrolling(QQuickWindow& review, const char* what, int steps, double points, double base) {
    QQuickItem& grid = gridOf(review);
    Frames frames(review);
    for (int step = 0; step < steps; ++step) {
        frames.step([&] {
            const double end = grid.property("contentHeight").toDouble() - grid.height();
            const double next = grid.property("contentY").toDouble() + points;
            grid.setProperty("contentY", next < end ? next : 0);
        });
    }
    frames.tell(what, base);
}

/// From the last move on.
void tellRest(const QQuickWindow& review) {
    QElapsedTimer clock;
    clock.start();
    waitFor([&] { return pictures(review).second == 0; });
    fmt::print("all pictures near what is seen {} ms later\n", clock.elapsed());
}

void tellPaging(QQuickWindow& review, double base) {
    gridOf(review).forceActiveFocus();
    Frames frames(review);
    for (int page = 0; page < 120; ++page) {
        frames.step([&] {
            QKeyEvent press(QEvent::KeyPress, page < 60 ? Qt::Key_PageDown : Qt::Key_PageUp, {});
            QCoreApplication::sendEvent(&review, &press);
        });
    }
    frames.tell("page by page", base);
}

void tellSession(const std::string& home) {
    (void)Preferences::load(home).set(preference::isWelcomeSeen, true);
    AppModel app(AppServices::ofThisMachine(home, {}));
    MainWindow windows(app);
    waitFor([&] { return !app.activity()->isBusy() && app.scanning()->hasReport(); });
    waitFor(std::chrono::seconds(1));
    const long before = bench::peakMebibytes();

    QElapsedTimer sinceOpened;
    sinceOpened.start();
    Beats beats;
    QQuickWindow& review = *windows.open(MainWindow::Side::photos);
    waitFor([&] { return pictures(review).first > 0; });
    fmt::print("first pictures after {} ms\n", sinceOpened.elapsed());
    const double base = tellEmptyWindow(review.size());
    constexpr double slowly = 40;
    tellScrolling(review, "scrolling while they are compared", 300, slowly, base);
    waitFor([&] { return app.photos()->busyText().isEmpty(); });
    fmt::print("all compared after {} ms: longest gap of the main thread {} ms\n", sinceOpened.elapsed(),
               beats.longest());
    for (const QVariant& chapter : app.photos()->chapters()) {
        fmt::print("  {}: {}\n", chapter.toMap()["title"].toString().toStdString(),
                   chapter.toMap()["facts"].toString().toStdString());
    }
    waitFor(std::chrono::seconds(1));
    tellScrolling(review, "scrolling", 600, slowly, base);
    constexpr double quickly = 1500;
    tellScrolling(review, "scrolling by the bar", 300, quickly, base);
    tellRest(review);
    tellPaging(review, base);
    tellRest(review);
    fmt::print("peak memory {} MiB, {} MiB before the review was opened\n", bench::peakMebibytes(), before);
}

// Comparing all pictures, and what of that is reading.

struct Contestant {
    const char* name;
    std::function<void(const std::string& picture)> work;
    std::vector<double> times = {};
};

void readWhole(const std::string& file) {
    const int opened = ::open(file.c_str(), O_RDONLY | O_CLOEXEC);
    std::array<char, 65536> buffer;
    while (::read(opened, buffer.data(), buffer.size()) > 0) {
    }
    ::close(opened);
}

/// Leaves it to the disk to give the file again.
void forget(const std::string& file) {
    const int opened = ::open(file.c_str(), O_RDONLY | O_CLOEXEC);
    ::posix_fadvise(opened, 0, 0, POSIX_FADV_DONTNEED);
    ::close(opened);
}

void tellComparing(const std::string& home, bool isCold) {
    const std::string cache = home + "/.cache/thumbnails";
    const Thumbnails thumbnails(cache);
    const auto smallOf = [&](const std::string& picture) {
        return cache + "/large/" + Thumbnails::nameFor(picture).toStdString();
    };
    std::vector<std::string> pictures;
    for (const auto& file : std::filesystem::directory_iterator(home + "/Pictures")) {
        pictures.push_back(file.path());
    }
    std::ranges::sort(pictures);
    std::array<Contestant, 3> contestants{
        {{"reading the small pictures", [&](const std::string& picture) { readWhole(smallOf(picture)); }},
         {"reading and decoding them",
          [&](const std::string& picture) { (void)QImage(QFile::decodeName(smallOf(picture).c_str())); }},
         {"comparing the pictures", [&](const std::string& picture) { (void)thumbnails.lookAt(picture); }}}};
    ::sync();
    for (int round = 0; round < 3; ++round) {
        for (Contestant& each : contestants) {
            if (isCold) {
                for (const std::string& picture : pictures) {
                    forget(picture);
                    forget(smallOf(picture));
                }
            }
            QElapsedTimer clock;
            clock.start();
            lumo::parallelFor(pictures.size(), {}, [&](std::size_t at) { each.work(pictures[at]); });
            each.times.push_back(static_cast<double>(clock.nsecsElapsed()) / 1e6);
        }
    }
    for (const Contestant& each : contestants) {
        const double median = medianOf(each.times);
        fmt::print("{}, {}: median {:.0f} ms, least {:.0f} ms; {:.2f} x reading, {:.2f} x decoding\n",
                   each.name, isCold ? "from the disk" : "from memory", median, std::ranges::min(each.times),
                   median / medianOf(contestants[0].times), median / medianOf(contestants[1].times));
    }
}

} // namespace

int main(int count, char** arguments) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_QUICK_BACKEND", "software");
    // Otherwise each frame waits for five milliseconds, in case another one is asked for meanwhile.
    qputenv("QT_QPA_UPDATE_IDLE_TIME", "0");
    (void)std::setvbuf(stdout, nullptr, _IOLBF, 0); // What is known is told although the rest takes long.
    const QGuiApplication application(count, arguments);
    if (count != 2) {
        fmt::print(stderr, "usage: photo-session HOME\n");
        return 2;
    }
    const std::string home = arguments[1];
    tellSession(home);
    tellComparing(home, false);
    tellComparing(home, true);
    return 0;
}
