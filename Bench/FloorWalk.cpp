// The least work that still reads every directory and every status of a tree: what a real measurement is
// compared with. It remembers no file, so links count as often as they appear, and bounds no descriptors.

#include <atomic>
#include <condition_variable>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <dirent.h>
#include <fcntl.h>
#include <fmt/format.h>
#include <memory>
#include <mutex>
#include <string>
#include <sys/resource.h>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>
#include <vector>

namespace tarvo::bench {
namespace {

/// An open directory, kept by all of its folders that are still to be read.
struct Directory {
    explicit Directory(int opened) : descriptor(opened) {}
    ~Directory() { ::close(descriptor); }
    Directory(const Directory&) = delete;
    const int descriptor;
};

struct Work {
    std::shared_ptr<const Directory> parent; ///< None for the tree itself.
    std::string name;
};

struct Totals {
    std::atomic<std::int64_t> entries;
    std::atomic<std::int64_t> bytes;
};

/// The last in is the first out: that keeps few directories open.
class WorkStack final {
  public:
    /// Every thread counts as having finished something when it asks for the first time.
    explicit WorkStack(std::size_t threads) : unfinished_(threads) {}

    void push(std::vector<Work>& found) {
        const std::lock_guard guard(mutex_);
        unfinished_ += found.size();
        for (Work& work : found) {
            stack_.push_back(std::move(work));
            changed_.notify_one();
        }
        found.clear();
    }

    /// Puts the next folder into `work`; false once all are read.
    bool next(Work& work) {
        std::unique_lock lock(mutex_);
        if (--unfinished_ == 0) {
            changed_.notify_all();
        }
        changed_.wait(lock, [&] { return !stack_.empty() || unfinished_ == 0; });
        if (stack_.empty()) {
            return false;
        }
        work = std::move(stack_.back());
        stack_.pop_back();
        return true;
    }

  private:
    std::mutex mutex_;
    std::condition_variable changed_;
    std::vector<Work> stack_;
    std::size_t unfinished_; ///< On the stack or being read.
};

void readDirectory(const Work& work, WorkStack& stack, Totals& totals) {
    alignas(dirent64) char buffer[32768];
    const int opened = ::openat(work.parent ? work.parent->descriptor : AT_FDCWD, work.name.c_str(),
                                O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
    if (opened < 0) {
        return std::perror(work.name.c_str());
    }
    const auto directory = std::make_shared<const Directory>(opened);
    std::vector<Work> found;
    std::int64_t entries = 0;
    std::int64_t bytes = 0;
    for (ssize_t length = 0; (length = ::getdents64(opened, buffer, sizeof buffer)) > 0;) {
        for (ssize_t offset = 0; offset < length;) {
            const auto* entry = reinterpret_cast<const dirent64*>(buffer + offset);
            offset += entry->d_reclen;
            const char* name = entry->d_name;
            const bool isDots = name[0] == '.' && (name[1] == '\0' || (name[1] == '.' && name[2] == '\0'));
            struct stat status;
            if (isDots || ::fstatat(opened, name, &status, AT_SYMLINK_NOFOLLOW) != 0) {
                continue;
            }
            ++entries;
            bytes += status.st_blocks * 512;
            if (S_ISDIR(status.st_mode)) {
                found.push_back({directory, name});
            }
        }
        if (!found.empty()) {
            stack.push(found);
        }
    }
    totals.entries += entries;
    totals.bytes += bytes;
}

void walk(const std::string& folder, std::size_t threads, Totals& totals) {
    WorkStack stack(threads);
    std::vector<Work> tree{{nullptr, folder}};
    stack.push(tree);
    std::vector<std::jthread> workers;
    for (std::size_t number = 0; number < threads; ++number) {
        workers.emplace_back([&] {
            for (Work work; stack.next(work); work.parent.reset()) {
                readDirectory(work, stack, totals);
            }
        });
    }
}

} // namespace

} // namespace tarvo::bench

int main(int count, char** values) {
    const int threads = count == 3 ? std::atoi(values[1]) : 0;
    const std::string folder = count == 3 ? std::string(values[2]) + "/" : std::string();
    struct stat status;
    if (threads < 1 || ::stat(folder.c_str(), &status) != 0) {
        fmt::print(stderr, "usage: floor-walk THREADS DIR, a number and a folder\n");
        return 2;
    }
    rlimit descriptors{};
    ::getrlimit(RLIMIT_NOFILE, &descriptors);
    descriptors.rlim_cur = descriptors.rlim_max;
    ::setrlimit(RLIMIT_NOFILE, &descriptors);
    tarvo::bench::Totals totals{1, status.st_blocks * 512};
    tarvo::bench::walk(folder, static_cast<std::size_t>(threads), totals);
    fmt::print("{} entries\n{} bytes\n", totals.entries.load(), totals.bytes.load());
    return 0;
}
