#include "ChildProcess.h"
#include "Comparison.h"
#include "FirstShown.h"
#include "MachineShape.h"
#include "Options.h"
#include "StopProgram.h"

#include <algorithm>
#include <cstdlib>
#include <fmt/format.h>
#include <string>
#include <string_view>
#include <utility>
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
    readOptions(
        count, values, usage,
        {{"--bin", &arguments.programs}, {"--home", &arguments.home}, {"--rounds", &arguments.rounds}});
    return arguments;
}

std::vector<Contestant> contestantsOf(const Arguments& arguments) {
    const std::string measure = arguments.programs + "/measure-tree";
    std::vector<Contestant> contestants{
        {.name = "measure-tree", .command = {measure, arguments.home}},
        {.name = "measure-tree --names", .command = {measure, "--names", arguments.home}},
        {.name = "tarvo explore --export -",
         .command = {arguments.programs + "/tarvo", "--quiet", "explore", "--export", "-", arguments.home}}};
    if (const auto ncdu = findProgram("ncdu")) {
        contestants.push_back({.name = "ncdu -0 -x -e -o",
                               .command = {*ncdu, "-0", "-x", "-e", "-o", "/dev/null", arguments.home}});
    }
    if (const auto gdu = findProgram("gdu")) {
        contestants.push_back({.name = "gdu -n -p -x", .command = {*gdu, "-n", "-p", "-x", arguments.home}});
    }
    return contestants;
}

/// A program that somebody starts to look around, and what it shows once there is something to see.
struct Explored {
    Contestant contestant;
    std::string_view text;
};

std::vector<Explored> explorersOf(const Arguments& arguments) {
    std::vector<Explored> explorers{
        {{.name = "tarvo explore", .command = {arguments.programs + "/tarvo", "explore", arguments.home}},
         " % ["}};
    // The one says so below its entries, the other shows the path above them once it has some.
    using Peer = std::pair<std::string, std::string_view>;
    for (const auto& [name, text] : {Peer{"ncdu", "Total disk usage"}, Peer{"gdu", " --- /"}}) {
        if (const auto program = findProgram(name)) {
            explorers.push_back({{.name = name + " -x", .command = {*program, "-x", arguments.home}}, text});
        }
    }
    return explorers;
}

void printRow(const Contestant& each, const Contestant& first) {
    fmt::print("{:<26} {:>10.1f} {:>10.1f} {:>10.2f}", each.name, each.median(), each.minimum(),
               each.median() / first.median());
    fmt::print("{}\n", each.peakMebibytes > 0 ? fmt::format(" {:>10.1f}", each.peakMebibytes) : "");
}

/// Everybody in turn, after one round that only warms the caches.
void compareWhole(std::vector<Contestant>& contestants, int rounds) {
    for (int round = -1; round < rounds; ++round) {
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
}

void compareFirstSight(std::vector<Explored>& explorers, int rounds) {
    for (int round = 0; round < rounds; ++round) {
        for (Explored& each : explorers) {
            each.contestant.milliseconds.push_back(
                millisecondsUntilShown(each.contestant.command, each.text));
        }
    }
}

int compare(const Arguments& arguments) {
    std::vector<Contestant> contestants = contestantsOf(arguments);
    compareWhole(contestants, arguments.rounds);
    std::vector<Explored> explorers = explorersOf(arguments);
    compareFirstSight(explorers, arguments.rounds);
    const MachineShape machine = machineShapeAt(arguments.home);
    fmt::print("{} cores, {:.1f} GiB memory, {}, {}; warm, {} rounds\n", machine.cores,
               machine.memoryGibibytes, machine.kernel, machine.fileSystem, arguments.rounds);
    constexpr const char* header = "\n{:<26} {:>10} {:>10} {:>10} {:>10}\n";
    fmt::print(header, "whole tree", "median ms", "min ms", "x first", "peak MiB");
    for (const Contestant& each : contestants) {
        printRow(each, contestants.front());
    }
    fmt::print(header, "until entries are seen", "median ms", "min ms", "x first", "");
    for (const Explored& each : explorers) {
        printRow(each.contestant, explorers.front().contestant);
    }
    fmt::print("\nin process:\n");
    for (int round = 0; round < arguments.rounds; ++round) {
        fmt::print("{}", printedBy({arguments.programs + "/explore-tree", arguments.home}));
    }
    return EXIT_SUCCESS;
}

} // namespace

} // namespace tarvo::bench

int main(int count, char** values) {
    return tarvo::bench::compare(tarvo::bench::argumentsOf(count, values));
}
