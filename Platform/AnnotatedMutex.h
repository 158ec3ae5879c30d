#pragma once

#include <condition_variable>
#include <mutex>

/// A mutex that says what it guards, so that clang checks (-Wthread-safety) that what threads share is only
/// touched with its lock held. Other compilers see a plain mutex.
#if defined(__clang__)
#define LUMO_THREADS(attribute) __attribute__((attribute))
#else
#define LUMO_THREADS(attribute)
#endif
/// On a field: only touched with that mutex held.
#define LUMO_GUARDED_BY(mutex) LUMO_THREADS(guarded_by(mutex))
/// On a function: its caller holds that mutex.
#define LUMO_REQUIRES(mutex) LUMO_THREADS(requires_capability(mutex))

namespace lumo::platform {

class LUMO_THREADS(capability("mutex")) AnnotatedMutex final {
  public:
    void lock() LUMO_THREADS(acquire_capability()) { mutex_.lock(); }
    void unlock() LUMO_THREADS(release_capability()) { mutex_.unlock(); }

  private:
    friend class AnnotatedCondition;
    std::mutex mutex_;
};

/// Something that a thread with the mutex locked waits for.
class AnnotatedCondition final {
  public:
    /// Lets go of the mutex while it waits. May return for no reason.
    void wait(AnnotatedMutex& mutex) LUMO_REQUIRES(mutex) {
        std::unique_lock<std::mutex> lock(mutex.mutex_, std::adopt_lock);
        changed_.wait(lock);
        static_cast<void>(lock.release()); // It stays locked, as it was.
    }
    void notifyOne() { changed_.notify_one(); }
    void notifyAll() { changed_.notify_all(); }

  private:
    std::condition_variable changed_;
};

/// Holds the mutex to the end of a scope.
class LUMO_THREADS(scoped_lockable) Locked final {
  public:
    explicit Locked(AnnotatedMutex& mutex) LUMO_THREADS(acquire_capability(mutex)) : mutex_(mutex) {
        mutex_.lock();
    }
    ~Locked() LUMO_THREADS(release_capability()) { mutex_.unlock(); }
    Locked(const Locked&) = delete;
    Locked& operator=(const Locked&) = delete;

  private:
    AnnotatedMutex& mutex_;
};

} // namespace lumo::platform
