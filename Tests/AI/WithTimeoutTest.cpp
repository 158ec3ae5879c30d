#include "LumoAI/WithTimeout.h"

#include <gtest/gtest.h>

#include <vector>

using lumo::withTimeout;

namespace {

using namespace std::chrono_literals;

/// Works until it is told to stop.
int untilStopped(const std::stop_token& stop) {
    while (!stop.stop_requested()) {
        std::this_thread::yield();
    }
    return 7;
}

} // namespace

TEST(WithTimeout, StopsWhatIsTooSlowOrStoppedFromOutside) {
    EXPECT_EQ(withTimeout(1h, [](const std::stop_token& stop) { return stop.stop_requested() ? 1 : 2; }), 2);
    EXPECT_EQ(withTimeout(1ms, untilStopped), std::nullopt) << "a late value is dropped";
    std::stop_source outside;
    std::jthread stopping([&] { outside.request_stop(); });
    EXPECT_EQ(withTimeout(1h, untilStopped, outside.get_token()), 7);
}

TEST(FirstResult, IsClaimedOnceByWhomeverComesFirst) {
    for (int round = 0; round < 200; ++round) {
        lumo::FirstResult first;
        std::atomic<int> claims = 0;
        std::vector<std::jthread> racing;
        for (int racer = 0; racer < 4; ++racer) {
            racing.emplace_back([&] { claims += first.claim() ? 1 : 0; });
        }
        racing.clear();
        ASSERT_EQ(claims, 1);
    }
}
