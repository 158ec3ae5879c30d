#include "TarvoModel/Exploring/Explorer.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <memory>
#include <thread>

namespace {

using Clock = std::chrono::steady_clock;

double milliseconds(Clock::duration time) {
    return std::chrono::duration<double, std::milli>(time).count();
}

/// What the step takes, if it is the longest so far.
template <class Step>
void keepLongest(double& longest, Step&& step) {
    const Clock::time_point begun = Clock::now();
    step();
    longest = std::max(longest, milliseconds(Clock::now() - begun));
}

/// Into the largest folder as far as there is one, and out again, in every order.
double longestMove(tarvo::Explorer& explorer) {
    using tarvo::ExplorerOrder;
    double longest = 0;
    for (const auto order :
         {ExplorerOrder::name, ExplorerOrder::date, ExplorerOrder::items, ExplorerOrder::size}) {
        keepLongest(longest, [&] { explorer.setOrder(order); });
        for (bool isIn = true; isIn;) {
            keepLongest(longest, [&] { isIn = explorer.enter(); });
        }
        for (bool isOut = true; isOut;) {
            keepLongest(longest, [&] { isOut = explorer.leave(); });
        }
    }
    return longest;
}

} // namespace

// The explorer's model without a terminal, for the benchmark: when the first entries can be shown, what
// reading the top takes while the tree fills, and moving in it afterwards.
int main(int count, char** arguments) {
    if (count != 2) {
        std::fputs("usage: explore-tree DIR\n", stderr);
        return 2;
    }
    const std::string path = arguments[1];
    const Clock::time_point begun = Clock::now();
    const auto tree = std::make_shared<lumo::NamedTree>(path);
    tarvo::Explorer explorer(tree);
    std::stop_source done;
    std::jthread measuring([&] {
        lumo::measureInto(*tree, path, lumo::NamedTree::root, nullptr, {});
        done.request_stop();
    });
    double first = -1;
    double refresh = 0;
    while (!done.stop_requested()) {
        std::this_thread::sleep_for(std::chrono::milliseconds(first < 0 ? 1 : 100));
        keepLongest(refresh, [&] { explorer.refresh(); });
        if (first < 0 && !explorer.rows().empty()) {
            first = milliseconds(Clock::now() - begun);
        }
    }
    const double measured = milliseconds(Clock::now() - begun);
    measuring.join();
    explorer.refresh();
    std::printf("first entries after %.1f ms, longest refresh %.1f ms, measured after %.0f ms, longest move "
                "%.1f ms\n",
                first, refresh, measured, longestMove(explorer));
    return 0;
}
