#pragma once

#include "LumoCore/Scanning/NamedTree.h"

#include <cstdint>
#include <future>
#include <memory>
#include <stop_token>
#include <string>

namespace tarvo {

/// Fills a tree with what stands at its path, beside the drawing, and ends with this. Used by one thread.
class TreeMeasuring final {
  public:
    explicit TreeMeasuring(std::shared_ptr<lumo::NamedTree> tree);
    ~TreeMeasuring() { stop_.request_stop(); }
    TreeMeasuring(const TreeMeasuring&) = delete;
    TreeMeasuring& operator=(const TreeMeasuring&) = delete;

    [[nodiscard]] bool isOver() const;
    /// How many entries could not be read, to be asked for once. Waits until it is over.
    std::int64_t unreadableCount() { return unreadable_.get(); }
    /// "measuring 1234 |", with a sign that turns each time.
    std::string text();

  private:
    std::size_t turn_ = 0;
    std::stop_source stop_;
    lumo::platform::WalkProgress progress_;
    std::future<std::int64_t> unreadable_; ///< Last, so that it has ended before anything that it uses goes.
};

} // namespace tarvo
