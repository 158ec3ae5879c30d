#include "ChildProcess.h"
#include "Comparison.h"
#include "MachineShape.h"
#include "Options.h"
#include "SplitMix.h"
#include "StopProgram.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <fmt/format.h>
#include <fstream>
#include <string>
#include <string_view>
#include <unistd.h>
#include <vector>

namespace tarvo::bench {

namespace {

constexpr const char* usage =
    "usage: compare-duplicates --bin DIR --folder DIR [--files N] [--megabytes N] [--rounds N] [--cold]";

struct Arguments {
    std::string programs;
    std::string folder;
    int files = 20'000;
    int megabytes = 2'000;
    int rounds = 5;
    Temperature temperature = Temperature::warm;
};

Arguments argumentsOf(int count, char** values) {
    Arguments arguments;
    bool isCold = false;
    readOptions(count, values, usage,
                {{"--bin", &arguments.programs},
                 {"--folder", &arguments.folder},
                 {"--files", &arguments.files, 3},
                 {"--megabytes", &arguments.megabytes},
                 {"--rounds", &arguments.rounds},
                 {"--cold", &isCold}});
    arguments.temperature = isCold ? Temperature::cold : Temperature::warm;
    return arguments;
}

void write(const std::string& path, std::string_view bytes) {
    std::ofstream file(path, std::ios::binary);
    if (!file.write(bytes.data(), static_cast<std::streamsize>(bytes.size())).flush()) {
        stopProgram(path + ": cannot be written");
    }
}

/// Files of which every third is a copy of an earlier one. Lengths are whole blocks of 4 KiB, half of them
/// small, so that many that differ are as long as another; one of ten differs from such a one in the middle.
void makeCopies(const std::string& home, int files, std::int64_t bytes) {
    constexpr std::int64_t block = 4096;
    SplitMix random(1);
    const std::int64_t mean = bytes / files / block;
    std::vector<std::string> originals;
    std::string content;
    for (int number = 0; number < files; ++number) {
        const std::string folder = fmt::format("{}/Pictures/{:03}", home, number % 200);
        std::filesystem::create_directories(folder);
        const std::string path = fmt::format("{}/{:05}.raw", folder, number);
        if (number % 3 == 2) {
            std::filesystem::copy_file(
                originals[static_cast<std::size_t>(random.below(std::ssize(originals)))], path);
            continue;
        }
        if (content.empty() || !random.chance(100)) {
            const std::int64_t blocks = random.chance(500)
                                            ? random.between(1, std::max<std::int64_t>(mean, 1))
                                            : random.between(mean, 2 * mean + 1);
            content.resize(static_cast<std::size_t>(blocks * block));
            for (std::size_t at = 0; at + 8 <= content.size(); at += 8) {
                const std::uint64_t word = random.next();
                std::copy_n(reinterpret_cast<const char*>(&word), 8,
                            content.begin() + static_cast<std::ptrdiff_t>(at));
            }
        } else {
            content[content.size() / 2] ^= 1;
        }
        write(path, content);
        originals.push_back(path);
    }
    ::sync();
}

/// Many small files, for the price of a name.
void makeNames(const std::string& home, int files) {
    for (int number = 0; number < files; ++number) {
        const std::string folder = fmt::format("{}/Documents/{:04}", home, number % 2000);
        if (number < 2000) {
            std::filesystem::create_directories(folder);
        }
        write(fmt::format("{}/{:07}.txt", folder, number), "x");
    }
    ::sync();
}

void dropCaches() {
    ::sync();
    const int control = ::open("/proc/sys/vm/drop_caches", O_WRONLY | O_CLOEXEC);
    if (control < 0 || ::write(control, "3", 1) != 1) {
        stopOnFailedCall("drop_caches");
    }
    ::close(control);
}

void runOnce(Contestant& contestant, Temperature temperature, bool isTimed) {
    if (temperature == Temperature::cold) {
        dropCaches();
    }
    const RunOutcome outcome = timedRun(contestant.command);
    if (!outcome.failure.empty()) {
        stopProgram(contestant.name + ": " + outcome.failure);
    }
    if (isTimed) {
        contestant.milliseconds.push_back(outcome.milliseconds);
        contestant.peakMebibytes = std::max(contestant.peakMebibytes, outcome.peakMebibytes);
    }
}

/// The two in alternation, and what the second takes of the first.
void compareTwo(Contestant peer, Contestant ours, const Arguments& arguments) {
    if (arguments.temperature == Temperature::warm) {
        runOnce(peer, arguments.temperature, false);
        runOnce(ours, arguments.temperature, false);
    }
    std::vector<double> ratios;
    for (int round = 0; round < arguments.rounds; ++round) {
        runOnce(round % 2 == 0 ? peer : ours, arguments.temperature, true);
        runOnce(round % 2 == 0 ? ours : peer, arguments.temperature, true);
        ratios.push_back(ours.milliseconds.back() / peer.milliseconds.back());
    }
    for (const Contestant& each : {peer, ours}) {
        fmt::print("{:<24} {:>10.1f} {:>10.1f} {:>10.1f}\n", each.name, each.median(), each.minimum(),
                   each.peakMebibytes);
    }
    fmt::print("median of the ratios of each round: {:.2f} ({:.2f} to {:.2f})\n\n", medianOf(ratios),
               std::ranges::min(ratios), std::ranges::max(ratios));
}

int compare(const Arguments& arguments) {
    constexpr int names = 200'000;
    const std::string copies =
        fmt::format("{}/copies-{}-{}", arguments.folder, arguments.files, arguments.megabytes);
    const std::string many = fmt::format("{}/names-{}", arguments.folder, names);
    if (!std::filesystem::exists(copies)) {
        makeCopies(copies, arguments.files, std::int64_t{1'000'000} * arguments.megabytes);
    }
    if (!std::filesystem::exists(many)) {
        makeNames(many, names);
    }
    const MachineShape machine = machineShapeAt(arguments.folder);
    fmt::print(
        "{} cores, {:.1f} GiB memory, {}, {}, {}; {} files of {} MB, a third of them copies; {} files; {} "
        "rounds\n\n{:<24} {:>10} {:>10} {:>10}\n",
        machine.cores, machine.memoryGibibytes, machine.kernel, machine.fileSystem,
        arguments.temperature == Temperature::warm ? "warm" : "cold", arguments.files, arguments.megabytes,
        names, arguments.rounds, "contestant", "median ms", "min ms", "peak MiB");
    const std::string tarvo = arguments.programs + "/tarvo";
    const auto find = [&](const char* kind, const std::string& home, const char* least) {
        return Contestant{
            .name = fmt::format("tarvo find {}", kind),
            .command = {tarvo, "find", kind, "--home", home, "--min", least, "--json", "--quiet"}};
    };
    if (const auto jdupes = findProgram("jdupes")) {
        compareTwo({.name = "jdupes -r -q", .command = {*jdupes, "-r", "-q", copies}},
                   find("duplicates", copies, "1"), arguments);
    } else {
        fmt::print("jdupes: not installed\n");
    }
    compareTwo({.name = "measure-tree", .command = {arguments.programs + "/measure-tree", many}},
               find("large", many, "100000000"), arguments);
    return EXIT_SUCCESS;
}

} // namespace

} // namespace tarvo::bench

int main(int count, char** values) {
    return tarvo::bench::compare(tarvo::bench::argumentsOf(count, values));
}
