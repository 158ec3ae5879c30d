#pragma once

#include <QObject>

#include <chrono>
#include <condition_variable>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <stop_token>
#include <thread>
#include <vector>

namespace tarvo {

/// After that time what has been put off goes on: whatever else waits for the event loop has its turn before.
/// An event that is posted would be handled among those in hand.
inline constexpr std::chrono::milliseconds nextTurn{1};

/// Threads for what takes long. Results come back to the thread that made this object, one after the other
/// and never in the middle of anything, as long as its event loop runs.
class Background final : public QObject {
    Q_OBJECT

  public:
    /// What is done with a result, on the owner's thread.
    using Apply = std::function<void()>;
    /// What takes long, on one of the threads. Its stop token is asked when this object goes.
    using Work = std::function<Apply(const std::stop_token& end)>;

    explicit Background(std::size_t threads, QObject* parent = nullptr);
    /// Asks all work to stop and waits for what is in hand. What was not begun is not done, and no result
    /// comes any more.
    ~Background() override;

    /// Work begins in the order in which it is given, and at once while a thread is free.
    void start(Work work);
    /// The same for work that somebody may want ended before: its token is asked by that source as well.
    void start(const std::stop_source& stop, Work work);

    /// Lets go of that on one of the threads: what has thousands of parts takes its time to be freed.
    void drop(std::shared_ptr<const void> gone);

    /// What the destructor does: afterwards nothing of what was given goes on, and no result comes.
    void end();

    /// Waits until all that was given is done, its results dropped. Nothing may be given any more.
    void finish();

    /// From any thread: has something done on the owner's thread, after what came before.
    void post(Apply apply);

  protected:
    bool event(QEvent* event) override;

  private:
    void serve(const std::stop_token& end);
    /// What takes long goes on after whatever else waits for this thread.
    void applyAll();

    std::mutex mutex_;
    std::condition_variable_any bell_;
    std::deque<Work> waiting_;
    std::deque<Apply> done_;
    bool isFinishing_ = false;
    std::vector<std::jthread> threads_;
};

} // namespace tarvo
