#pragma once

#include "Tests/faults/Household.h"

#include <array>
#include <cstddef>

namespace tarvo::faults {

/// One system call of a recorded run.
struct CallSite {
    std::string name;
    std::size_t ordinal = 0; ///< Among the calls of this name that one thread makes, from 1.
    bool isCore = false;     ///< It changes files, or comes right after one that does.
};

/// The calls from the first that names the home on; before that nothing was touched. Each name and ordinal
/// once, over all threads and children.
std::vector<CallSite> recordedCalls(const Household& household);

/// One way in which a run is disturbed.
struct Attempt {
    std::string injection;               ///< As the tracer takes it; empty for none.
    std::chrono::microseconds life = {}; ///< Without an injection: when the run is killed.
};

/// Kills before each call; fails each call that opens or changes files with each error, once and for ever;
/// kills at random times. In the short form a sample that keeps what is near the changes.
std::vector<Attempt> killsAtCalls(const std::vector<CallSite>& calls);
std::vector<Attempt> errorsAtCalls(const std::vector<CallSite>& calls);
std::vector<Attempt> killsAtTimes(const Household& household);

/// What came of it.
struct Figures {
    std::size_t points = 0;
    std::size_t hits = 0; ///< Points at which the disturbance met the run.
    std::array<std::size_t, 5> findings = {};
    Words texts = {}; ///< The findings, at most a screenful.

    Figures& operator+=(const Figures& other);
};

std::string lineOf(const Figures& figures);

/// Makes all attempts, each in a fresh home, on two threads.
Figures sweep(const Scenario& scenario, const std::vector<Attempt>& attempts);

/// The figures of all sweeps so far.
Figures& totals();

} // namespace tarvo::faults
