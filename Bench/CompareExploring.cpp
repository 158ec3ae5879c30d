#include "ChildProcess.h"
#include "Comparison.h"
#include "MachineShape.h"
#include "NumberOf.h"
#include "StopProgram.h"

#include <algorithm>
#include <cstdlib>
#include <fmt/format.h>
#include <string>
#include <string_view>
#include <vector>

namespace tarvo::bench {

namespace {

constexpr const char* usage = "usage: compare-exploring --bin DIR --home DIR [--rounds N]";

struct Arguments {
    std::string programs;
    std::string home;
    int rounds = 5;
};

Arguments argumentsOf(int count, char** values) {
    Arguments arguments;
    for (int position = 1; position + 1 < count; position += 2) {
        const std::string_view name = values[position];
        const char* value = values[position + 1];
        if (name == "--bin") {
            arguments.programs = value;
        } else if (name == "--home") {
            arguments.home = value;
        } else if (name == "--rounds") {
            arguments.rounds = numberOf(value, usage, 1);
        } else {
            stopProgram(usage);
        }
    }
    if (count % 2 == 0 || arguments.programs.empty() || arguments.home.empty()) {
        stopProgram(usage);
    }
    return arguments;
}

std::vector<Contestant> contestantsOf(const Arguments& arguments) {
    const std::string measure = arguments.programs + "/measure-tree";
    std::vector<Contestant> contestants{
        {.name = "measure-tree", .command = {measure, arguments.home}},
        {.name = "measure-tree --names", .command = {measure, "--names", arguments.home}}};
    if (const auto ncdu = findProgram("ncdu")) {
        contestants.push_back(
            {.name = "ncdu -0 -x -o", .command = {*ncdu, "-0", "-x", "-o", "/dev/null", arguments.home}});
    }
    if (const auto gdu = findProgram("gdu")) {
        contestants.push_back({.name = "gdu -n -p -x", .command = {*gdu, "-n", "-p", "-x", arguments.home}});
    }
    return contestants;
}

/// Everybody in turn, after one round that only warms the caches.
int compare(const Arguments& arguments) {
    std::vector<Contestant> contestants = contestantsOf(arguments);
    for (int round = -1; round < arguments.rounds; ++round) {
        for (Contestant& each : contestants) {
            const RunOutcome outcome = timedRun(each.command);
            if (!outcome.failure.empty()) {
                stopProgram(each.name + ": " + outcome.failure);
            }
            if (round >= 0) {
                each.milliseconds.push_back(outcome.milliseconds);
                each.peakMebibytes = std::max(each.peakMebibytes, outcome.peakMebibytes);
            }
        }
    }
    const MachineShape machine = machineShapeAt(arguments.home);
    fmt::print("{} cores, {:.1f} GiB memory, {}, {}; warm, {} rounds\n\n{:<24} {:>10} {:>10} {:>10} {:>10}\n",
               machine.cores, machine.memoryGibibytes, machine.kernel, machine.fileSystem, arguments.rounds,
               "contestant", "median ms", "min ms", "x first", "peak MiB");
    for (const Contestant& each : contestants) {
        fmt::print("{:<24} {:>10.1f} {:>10.1f} {:>10.2f} {:>10.1f}\n", each.name, each.median(),
                   each.minimum(), each.median() / contestants.front().median(), each.peakMebibytes);
    }
    fmt::print("\n{}", printedBy({arguments.programs + "/explore-tree", arguments.home}));
    return EXIT_SUCCESS;
}

} // namespace

} // namespace tarvo::bench

int main(int count, char** values) {
    return tarvo::bench::compare(tarvo::bench::argumentsOf(count, values));
}
