#include "ChildProcess.h"
#include "Comparison.h"
#include "MachineShape.h"
#include "Options.h"
#include "StopProgram.h"

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <fcntl.h>
#include <fmt/format.h>
#include <string>
#include <string_view>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>
#include <vector>

namespace tarvo::bench {

namespace {

constexpr const char* usage =
    "usage: compare-removals --bin DIR --folder DIR [--files N] [--folders N] [--rounds N]";

struct Arguments {
    std::string programs;
    std::string folder;
    int files = 1'000'000;
    int folders = 1; ///< Over which the files are spread, all of them in one.
    int rounds = 3;
};

Arguments argumentsOf(int count, char** values) {
    Arguments arguments;
    readOptions(count, values, usage,
                {{"--bin", &arguments.programs},
                 {"--folder", &arguments.folder},
                 {"--files", &arguments.files},
                 {"--folders", &arguments.folders},
                 {"--rounds", &arguments.rounds}});
    return arguments;
}

int madeFolder(const std::string& path) {
    const int folder =
        ::mkdir(path.c_str(), 0755) == 0 ? ::open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC) : -1;
    if (folder < 0) {
        stopOnFailedCall(path);
    }
    return folder;
}

void makeFiles(const std::string& path, int files) {
    const int folder = madeFolder(path);
    for (int number = 0; number < files; ++number) {
        const std::string name = fmt::format("entry-{:07}.cache", number);
        const int file = ::openat(folder, name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0644);
        if (file < 0) {
            stopOnFailedCall(path + "/" + name);
        }
        ::close(file);
    }
    ::close(folder);
}

/// One folder of files, or folders of fifty folders with as many files each. Everything is on the disk
/// afterwards, so that no part of the making falls to whoever removes it.
void makeTree(const std::string& path, const Arguments& arguments) {
    if (arguments.folders == 1) {
        makeFiles(path, arguments.files);
    } else {
        ::close(madeFolder(path));
        constexpr int inOne = 50;
        for (int number = 0; number < arguments.folders; ++number) {
            const std::string group = fmt::format("{}/group-{:05}", path, number / inOne);
            if (number % inOne == 0) {
                ::close(madeFolder(group));
            }
            makeFiles(fmt::format("{}/folder-{:02}", group, number % inOne),
                      arguments.files / arguments.folders);
        }
    }
    const int folder = ::open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (::syncfs(folder) != 0) {
        stopOnFailedCall(path);
    }
    ::close(folder);
}

/// A removal that fails, or leaves the folder behind, has no time worth knowing.
void runOnce(Contestant& contestant, const std::string& path) {
    std::vector<std::string> command = contestant.command;
    command.push_back(path);
    const RunOutcome outcome = timedRun(command);
    if (!outcome.failure.empty() || ::access(path.c_str(), F_OK) == 0) {
        stopProgram(contestant.name + ": " + outcome.failure);
    }
    contestant.milliseconds.push_back(outcome.milliseconds);
    contestant.peakMebibytes = std::max(contestant.peakMebibytes, outcome.peakMebibytes);
}

int compare(const Arguments& arguments) {
    const auto rm = findProgram("rm");
    if (!rm) {
        stopProgram("rm: not installed");
    }
    Contestant peer{.name = "rm -rf", .command = {*rm, "-rf"}};
    Contestant ours{.name = "remove-tree", .command = {arguments.programs + "/remove-tree"}};
    // All are made before the first goes: some file systems search long for an inode after many were freed.
    std::vector<std::string> paths;
    for (int number = 0; number < 2 * arguments.rounds; ++number) {
        paths.push_back(fmt::format("{}/removed-{}-{}", arguments.folder, ::getpid(), number));
        makeTree(paths.back(), arguments);
    }
    std::vector<double> ratios;
    for (std::size_t round = 0; round < paths.size() / 2; ++round) {
        // Each is first in every other round: what the disk still has to do falls on both alike.
        runOnce(round % 2 == 0 ? peer : ours, paths[2 * round]);
        runOnce(round % 2 == 0 ? ours : peer, paths[2 * round + 1]);
        ratios.push_back(ours.milliseconds.back() / peer.milliseconds.back());
    }
    const MachineShape machine = machineShapeAt(arguments.folder);
    fmt::print("{} cores, {:.1f} GiB memory, {}, {}; {} files in {} folders; {} rounds\n\n", machine.cores,
               machine.memoryGibibytes, machine.kernel, machine.fileSystem, arguments.files,
               arguments.folders, arguments.rounds);
    fmt::print("{:<12} {:>10} {:>10} {:>10}\n", "contestant", "median ms", "min ms", "peak MiB");
    for (const Contestant& each : {peer, ours}) {
        fmt::print("{:<12} {:>10.1f} {:>10.1f} {:>10.1f}\n", each.name, each.median(), each.minimum(),
                   each.peakMebibytes);
    }
    fmt::print("\nmedian of the ratios of each round: {:.2f} ({:.2f} to {:.2f})\n", medianOf(ratios),
               std::ranges::min(ratios), std::ranges::max(ratios));
    return EXIT_SUCCESS;
}

} // namespace

} // namespace tarvo::bench

int main(int count, char** values) {
    return tarvo::bench::compare(tarvo::bench::argumentsOf(count, values));
}
