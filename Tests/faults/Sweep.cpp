#include "Tests/faults/Sweep.h"

#include "Tests/faults/Ground.h"

#include <fmt/format.h>
#include <signal.h>

#include <algorithm>
#include <atomic>
#include <fstream>
#include <map>
#include <mutex>
#include <random>
#include <set>
#include <sstream>
#include <thread>
#include <utility>

namespace tarvo::faults {

namespace {

const std::set<std::string> opening{"openat", "openat2",    "fstat", "newfstatat", "statx",
                                    "stat",   "getdents64", "read",  "readlink",   "readlinkat"};
const std::set<std::string> changing{"mkdirat", "mkdir", "renameat2", "renameat", "rename",    "unlinkat",
                                     "unlink",  "rmdir", "write",     "pwrite64", "fsync",     "fdatasync",
                                     "chmod",   "link",  "fchmod",    "fchmodat", "ftruncate", "linkat"};

bool changesFiles(const std::string& name, const std::string& line) {
    return changing.contains(name) ||
           (name.starts_with("openat") && line.find("O_CREAT") != std::string::npos) ||
           (name.starts_with("openat") && line.find("O_WRONLY") != std::string::npos) ||
           (name.starts_with("openat") && line.find("O_RDWR") != std::string::npos);
}

/// In the long form everything; else the core thinned by the first number and the rest by the second.
std::vector<Attempt> sample(const std::vector<std::pair<Attempt, bool>>& attempts, std::size_t coreStep,
                            std::size_t step) {
    if (!ground::isLong()) {
        fmt::print("short form: near changes every {}. point, elsewhere every {}. from number {}\n", coreStep,
                   step, step / 2);
    }
    std::vector<Attempt> kept;
    std::array<std::size_t, 2> counts = {};
    for (const auto& [attempt, isCore] : attempts) {
        const std::size_t count = counts[isCore ? 1 : 0]++;
        if (ground::isLong() || count % (isCore ? coreStep : step) == (isCore ? 0 : step / 2)) {
            kept.push_back(attempt);
        }
    }
    return kept;
}

Words tracer(const Attempt& attempt, const std::string& traceFile) {
    const std::string name = attempt.injection.substr(0, attempt.injection.find(':'));
    return {
        "strace", "-f", "-qq", "-o", traceFile, "-e", "trace=" + name, "-e", "inject=" + attempt.injection};
}

std::string contentOf(const std::string& path) {
    std::ostringstream text;
    text << std::ifstream(path).rdbuf();
    return text.str();
}

/// One point: runs, judges, settles.
Figures tryOut(const Household& household, const Attempt& attempt) {
    household.reset();
    const bool isTimed = attempt.injection.empty();
    const Words before = isTimed ? Words{} : tracer(attempt, household.traceFile());
    const bool isKill = isTimed || attempt.injection.find("signal=KILL") != std::string::npos;
    const auto limit = isTimed ? attempt.life : std::chrono::seconds(20);
    const Ended ended = household.startScenario(before).wait(limit);
    std::vector<Finding> found;
    if (ended.hasHung && !isTimed) {
        found.push_back({Fault::hang, "did not end"});
    } else if (ended.signal != 0 && !isKill) {
        found.push_back({Fault::crash, "ended by signal " + std::to_string(ended.signal)});
    } else if (ended.signal == 0) {
        found = household.lies(ended);
    }
    if (ended.error.find("strace: ") != std::string::npos) {
        found.push_back({Fault::broken, ended.error});
    }
    Figures figures{.points = 1};
    figures.hits = isKill
                       ? (ended.signal == SIGKILL ? 1 : 0)
                       : (contentOf(household.traceFile()).find("(INJECTED)") != std::string::npos ? 1 : 0);
    std::ranges::move(household.settle(), std::back_inserter(found));
    for (const Finding& finding : found) {
        ++figures.findings[static_cast<std::size_t>(finding.fault)];
        figures.texts.push_back(
            (isTimed ? fmt::format("killed after {} us", attempt.life.count()) : attempt.injection) + ": " +
            finding.text);
    }
    return figures;
}

} // namespace

std::vector<CallSite> recordedCalls(const Household& household) {
    household.reset();
    household.startScenario({"strace", "-f", "-qq", "-o", household.traceFile()}).wait();
    std::ifstream trace(household.traceFile());
    std::map<std::string, std::map<std::string, std::size_t>> counts;
    std::map<std::string, bool> follows;
    std::map<std::pair<std::string, std::size_t>, bool> sites;
    bool hasBegun = false;
    for (std::string process, call; trace >> process && std::getline(trace >> std::ws, call);) {
        const std::string name = call.substr(0, call.find('('));
        if (name.empty() ||
            name.find_first_not_of("abcdefghijklmnopqrstuvwxyz_0123456789") != std::string::npos) {
            continue; // An ended process, a signal or the second half of a call.
        }
        const std::size_t ordinal = ++counts[process][name];
        hasBegun = hasBegun || (name != "execve" && call.find(household.home()) != std::string::npos);
        const bool changes = changesFiles(name, call);
        const bool isCore = changes || std::exchange(follows[process], changes);
        follows[process] = changes;
        if (hasBegun && name != "exit_group" && name != "execve") {
            bool& site = sites[{name, ordinal}];
            site = site || isCore;
        }
    }
    std::vector<CallSite> calls;
    for (const auto& [site, isCore] : sites) {
        calls.push_back({site.first, site.second, isCore});
    }
    return calls;
}

std::vector<Attempt> killsAtCalls(const std::vector<CallSite>& calls) {
    std::vector<std::pair<Attempt, bool>> all;
    for (const CallSite& call : calls) {
        all.push_back({{fmt::format("{}:signal=KILL:when={}", call.name, call.ordinal)}, call.isCore});
    }
    return sample(all, 1, 5);
}

std::vector<Attempt> errorsAtCalls(const std::vector<CallSite>& calls) {
    std::vector<std::pair<Attempt, bool>> all;
    for (const CallSite& call : calls) {
        if (!opening.contains(call.name) && !changing.contains(call.name)) {
            continue;
        }
        for (const char* error : {"ENOSPC", "EIO", "EACCES", "EROFS", "EMFILE", "EXDEV"}) {
            for (const char* howOften : {"", "+"}) {
                all.push_back(
                    {{fmt::format("{}:error={}:when={}{}", call.name, error, call.ordinal, howOften)},
                     call.isCore});
            }
        }
    }
    // Numbers without a common divisor with the twelve ways of failing a call, so that all of them come up.
    return sample(all, 5, 29);
}

std::vector<Attempt> killsAtTimes(const Household& household) {
    household.reset();
    const auto began = std::chrono::steady_clock::now();
    household.startScenario().wait();
    const auto took =
        std::chrono::duration_cast<std::chrono::microseconds>(std::chrono::steady_clock::now() - began);
    std::mt19937_64 random(20250314);
    std::vector<Attempt> attempts;
    const std::size_t count = (ground::isLong() ? 2000 : 100) / scenarios().size() + 1;
    for (std::size_t index = 0; index < count; ++index) {
        attempts.push_back(
            {{}, std::chrono::microseconds(random() % static_cast<std::uint64_t>(took.count()))});
    }
    return attempts;
}

Figures& Figures::operator+=(const Figures& other) {
    points += other.points;
    hits += other.hits;
    for (std::size_t fault = 0; fault < findings.size(); ++fault) {
        findings[fault] += other.findings[fault];
    }
    constexpr std::size_t screenful = 40;
    const std::size_t room = std::min(other.texts.size(), screenful - std::min(screenful, texts.size()));
    texts.insert(texts.end(), other.texts.begin(), other.texts.begin() + static_cast<std::ptrdiff_t>(room));
    return *this;
}

std::string lineOf(const Figures& figures) {
    return fmt::format(
        "{} points, {} met the run; losses {}, unrestorable {}, crashes {}, hangs {}, broken {}",
        figures.points, figures.hits, figures.findings[0], figures.findings[1], figures.findings[2],
        figures.findings[3], figures.findings[4]);
}

Figures sweep(const Scenario& scenario, const std::vector<Attempt>& attempts) {
    Figures figures;
    std::mutex mutex;
    std::atomic<std::size_t> next = 0;
    const auto work = [&] {
        const Household household(scenario);
        for (std::size_t index = 0; (index = next++) < attempts.size();) {
            const Figures one = tryOut(household, attempts[index]);
            const std::scoped_lock lock(mutex);
            figures += one;
        }
    };
    std::thread other(work);
    work();
    other.join();
    return figures;
}

Figures& totals() {
    static Figures all;
    return all;
}

} // namespace tarvo::faults
