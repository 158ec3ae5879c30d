#include "TarvoMCP/Outbox.h"

#include <algorithm>

namespace tarvo::mcp {

bool Outbox::put(const std::string& line, Line kind) {
    {
        const std::scoped_lock lock(mutex_);
        if (isGone_ || (kind == Line::droppable && !lines_.empty())) {
            return !isGone_;
        }
        lines_.push_back(line + "\n");
        waiting_ += line.size() + 1;
    }
    changed_.notify_all();
    return true;
}

bool Outbox::waitForRoom() {
    std::unique_lock lock(mutex_);
    changed_.wait(lock,
                  [this] { return isGone_ || waiting_ <= mostWaitingBytes || triesInVain_ >= mostTries; });
    return !isGone_ && waiting_ <= mostWaitingBytes;
}

void Outbox::close() {
    {
        const std::scoped_lock lock(mutex_);
        isClosing_ = true;
        triesInVain_ = 0;
    }
    changed_.notify_all();
    if (writer_.joinable()) {
        writer_.join();
    }
}

void Outbox::work() {
    std::unique_lock lock(mutex_);
    while (!isGone_) {
        changed_.wait(lock, [this] { return isClosing_ || !lines_.empty(); });
        if (lines_.empty() || (isClosing_ && triesInVain_ >= mostTriesAtTheEnd)) {
            return;
        }
        writeFirst(lock);
    }
}

void Outbox::writeFirst(std::unique_lock<std::mutex>& lock) {
    // Others only add behind it meanwhile, which leaves it where it is.
    const std::string& line = lines_.front();
    lock.unlock();
    const std::optional<std::size_t> count = write_(std::string_view(line).substr(written_));
    lock.lock();
    triesInVain_ = count == 0 ? triesInVain_ + 1 : 0;
    isGone_ = !count;
    if (isGone_) {
        lines_.clear();
        waiting_ = 0;
    } else {
        written_ += *count;
        if (written_ == line.size()) {
            waiting_ -= written_;
            written_ = 0;
            lines_.pop_front();
        }
    }
    changed_.notify_all();
}

} // namespace tarvo::mcp
