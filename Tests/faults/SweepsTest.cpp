#include "Tests/faults/Ground.h"
#include "Tests/faults/Sweep.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <initializer_list>
#include <string>

using namespace tarvo::faults;

namespace {

Figures totals;

class Sweeps : public testing::TestWithParam<Scenario> {
  protected:
    void SetUp() override {
        if (!ground().whyNoTracing.empty()) {
            GTEST_SKIP() << ground().whyNoTracing;
        }
    }

    /// Each point leaves everything as it must be, and the disturbance met most of the runs.
    static void expectNothingLost(Disturbance disturbance) {
        const Figures figures = sweep(GetParam(), attemptsAt(GetParam(), disturbance));
        totals += figures;
        std::printf("%s: %s\n", GetParam().name.c_str(), lineOf(figures).c_str());
        EXPECT_GT(figures.hits * (disturbance == Disturbance::killAtTime ? 10 : 2), figures.points);
        constexpr std::size_t screenful = 40;
        for (std::size_t index = 0; index < figures.texts.size() && index < screenful; ++index) {
            ADD_FAILURE() << GetParam().name << ", " << figures.texts[index];
        }
    }
};

} // namespace

TEST_P(Sweeps, LoseNothingToAKillAtAnySystemCall) {
    expectNothingLost(Disturbance::killAtCall);
}

TEST_P(Sweeps, LoseNothingToAFailingSystemCall) {
    expectNothingLost(Disturbance::errorAtCall);
}

TEST_P(Sweeps, LoseNothingToAKillAtAnyTime) {
    expectNothingLost(Disturbance::killAtTime);
}

TEST(Syncing, ComesBeforeWhatRestsOnIt) {
    // Every sync could be taken out, or be put after what it is for, and no test noticed.
    if (!ground().whyNoTracing.empty()) {
        GTEST_SKIP() << ground().whyNoTracing;
    }
    const Household household(scenarioNamed("CleanOwn"));
    household.reset();
    household.startScenario({"strace", "-f", "-y", "-qq", "-s", "4096", "-o", household.traceFile()}).wait();
    Arguments calls;
    std::ifstream trace(household.traceFile());
    for (std::string call; std::getline(trace, call);) {
        calls.push_back(call);
    }
    const auto next = [&](std::size_t from, std::initializer_list<const char*> parts) {
        const auto holdsAll = [&](const std::string& call) {
            return std::ranges::all_of(parts, [&](const char* part) { return call.contains(part); });
        };
        return static_cast<std::size_t>(
            std::find_if(calls.begin() + static_cast<std::ptrdiff_t>(std::min(from, calls.size())),
                         calls.end(), holdsAll) -
            calls.begin());
    };
    const std::size_t moved = next(0, {"renameat2(", "/Apartado/"});
    const std::size_t announced = next(0, {" write(", "/apartado.jsonl>"});
    const std::size_t announcedSynced = next(announced, {"sync(", "/apartado.jsonl>"});
    EXPECT_LT(announcedSynced, moved);
    EXPECT_LT(next(announcedSynced, {"sync(", "/TarvoAI>"}), moved) << "the new file's name";
    ASSERT_LT(moved, calls.size());
    const std::size_t retired = next(moved, {"unlink", "apartado.jsonl\""});
    const std::size_t logged = next(moved, {" write(", "/historial.jsonl>"});
    const std::size_t loggedSynced = next(logged, {"sync(", "/historial.jsonl>"});
    EXPECT_LT(loggedSynced, retired);
    EXPECT_LT(next(loggedSynced, {"sync(", "/TarvoAI>"}), retired) << "the new log's name";
    EXPECT_LT(retired, calls.size());
}

TEST(Harness, FindsWhatIsLostByACleanerThatLogsAfterItMoved) {
    if (!ground().whyNoTracing.empty()) {
        GTEST_SKIP() << ground().whyNoTracing;
    }
    const tarvo::testing::TempHome careless;
    careless.program("cleaner", R"(state="$HOME/Library/Application Support/TarvoAI"
held="$state/Apartado/20250314-093005/1-old.dmg"
case $1 in
clean)
    mkdir -p "${held%/*}"
    mv "$HOME/Downloads/old.dmg" "$held"
    line='{"id":"","title":"","status":"done","freedBytes":0,"trashedBytes":0,"date":"2025-03-14T09:30:05Z",'
    printf '%s"restorable":[{"original":"","inTrash":"%s"}]}\n' "$line" "$held" >>"$state/historial.jsonl"
    echo '[]' ;;
undo)
    done=0
    if [ -e "$state/historial.jsonl" ]; then
        mv "$held" "$HOME/Downloads/old.dmg" && rm "$state/historial.jsonl" && done=1
    fi
    echo "{\"done\": $done}" ;;
empty)
    rmdir "${held%/*}" 2>/dev/null ;;
esac
exit 0
)");
    const Scenario scenario{.name = "Careless",
                            .plan = {review("downloaded-installers", {"Downloads/old.dmg"})},
                            .command = cleanPlan,
                            .program = careless.path("cleaner")};
    const Figures figures = sweep(scenario, attemptsAt(scenario, Disturbance::killAtCall));
    std::printf("Careless: %s\n", lineOf(figures).c_str());
    EXPECT_GT(figures.findings[static_cast<std::size_t>(Fault::unrestorable)], 0U);
    EXPECT_EQ(figures.findings[static_cast<std::size_t>(Fault::loss)], 0U);
}

INSTANTIATE_TEST_SUITE_P(Of, Sweeps, testing::ValuesIn(scenarios()),
                         [](const auto& made) { return made.param.name; });

int main(int count, char** words) {
    testing::InitGoogleTest(&count, words);
    return runTests([] {
        const int result = RUN_ALL_TESTS();
        std::printf("All sweeps: %s\n", lineOf(totals).c_str());
        return result;
    });
}
