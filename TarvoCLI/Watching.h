#pragma once

#include <functional>

namespace tarvo {

/// Runs the work on a thread of its own. Until it ends this thread calls `tick` every 20 ms, with how often
/// that was.
void watch(const std::function<void()>& work, const std::function<void(int ticks)>& tick);

/// What puts the cursor at the start of an empty line, so that progress can be shown there.
inline constexpr const char* clearLine = "\r\x1B[K";

/// True on the ticks on which progress is shown: ten times a second is smooth enough, and what is over in a
/// moment shows nothing.
inline bool showsOn(int ticks) {
    return ticks % 5 == 0;
}

} // namespace tarvo
