#pragma once

#include "Tests/support/TempHome.h"

#include <string>
#include <vector>

namespace tarvo::testing {

/// A `systemctl` for a home's ".local/bin" that answers as a session's own does, for the weekly timer, and
/// writes down what it was asked.
inline constexpr const char* fakeSystemctl = R"(
units=$HOME/.config/systemd/user
shift 3
echo "$*" >>"$HOME/asked"
case $* in
*Version*) echo Version=252 ;;
*FragmentPath*) printf 'LoadState=loaded\nFragmentPath=%s\n' "$units/tarvo-weekly.service" ;;
enable*) mkdir -p "$units/timers.target.wants" && ln -sf ../tarvo-weekly.timer "$units/timers.target.wants" ;;
disable*) rm -f "$units/timers.target.wants/tarvo-weekly.timer" ;;
esac)";

/// What it was asked, a line each, without the words that every question begins with.
inline std::vector<std::string> callsOf(const TempHome& home) {
    std::vector<std::string> calls;
    std::string all = contentOf(home.path("asked"));
    for (std::size_t end = all.find('\n'); end != std::string::npos; end = all.find('\n')) {
        calls.push_back(all.substr(0, end));
        all.erase(0, end + 1);
    }
    return calls;
}

} // namespace tarvo::testing
