#include "TarvoCLI/TreeMeasuring.h"

#include "LumoCore/Basics/Words.h"

#include <array>
#include <chrono>
#include <utility>

namespace tarvo {

using lumo::NamedTree;

TreeMeasuring::TreeMeasuring(std::shared_ptr<NamedTree> tree) {
    unreadable_ = std::async(std::launch::async, [this, tree = std::move(tree)] {
        return lumo::measureInto(*tree, tree->pathOf(NamedTree::root), NamedTree::root, &progress_,
                                 stop_.get_token());
    });
}

bool TreeMeasuring::isOver() const {
    return unreadable_.wait_for(std::chrono::seconds(0)) == std::future_status::ready;
}

std::string TreeMeasuring::text() {
    constexpr std::array<const char*, 4> turns{"-", "\\", "|", "/"};
    return lumo::Words{"midiendo {} {}", "measuring {} {}"}.with(
        progress_.entries.load(std::memory_order_relaxed), turns[++turn_ % turns.size()]);
}

} // namespace tarvo
