#pragma once

#include "MachineShape.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace tarvo::bench {

/// Which caches a run finds.
enum class Temperature { warm, cold };

double medianOf(std::vector<double> values);

/// One program that was run, or could not be.
struct Contestant {
    std::string name; ///< As the table shows it; `role` says what it stands for.
    enum class Role { floor, measure, scan, onePass, bothPasses, rules, du, gdu } role = Role::floor;
    std::vector<std::string> command; ///< Empty when the program is not there.
    std::string problem;              ///< Why there are no figures; empty when there are.
    std::vector<double> milliseconds; ///< One a round.
    double peakMebibytes = 0;         ///< The largest of all rounds.

    bool hasFigures() const { return problem.empty() && !milliseconds.empty(); }
    double median() const { return medianOf(milliseconds); }
    double minimum() const;
};

struct Comparison {
    MachineShape machine;
    std::string home;
    std::int64_t entries = 0; ///< 0 when there was no program to count them.
    int rounds = 0;
    Temperature temperature = Temperature::warm;
    std::vector<Contestant> contestants;
};

/// One thing the product promises about its speed or its memory.
struct Target {
    std::string promise;
    std::optional<double> figure; ///< Absent when a contestant it needs has no figures.
    std::string unit;
    bool isReached = false;
};

/// The floor is the quickest of its variants; null when none ran.
const Contestant* quickest(const Comparison& comparison, Contestant::Role role);
std::vector<Target> targetsOf(const Comparison& comparison);

/// A header line, a table with a row a contestant and a line a target.
std::string tableOf(const Comparison& comparison);
/// The same figures with every single round, as one JSON document.
std::string jsonOf(const Comparison& comparison);

} // namespace tarvo::bench
