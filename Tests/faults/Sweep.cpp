#include "Tests/faults/Sweep.h"

#include "Tests/faults/Ground.h"

#include <fmt/chrono.h>
#include <fmt/format.h>
#include <signal.h>

#include <algorithm>
#include <atomic>
#include <fstream>
#include <functional>
#include <map>
#include <mutex>
#include <random>
#include <set>
#include <thread>
#include <utility>

namespace tarvo::faults {

namespace {

const std::set<std::string> opening{"openat", "openat2",    "fstat", "newfstatat", "statx",
                                    "stat",   "getdents64", "read",  "readlink",   "readlinkat"};
const std::set<std::string> changing{"mkdirat", "mkdir", "renameat2", "renameat", "rename",    "unlinkat",
                                     "unlink",  "rmdir", "write",     "pwrite64", "fsync",     "fdatasync",
                                     "chmod",   "link",  "fchmod",    "fchmodat", "ftruncate", "linkat"};

bool changesFiles(const std::string& name, const std::string& call) {
    const auto has = [&](const char* flag) { return call.find(flag) != std::string::npos; };
    return changing.contains(name) ||
           (name.starts_with("openat") && (has("O_CREAT") || has("O_WRONLY") || has("O_RDWR")));
}

/// The calls of a run by name and ordinal, and whether they are near a change.
using Calls = std::map<std::pair<std::string, std::size_t>, bool>;

Calls recordedCalls(const Household& household) {
    household.startScenario({"strace", "-f", "-qq", "-o", household.traceFile()}).wait();
    std::ifstream trace(household.traceFile());
    std::map<std::string, std::map<std::string, std::size_t>> counts;
    std::map<std::string, bool> changedLast;
    std::map<std::string, std::size_t> beforehand; // By the system's loader, which no injection survives.
    bool hasBegun = false;
    Calls calls;
    for (std::string process, call; trace >> process && std::getline(trace >> std::ws, call);) {
        const std::string name = call.substr(0, call.find('('));
        if (name.find_first_not_of("abcdefghijklmnopqrstuvwxyz_0123456789") != std::string::npos ||
            name == "execve" || name == "exit_group") {
            continue; // The end of a process, a signal, the second half of a call, or nothing to disturb.
        }
        const std::size_t ordinal = ++counts[process][name];
        hasBegun = hasBegun || call.find(household.home()) != std::string::npos;
        if (!hasBegun) {
            beforehand = counts[process];
        } else if (ordinal > beforehand[name]) {
            const bool changes = changesFiles(name, call);
            calls[{name, ordinal}] |= std::exchange(changedLast[process], changes) || changes;
        }
    }
    return calls;
}

std::vector<Attempt> killsIn(const Calls& calls) {
    std::vector<Attempt> attempts;
    for (const auto& [call, isCore] : calls) {
        attempts.push_back({fmt::format("{}:signal=KILL:when={}", call.first, call.second), isCore});
    }
    return attempts;
}

std::vector<Attempt> errorsIn(const Calls& calls) {
    std::vector<Attempt> attempts;
    for (const auto& [call, isCore] : calls) {
        if (!opening.contains(call.first) && !changing.contains(call.first)) {
            continue;
        }
        for (const char* error : {"ENOSPC", "EIO", "EACCES", "EROFS", "EMFILE", "EXDEV"}) {
            for (const char* forEver : {"", "+"}) {
                attempts.push_back(
                    {fmt::format("{}:error={}:when={}{}", call.first, error, call.second, forEver), isCore});
            }
        }
    }
    return attempts;
}

std::vector<Attempt> killsDuring(const Household& household) {
    auto shortest = std::chrono::microseconds::max();
    for (int run = 0; run < 3; ++run) {
        household.reset();
        const auto began = std::chrono::steady_clock::now();
        household.startScenario().wait();
        shortest = std::min(shortest, std::chrono::duration_cast<std::chrono::microseconds>(
                                          std::chrono::steady_clock::now() - began));
    }
    std::mt19937_64 random(20250314);
    std::vector<Attempt> attempts((ground().isLong ? 2000 : 100) / scenarios().size() + 1);
    for (Attempt& attempt : attempts) {
        attempt.life = shortest * static_cast<std::int64_t>(random() % 1000) / 1000;
    }
    return attempts;
}

/// In the short form the core is thinned by the first number and the rest by the second.
void thinOut(std::vector<Attempt>& attempts, std::size_t coreStep, std::size_t step) {
    std::array<std::size_t, 2> counts = {};
    const auto isLeftOut = [&](const Attempt& attempt) {
        const std::size_t count = counts[attempt.isCore ? 1 : 0]++;
        return count % (attempt.isCore ? coreStep : step) != (attempt.isCore ? 0 : step / 2);
    };
    if (!ground().isLong) {
        std::erase_if(attempts, isLeftOut);
        fmt::print("short form: near changes every {}. point, elsewhere every {}. from number {}\n", coreStep,
                   step, step / 2);
    }
}

bool isKill(const Attempt& attempt) {
    return attempt.injection.empty() || attempt.injection.find("signal=KILL") != std::string::npos;
}

Arguments tracerFor(const Attempt& attempt, const std::string& traceFile) {
    if (attempt.injection.empty()) {
        return {};
    }
    Arguments words{"strace", "-f", "-qq", "-o", traceFile};
    if (!isKill(attempt)) {
        words.emplace_back("--seccomp-bpf"); // Several times as fast, and deaf to signals.
    }
    const std::string name = attempt.injection.substr(0, attempt.injection.find(':'));
    words.insert(words.end(), {"-e", "trace=" + name, "-e", "inject=" + attempt.injection});
    return words;
}

bool metTheRun(const Attempt& attempt, const Ran& ended, const std::string& traceFile) {
    return isKill(attempt) ? ended.signal == SIGKILL
                           : testing::contentOf(traceFile).find("(INJECTED)") != std::string::npos;
}

/// One point: disturbs, judges, settles.
Figures tryOut(const Household& household, const Attempt& attempt) {
    household.reset();
    const bool isTimed = attempt.injection.empty();
    const Ran ended = household.startScenario(tracerFor(attempt, household.traceFile()))
                          .wait(isTimed ? attempt.life : hangLimit);
    std::vector<Finding> found;
    if (ended.hasHung && !isTimed) {
        found.push_back({Fault::hang, "did not end"});
    } else if (ended.signal != 0 && !isKill(attempt)) {
        found.push_back({Fault::crash, fmt::format("ended by signal {}", ended.signal)});
    } else if (ended.signal == 0) {
        found = household.lies(ended);
    }
    if (ended.error.find("strace: ") != std::string::npos) {
        found.push_back({Fault::broken, ended.error});
    }
    Figures figures{.points = 1, .hits = metTheRun(attempt, ended, household.traceFile()) ? 1U : 0U};
    std::ranges::move(household.settle(), std::back_inserter(found));
    for (const Finding& finding : found) {
        ++figures.findings[static_cast<std::size_t>(finding.fault)];
        const std::string how = isTimed ? fmt::format("killed after {}", attempt.life) : attempt.injection;
        figures.texts.push_back(how + ": " + finding.text);
    }
    return figures;
}

} // namespace

std::vector<Attempt> attemptsAt(const Scenario& scenario, Disturbance disturbance) {
    const Household household(scenario);
    if (disturbance == Disturbance::killAtTime) {
        return killsDuring(household);
    }
    const bool isKill = disturbance == Disturbance::killAtCall;
    const Calls calls = recordedCalls(household);
    std::vector<Attempt> attempts = isKill ? killsIn(calls) : errorsIn(calls);
    // 5 and 29 share no divisor with the twelve ways of failing a call, so that all of them come up.
    thinOut(attempts, isKill ? 1 : 5, isKill ? 5 : 29);
    return attempts;
}

Figures& Figures::operator+=(const Figures& other) {
    points += other.points;
    hits += other.hits;
    std::ranges::transform(findings, other.findings, findings.begin(), std::plus());
    texts.insert(texts.end(), other.texts.begin(), other.texts.end());
    return *this;
}

std::string lineOf(const Figures& figures) {
    const auto& [losses, unrestorable, crashes, hangs, broken] = figures.findings;
    return fmt::format(
        "{} points, {} met the run; losses {}, unrestorable {}, crashes {}, hangs {}, broken {}",
        figures.points, figures.hits, losses, unrestorable, crashes, hangs, broken);
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

} // namespace tarvo::faults
