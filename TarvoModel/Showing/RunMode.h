#pragma once

#include <string>
#include <vector>

namespace tarvo {

/// How the application was started.
struct RunMode {
    bool isDemo = false;      ///< A made-up Mac is shown and nothing is cleaned.
    bool isCapturing = false; ///< The application takes pictures of itself.
    bool asksForWelcome = false;

    /// From the command line.
    static RunMode from(const std::vector<std::string>& arguments);

    /// True when the user's own disk is at stake: only then are snapshots stored, is the disk watched, and
    /// may the weekly cleanup run.
    [[nodiscard]] bool isForReal() const { return !isDemo && !isCapturing; }

    /// True when the welcome is shown, which holds back the first scan, except while taking pictures.
    [[nodiscard]] bool showsWelcome(bool wasSeen) const { return !wasSeen || asksForWelcome; }
    [[nodiscard]] bool startsWithScan(bool showsWelcome) const { return !showsWelcome || isCapturing; }

    friend bool operator==(const RunMode&, const RunMode&) = default;
};

} // namespace tarvo
