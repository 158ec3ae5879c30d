#include "Tests/faults/Ground.h"
#include "Tests/faults/Sweep.h"

#include <gtest/gtest.h>

#include <cstdio>

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
