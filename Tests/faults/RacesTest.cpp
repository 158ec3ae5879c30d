#include "Tests/faults/Ground.h"
#include "Tests/faults/Household.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <filesystem>
#include <functional>
#include <memory>
#include <thread>

using namespace tarvo::faults;
namespace fs = std::filesystem;

namespace {

/// Starts the commands together, round after round in a fresh home, and looks at what they leave.
void race(const Scenario& scenario, const std::vector<Arguments>& commands) {
    const Household household(scenario);
    const int rounds = ground().isLong ? 300 : 15;
    for (int round = 0; round < rounds; ++round) {
        household.reset();
        std::vector<std::unique_ptr<Child>> children;
        for (const Arguments& command : commands) {
            children.push_back(std::make_unique<Child>(household.words(command), household.environment()));
        }
        for (const auto& child : children) {
            const Ran ended = child->wait();
            EXPECT_TRUE(ended.exitCode == 0 || ended.exitCode == 1) << ended.exitCode << ended.error;
        }
        expectNone(household.settle());
        // An item is there whole or not at all.
        EXPECT_EQ(fs::exists(household.path("Desktop/Screenshot set")),
                  fs::exists(household.path("Desktop/Screenshot set/deep/er/twin")));
    }
}

/// A folder of the home, and an item in it, that trades places with a link out of the home as fast as it can.
class Gate final {
  public:
    Gate(const Household& household, const std::string& gate, std::string item)
        : gate_(household.path(gate)), link_(household.path("link")), item_(std::move(item)) {
        fs::remove_all(gate_);
        fs::create_directories(gate_);
        fs::create_directory_symlink(household.canary() + "/kept", link_);
        folder_ = open(gate_.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC);
        swapper_ = std::jthread([this](const std::stop_token& stop) {
            while (!stop.stop_requested()) {
                renameat2(AT_FDCWD, gate_.c_str(), AT_FDCWD, link_.c_str(), RENAME_EXCHANGE);
            }
        });
    }
    ~Gate() {
        swapper_ = {};
        close(folder_);
    }
    Gate(const Gate&) = delete;
    Gate& operator=(const Gate&) = delete;

    [[nodiscard]] bool holdsItem() const {
        return faccessat(folder_, (item_ + "/file").c_str(), F_OK, 0) == 0;
    }
    void putItem() const {
        mkdirat(folder_, item_.c_str(), 0755);
        close(openat(folder_, (item_ + "/file").c_str(), O_CREAT | O_WRONLY | O_CLOEXEC, 0644));
    }

  private:
    std::string gate_;
    std::string link_;
    std::string item_;
    int folder_ = -1;
    std::jthread swapper_;
};

std::ptrdiff_t linesIn(const std::string& path) {
    return std::ranges::count(tarvo::testing::contentOf(path), '\n');
}

} // namespace

TEST(Races, BetweenCleaningAndUndoingLoseNothing) {
    race(scenarioNamed("CleanOwn"), {cleanPlan, cleanPlan, {"undo"}});
}

TEST(Races, BetweenCleaningUndoingAndEmptyingLeaveNothingHalf) {
    Scenario scenario = scenarioNamed("CleanOwn");
    scenario.endsItems = true;
    race(scenario, {cleanPlan, {"undo"}, {"empty", "--yes"}});
}

TEST(Races, AgainstAFolderThatBecomesALinkNeverLeaveTheHome) {
    const Scenario deleting{.plan = {safe("npx-cache", {".npm/_npx"})}, .command = cleanPlan};
    const Scenario moving{.plan = {review("whisper", {".cache/whisper"})}, .command = cleanPlan};
    for (const Scenario* scenario : {&deleting, &moving}) {
        const Household household(*scenario);
        const Gate gate(household, scenario == &deleting ? ".npm" : ".cache",
                        scenario == &deleting ? "_npx" : "whisper");
        const int rounds = ground().isLong ? 5000 : 150;
        std::array<int, 2> counts = {};
        for (int round = 0; round < rounds; ++round) {
            gate.putItem();
            const Ran ended = household.startScenario().wait();
            ASSERT_TRUE(ended.exitCode == 0 || ended.exitCode == 1) << ended.exitCode << ended.error;
            // Refused means untouched, and done means done to the folder that was meant.
            ASSERT_EQ(gate.holdsItem(), ended.exitCode == 1) << ended.output;
            ++counts[static_cast<std::size_t>(ended.exitCode)];
            if (round % 100 == 99) {
                fs::remove_all(household.path("Library/Application Support/TarvoAI"));
            }
        }
        expectNone(household.canaryFindings());
        std::printf("Swaps: %d done, %d refused\n", counts[0], counts[1]);
        EXPECT_GT(counts[0], 0);
        EXPECT_GT(counts[1], 0);
    }
}

