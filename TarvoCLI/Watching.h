#pragma once

#include "LumoCore/Scanning/FileTree.h"
#include "TarvoCLI/Console.h"

#include <functional>
#include <string>
#include <string_view>

namespace tarvo {

/// Runs the work on a thread of its own. Until it ends this thread calls `tick` every 20 ms, with how often
/// that was.
void watch(const std::function<void()>& work, const std::function<void(int ticks)>& tick);

/// What puts the cursor at the start of an empty line, so that progress can be shown there.
inline constexpr const char* clearLine = "\r\x1B[K";

/// Shows on standard error what is being done and how much has been measured, on one line of the terminal.
void showWalk(std::string_view doing, const lumo::platform::WalkProgress& walked, double seconds);

/// Runs work that measures, and shows how far it is where progress is shown; `doing` says what is measured at
/// this moment. False when the user interrupted it.
bool watchWalk(const Invocation& invocation, const std::function<void(const lumo::FileTree::Watch&)>& work,
               const std::function<std::string()>& doing);

/// True on the ticks on which progress is shown: ten times a second is smooth enough, and what is over in a
/// moment shows nothing.
inline bool showsOn(int ticks) {
    return ticks % 5 == 0;
}

} // namespace tarvo
