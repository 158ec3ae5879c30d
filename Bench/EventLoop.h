#pragma once

#include <QElapsedTimer>
#include <QEventLoop>
#include <QObject>
#include <QTimer>

#include <sys/resource.h>

#include <algorithm>
#include <chrono>
#include <functional>

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

/// The longest time for which the thread did not listen.
class Beats {
  public:
    Beats() {
        QObject::connect(&timer_, &QTimer::timeout,
                         [this] { longest_ = std::max(longest_, beat_.restart()); });
        timer_.setTimerType(Qt::PreciseTimer);
        beat_.start();
        timer_.start(1);
    }
    [[nodiscard]] qint64 longest() const { return longest_; }

  private:
    QTimer timer_;
    QElapsedTimer beat_;
    qint64 longest_ = 0;
};

/// The most that this process ever had in memory, in MiB.
inline long peakMebibytes() {
    rusage used{};
    getrusage(RUSAGE_SELF, &used);
    return used.ru_maxrss / 1024;
}

} // namespace tarvo::bench
