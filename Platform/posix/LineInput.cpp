#include "Platform/LineInput.h"

#include "Platform/Terminal.h"

#include <unistd.h>

#include <algorithm>
#include <cerrno>

namespace lumo::platform {

LineInput::State LineInput::next(std::string& line) {
    line.clear();
    bool isTooLong = false;
    bool hasAnything = false;
    while (used_ < buffer_.size() || fill()) {
        hasAnything = true;
        const std::size_t feed = buffer_.find('\n', used_);
        const std::size_t end = std::min(feed, buffer_.size());
        isTooLong = isTooLong || line.size() + (end - used_) > mostBytes_;
        if (!isTooLong) {
            line.append(buffer_, used_, end - used_);
        }
        used_ = feed == std::string::npos ? end : feed + 1;
        if (feed != std::string::npos) {
            return isTooLong ? State::tooLong : State::line;
        }
    }
    if (!hasAnything || wasInterrupted()) {
        return State::end;
    }
    return isTooLong ? State::tooLong : State::line;
}

bool LineInput::fill() {
    constexpr std::size_t pieceBytes = std::size_t{64} * 1024;
    buffer_.resize(pieceBytes);
    used_ = 0;
    ssize_t count = 0;
    do {
        count = isAtEnd_ || wasInterrupted() ? 0 : read(STDIN_FILENO, buffer_.data(), buffer_.size());
    } while (count < 0 && errno == EINTR);
    isAtEnd_ = count <= 0;
    buffer_.resize(count > 0 ? static_cast<std::size_t>(count) : 0);
    return count > 0;
}

} // namespace lumo::platform
