#pragma once

#include "Tests/faults/Household.h"

#include <array>
#include <cstddef>

namespace tarvo::faults {

enum class Disturbance { killAtCall, errorAtCall, killAtTime };

/// One way in which one run is disturbed.
struct Attempt {
    std::string injection;               ///< As the tracer takes it; empty for a kill at a time.
    bool isCore = false;                 ///< At a call that changes files, or right after one.
    std::chrono::microseconds life = {}; ///< When a run without an injection is killed.
};

/// All ways of one kind. Calls are counted by name and thread, from the first that names the home on: nothing
/// was touched before. In the short form it is a sample that keeps what is near the changes.
std::vector<Attempt> attemptsAt(const Scenario& scenario, Disturbance disturbance);

/// What came of some points.
struct Figures {
    std::size_t points = 0;
    std::size_t hits = 0;                     ///< Points at which the disturbance met the run.
    std::array<std::size_t, 5> findings = {}; ///< By `Fault`.
    Arguments texts = {};

    Figures& operator+=(const Figures& other);
};

std::string lineOf(const Figures& figures);

/// Makes all attempts, each in a fresh home, on two threads.
Figures sweep(const Scenario& scenario, const std::vector<Attempt>& attempts);

} // namespace tarvo::faults
