#pragma once

#include <QElapsedTimer>
#include <QEventLoop>
#include <QObject>
#include <QTimer>

#include <sys/resource.h>

#include <algorithm>
#include <chrono>
#include <ctime>
#include <functional>
#include <utility>

namespace tarvo::bench {

/// Lets the application go on until that is so.
inline void waitFor(const std::function<bool()>& isOver) {
    QEventLoop loop;
    QTimer beat;
    beat.start(5);
    while (!isOver()) {
        loop.processEvents(QEventLoop::WaitForMoreEvents);
    }
}

inline void waitFor(std::chrono::milliseconds time) {
    QElapsedTimer clock;
    clock.start();
    waitFor([&] { return clock.elapsed() > time.count(); });
}

/// What the thread has had of the processor, in ms: other programs take nothing from that.
inline double processorTime() {
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6;
}

/// The longest time for which the thread did not listen.
class Beats {
  public:
    Beats() {
        QObject::connect(&timer_, &QTimer::timeout, [this] { beat(); });
        timer_.setTimerType(Qt::PreciseTimer);
        clock_.start();
        timer_.start(1);
    }
    [[nodiscard]] qint64 longest() const { return longest_; }
    /// The most that the thread had of the processor between two beats, in ms: the rest of a gap it waited.
    [[nodiscard]] double longestWork() const { return longestWork_; }

  private:
    void beat() {
        longest_ = std::max(longest_, clock_.restart());
        const double before = std::exchange(worked_, processorTime());
        longestWork_ = std::max(longestWork_, worked_ - before);
    }

    QTimer timer_;
    QElapsedTimer clock_;
    qint64 longest_ = 0;
    double worked_ = processorTime();
    double longestWork_ = 0;
};

/// The most that this process ever had in memory, in MiB.
inline long peakMebibytes() {
    rusage used{};
    getrusage(RUSAGE_SELF, &used);
    return used.ru_maxrss / 1024;
}

} // namespace tarvo::bench
