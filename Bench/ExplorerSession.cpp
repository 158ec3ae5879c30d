#include "EventLoop.h"
#include "NumberOf.h"
#include "TarvoApp/App/AppModel.h"
#include "TarvoApp/Views/MainWindow.h"

#include <QElapsedTimer>
#include <QGuiApplication>
#include <QQuickWindow>

#include <fmt/format.h>

#include <chrono>
#include <cstdio>
#include <fcntl.h>
#include <filesystem>
#include <functional>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

// Somebody looks at a folder of very many entries in the window's explorer, drawn by software into memory:
// how long the main thread does not listen meanwhile, and how long until all is there.
namespace {

using namespace tarvo;
using bench::Beats;
using bench::waitFor;

constexpr const char* usage = "usage: explorer-session HOME FILES";

/// Every second one is of the year 2001, so that there is something old among them.
void makeMany(const std::string& folder, int files) {
    constexpr timespec old[2] = {{1'000'000'000, 0}, {1'000'000'000, 0}};
    std::filesystem::create_directories(folder);
    for (int number = 0; number < files; ++number) {
        const std::string file = fmt::format("{}/{:07}", folder, number);
        const int made = ::open(file.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
        if (made >= 0) {
            (void)::futimens(made, number % 2 == 0 ? old : nullptr);
            (void)::close(made);
        }
    }
}

class Walk {
  public:
    explicit Walk(ExplorerDesk& explorer) : explorer_(explorer) {}

    /// Does that so often, as somebody who keeps a key pressed does, and waits until all is there.
    void tell(const char* what, int times, const std::function<void()>& act) {
        const Beats beats;
        QElapsedTimer clock;
        clock.start();
        for (int time = 0; time < times; ++time) {
            act();
            waitFor(std::chrono::milliseconds(16));
        }
        waitFor([&] { return !explorer_.isReading(); });
        const qint64 took = clock.elapsed();
        waitFor(std::chrono::milliseconds(500)); // The map follows a little later.
        fmt::print("{}: longest gap {} ms, {:.1f} ms of them its own work, there after {} ms, {} rows\n",
                   what, beats.longest(), beats.longestWork(), took, explorer_.entries()->count());
    }
    void tell(const char* what, const std::function<void()>& act) { tell(what, 1, act); }

    void tellSteps(const char* what, int times, int rows) {
        tell(what, times, [&] { explorer_.moveTo(explorer_.current() + rows); });
    }

  private:
    ExplorerDesk& explorer_;
};

void walkThrough(ExplorerDesk& explorer, const std::string& folder, int files) {
    Walk walk(explorer);
    walk.tell("opening while it is measured", [&] {
        explorer.setOpen(true);
        explorer.goTo(folder);
        waitFor([&] { return explorer.entries()->count() == files; });
    });
    walk.tell("out of it", [&] { explorer.leave(); });
    walk.tell("into it", [&] { explorer.enter(explorer.current()); });
    walk.tellSteps("40 rows down", 40, 1);
    walk.tellSteps("40 pages down", 40, 10);
    walk.tellSteps("to the end", 1, files);
    walk.tellSteps("40 rows up", 40, -1);
    walk.tell("3 marks", 3, [&] { explorer.toggleMark(explorer.current() - 1); });
    walk.tell("by name", [&] { explorer.setOrder(static_cast<int>(ExplorerOrder::name)); });
    walk.tell("by date", [&] { explorer.setOrder(static_cast<int>(ExplorerOrder::date)); });
    walk.tell("by size", [&] { explorer.setOrder(static_cast<int>(ExplorerOrder::size)); });
    walk.tell("filtered by a letter", [&] { explorer.setFilter(QStringLiteral("7")); });
    walk.tell("and by another", [&] { explorer.setFilter(QStringLiteral("77")); });
    walk.tell("no longer filtered", [&] { explorer.setFilter({}); });
    walk.tell("what is old", [&] { explorer.setAge(3); });
    walk.tell("what is old in what is around it", [&] { explorer.leave(); });
    walk.tell("into it again", [&] { explorer.enter(explorer.current()); });
    walk.tell("of any age", [&] { explorer.setAge(0); });
}

void run(const std::string& home, int files) {
    const std::string folder = home + "/many";
    makeMany(folder, files);
    (void)Preferences::load(home).set(preference::isWelcomeSeen, true);
    AppModel app(AppServices::ofThisMachine(home, {}));
    const MainWindow windows(app);
    waitFor([&] { return !app.activity()->isBusy() && app.scanning()->hasReport(); });
    waitFor([&] { return !app.items()->isLooking(); });
    const long before = bench::peakMebibytes();
    walkThrough(*app.explorer(), folder, files);
    Walk(*app.explorer()).tell("scanned again", [&] {
        app.scanning()->scan();
        waitFor([&] { return !app.activity()->isBusy(); });
    });
    fmt::print("peak memory {} MiB, {} MiB before the explorer was opened\n", bench::peakMebibytes(), before);
}

} // namespace

int main(int count, char** arguments) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_QUICK_BACKEND", "software");
    (void)std::setvbuf(stdout, nullptr, _IOLBF, 0); // What is known is told although the rest takes long.
    const QGuiApplication application(count, arguments);
    if (count != 3) {
        tarvo::bench::stopProgram(usage);
    }
    run(arguments[1], tarvo::bench::numberOf(arguments[2], usage, 1));
    return 0;
}
