#include "ChildProcess.h"
#include "Comparison.h"
#include "Options.h"
#include "StopProgram.h"

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <fmt/format.h>
#include <string>
#include <string_view>
#include <unistd.h>
#include <utility>
#include <vector>

namespace tarvo::bench {

namespace {

using Role = Contestant::Role;

constexpr const char* usage = "usage: compare-scans --bin DIR --home DIR [--rounds N] [--cold] [--json]";
constexpr const char* notInstalled = "not installed";
constexpr const char* dropCaches = "/proc/sys/vm/drop_caches";

enum class Format { table, json };

struct Arguments {
    std::string programs;
    std::string home;
    int rounds = 7;
    Temperature temperature = Temperature::warm;
    Format format = Format::table;
};

Arguments argumentsOf(int count, char** values) {
    Arguments arguments;
    bool isCold = false;
    bool isJson = false;
    readOptions(count, values, usage,
                {{"--bin", &arguments.programs},
                 {"--home", &arguments.home},
                 {"--rounds", &arguments.rounds},
                 {"--cold", &isCold},
                 {"--json", &isJson}});
    arguments.temperature = isCold ? Temperature::cold : Temperature::warm;
    arguments.format = isJson ? Format::json : Format::table;
    return arguments;
}

/// A contestant whose `command` starts with a name or path of a program, which may be missing.
Contestant contestantOf(Role role, std::string name, std::vector<std::string> command) {
    Contestant contestant;
    contestant.role = role;
    contestant.name = std::move(name);
    if (const auto program = findProgram(command.front())) {
        command.front() = *program;
        contestant.command = std::move(command);
    } else {
        contestant.problem = notInstalled;
    }
    return contestant;
}

Contestant scanOf(const std::string& program, const std::string& home) {
    Contestant scan =
        contestantOf(Role::scan, "tarvo scan", {program, "scan", "--home", home, "--json", "--quiet"});
    // A stored snapshot would make the tree another one for whoever comes next.
    if (!scan.command.empty() &&
        printedBy({program, "scan", "--help"}).find("--no-snapshot") != std::string::npos) {
        scan.command.emplace_back("--no-snapshot");
    }
    return scan;
}

/// On some systems GNU's du goes by the name of gdu, so its help decides.
Contestant gduOf(const std::string& home) {
    Contestant gdu = contestantOf(Role::gdu, "gdu -n -p -x", {"gdu", "-n", "-p", "-x", home});
    if (!gdu.command.empty()) {
        const std::string help = printedBy({gdu.command.front(), "--help"});
        if (help.find("--non-interactive") == std::string::npos ||
            help.find("--no-progress") == std::string::npos) {
            gdu.command.clear();
            gdu.problem = notInstalled;
        }
    }
    return gdu;
}

std::vector<Contestant> contestantsOf(const Arguments& arguments) {
    const std::string& home = arguments.home;
    const std::string floorWalk = arguments.programs + "/floor-walk";
    const std::string tarvo = arguments.programs + "/tarvo";
    std::vector<Contestant> contestants;
    for (const char* threads : {"2", "4", "8", "16"}) {
        contestants.push_back(
            contestantOf(Role::floor, fmt::format("floor-walk {}", threads), {floorWalk, threads, home}));
    }
    contestants.push_back(
        contestantOf(Role::measure, "measure-tree", {arguments.programs + "/measure-tree", home}));
    contestants.push_back(scanOf(tarvo, home));
    const std::string passes = arguments.programs + "/scan-passes";
    contestants.push_back(contestantOf(Role::onePass, "scan-passes --full", {passes, "--full", home}));
    contestants.push_back(contestantOf(Role::bothPasses, "scan-passes", {passes, home}));
    contestants.push_back(contestantOf(Role::rules, "tarvo rules", {tarvo, "rules"}));
    contestants.push_back(contestantOf(Role::du, "du -s -x", {"du", "-s", "-x", home}));
    contestants.push_back(gduOf(home));
    return contestants;
}

std::int64_t entriesOf(const Arguments& arguments) {
    const std::string floorWalk = arguments.programs + "/floor-walk";
    if (!findProgram(floorWalk)) {
        return 0;
    }
    return std::strtoll(printedBy({floorWalk, "2", arguments.home}).c_str(), nullptr, 10);
}

/// Whether the kernel has let go of its caches. Only clean pages go, so everything is written out first.
bool hasDroppedCaches() {
    ::sync();
    const int control = ::open(dropCaches, O_WRONLY | O_CLOEXEC);
    if (control < 0) {
        return false;
    }
    const bool hasWritten = ::write(control, "3", 1) == 1;
    ::close(control);
    return hasWritten;
}

/// A contestant that failed once is out: its other times would compare work that was not done.
void runOnce(Contestant& contestant, Temperature temperature, bool isTimed) {
    if (!contestant.problem.empty()) {
        return;
    }
    if (temperature == Temperature::cold && !hasDroppedCaches()) {
        stopOnFailedCall(dropCaches);
    }
    const RunOutcome outcome = timedRun(contestant.command);
    if (!outcome.failure.empty()) {
        contestant.problem = "failed: " + outcome.failure;
    } else if (isTimed) {
        contestant.milliseconds.push_back(outcome.milliseconds);
        contestant.peakMebibytes = std::max(contestant.peakMebibytes, outcome.peakMebibytes);
    }
}

/// In alternation, so that whatever else the machine is doing falls on all of them alike.
void runAll(Comparison& comparison) {
    if (comparison.temperature == Temperature::warm) {
        for (Contestant& contestant : comparison.contestants) {
            runOnce(contestant, comparison.temperature, false);
        }
    }
    for (int round = 0; round < comparison.rounds; ++round) {
        for (Contestant& contestant : comparison.contestants) {
            runOnce(contestant, comparison.temperature, true);
        }
    }
}

int compare(const Arguments& arguments) {
    if (arguments.temperature == Temperature::cold && !hasDroppedCaches()) {
        fmt::print("{}: {}; only warm figures exist on this machine\n", dropCaches, std::strerror(errno));
        return EXIT_SUCCESS;
    }
    Comparison comparison;
    comparison.machine = machineShapeAt(arguments.home);
    comparison.home = arguments.home;
    comparison.entries = entriesOf(arguments);
    comparison.rounds = arguments.rounds;
    comparison.temperature = arguments.temperature;
    comparison.contestants = contestantsOf(arguments);
    runAll(comparison);
    fmt::print("{}", arguments.format == Format::json ? jsonOf(comparison) : tableOf(comparison));
    return EXIT_SUCCESS;
}

} // namespace

} // namespace tarvo::bench

int main(int count, char** values) {
    return tarvo::bench::compare(tarvo::bench::argumentsOf(count, values));
}
