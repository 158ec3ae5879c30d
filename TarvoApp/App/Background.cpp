#include "TarvoApp/App/Background.h"

#include "Platform/ThreadMemory.h"
#include "Platform/ThreadPriority.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEvent>
#include <QTimer>

#include <utility>

namespace tarvo {

Background::Background(std::size_t threads, QObject* parent) : QObject(parent) {
    lumo::platform::shareAllocator();
    for (std::size_t count = 0; count < threads; ++count) {
        threads_.emplace_back([this](const std::stop_token& end) { serve(end); });
    }
}

Background::~Background() {
    end();
}

void Background::end() {
    // All of them at once: one by one, each would be waited for before the next is told.
    for (std::jthread& thread : threads_) {
        thread.request_stop();
    }
    threads_.clear();
}

void Background::start(Work work) {
    {
        const std::scoped_lock lock(mutex_);
        waiting_.push_back(std::move(work));
    }
    bell_.notify_one();
}

void Background::start(const std::stop_source& stop, Work work) {
    start([stop, work = std::move(work)](const std::stop_token& end) -> Apply {
        std::stop_source either = stop;
        const std::stop_callback forward(end, [&] { either.request_stop(); });
        return work(either.get_token());
    });
}

void Background::drop(std::shared_ptr<const void> gone) {
    start([gone = std::move(gone)](const std::stop_token&) -> Apply { return {}; });
}

void Background::finish() {
    {
        const std::scoped_lock lock(mutex_);
        isFinishing_ = true;
    }
    bell_.notify_all();
    for (std::jthread& thread : threads_) {
        thread.join();
    }
    threads_.clear();
}

void Background::post(Apply apply) {
    QEvent* wakeUp = nullptr;
    {
        const std::scoped_lock lock(mutex_);
        if (done_.empty()) {
            wakeUp = new QEvent(QEvent::User);
        }
        done_.push_back(std::move(apply));
    }
    if (wakeUp != nullptr) {
        QCoreApplication::postEvent(this, wakeUp); // Which owns it now.
    }
}

bool Background::event(QEvent* event) {
    bool isWakeUp = false;
    {
        // The event was made under the lock, so that taking it hands the event over in the eyes of tools that
        // look for races: they do not see what the library's own queue does.
        const std::scoped_lock lock(mutex_);
        isWakeUp = event->type() == QEvent::User;
    }
    if (isWakeUp) {
        applyAll();
    }
    return isWakeUp || QObject::event(event);
}

void Background::serve(const std::stop_token& end) {
    // A walk has more threads than there are cores, and the window must not wait for its turn among them.
    lumo::platform::giveWay();
    while (true) {
        Work work;
        {
            std::unique_lock lock(mutex_);
            bell_.wait(lock, end, [this] { return !waiting_.empty() || isFinishing_; });
            if (end.stop_requested() || waiting_.empty()) {
                return;
            }
            work = std::move(waiting_.front());
            waiting_.pop_front();
        }
        if (Apply apply = work(end)) {
            post(std::move(apply));
        }
    }
}

void Background::applyAll() {
    constexpr qint64 atOnce = 4; // Milliseconds.
    QElapsedTimer clock;
    clock.start();
    while (clock.elapsed() < atOnce) {
        Apply apply;
        {
            const std::scoped_lock lock(mutex_);
            if (done_.empty()) {
                return;
            }
            apply = std::move(done_.front());
            done_.pop_front();
        }
        apply();
        drop(std::make_shared<Apply>(std::move(apply))); // With the result.
    }
    // Whoever uses the window comes in between.
    QTimer::singleShot(nextTurn, this, &Background::applyAll);
}

} // namespace tarvo