namespace {

/// Takes a duplicate while somebody removes the copy that stays, as soon as that is to happen. The calls that
/// move are slowed down by the tracer, so that it happens in the middle of one.
void raceForTheLastCopy(const char* delay, const std::function<bool(const Household& household)>& isTime) {
    const std::string id = "copia:Documents/again/first//Documents/first";
    const Scenario scenario{.plan = {review(id, {"Documents/again/first"}, "first")},
                            .command = {"clean", "--item", id, "--yes", "--json"}};
    const Household household(scenario);
    const int rounds = ground().isLong ? 100 : 5;
    for (int round = 0; round < rounds; ++round) {
        household.reset();
        std::jthread remover([&](const std::stop_token& stop) {
            while (!stop.stop_requested() && !isTime(household)) {
            }
            fs::remove(household.path("Documents/first"));
        });
        const Ran ended =
            household
                .startScenario({"strace", "-f", "-qq", "-o", household.traceFile(), "-e", "trace=renameat2",
                                "-e", std::string("inject=renameat2:") + delay + "=100000"})
                .wait();
        remover = {};
        expectNone(household.lies(ended));
        EXPECT_EQ(ended.exitCode, 1) << ended.output << ended.error;
        EXPECT_EQ(tarvo::testing::contentOf(household.path("Documents/again/first")), "twice")
            << ended.output;
        EXPECT_FALSE(fs::exists(household.path("Documents/first")));
    }
}

} // namespace

TEST(Races, ForTheCopyThatStaysNeverTakeTheLastOne) {
    if (!ground().whyNoTracing.empty()) {
        GTEST_SKIP() << ground().whyNoTracing;
    }
    // Compared and announced, and not yet moved; then moved, and not yet looked at again.
    raceForTheLastCopy("delay_enter", [](const Household& household) {
        return fs::exists(household.path("Library/Application Support/TarvoAI/apartado.jsonl"));
    });
    raceForTheLastCopy("delay_exit", [](const Household& household) {
        return !fs::exists(household.path("Documents/again/first"));
    });
}

TEST(Races, WithAnInterruptFinishTheItemInHandAndLogIt) {
    if (!ground().whyNoTracing.empty()) {
        GTEST_SKIP() << ground().whyNoTracing;
    }
    constexpr int count = 60;
    Scenario scenario{.command = cleanPlan};
    for (int number = 0; number < count; ++number) {
        scenario.plan.push_back(review(shots, {"Desktop/Screenshot " + std::to_string(number)}));
    }
    const Household household(scenario);
    fs::remove_all(household.path("Desktop"));
    for (int number = 0; number < count; ++number) {
        fs::create_directories(household.path("Desktop/Screenshot " + std::to_string(number)));
    }
    // The tracer raises the signal while an item is on its way: timed from outside, a fast machine is done
    // first.
    const Ran ended = household
                          .startScenario({"strace", "-f", "-qq", "-o", household.traceFile(), "-e",
                                          "trace=renameat2", "-e", "inject=renameat2:signal=INT:when=20"})
                          .wait();
    EXPECT_EQ(ended.exitCode, 130) << ended.error;
    const fs::directory_iterator left(household.path("Desktop"));
    const auto taken = count - std::distance(begin(left), end(left));
    EXPECT_EQ(linesIn(household.path("Library/Application Support/TarvoAI/historial.jsonl")), taken);
    EXPECT_GT(taken, 0);
    EXPECT_LT(taken, count);
    EXPECT_FALSE(fs::exists(household.path("Library/Application Support/TarvoAI/apartado.jsonl")));
    household.run({"undo"});
    EXPECT_EQ(std::distance(fs::directory_iterator(household.path("Desktop")), fs::directory_iterator()),
              count);
}
