#pragma once

#include "LumoCore/Rules/Rule.h"
#include "LumoCore/Scanning/NamedTree.h"
#include "TarvoModel/Exploring/WhatIsIt.h"

#include <chrono>
#include <future>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace tarvo {

/// What is certain of the safety of the entries on a screen: found out beside the drawing, since the disk is
/// looked at for it, and for all of them at once, since they lie in the same folders. Used by one thread.
class ScreenSafeties final {
  public:
    ScreenSafeties(std::shared_ptr<const lumo::NamedTree> tree, std::string home);

    /// Absent where nothing is certain, and until that is known.
    [[nodiscard]] std::optional<lumo::Safety> of(const lumo::NamedEntry& entry);
    /// Looks for what was asked for, and waits that long for an answer at most. True when more is known.
    bool find(std::chrono::milliseconds patience);
    [[nodiscard]] bool isFinding() const { return finding_.valid(); }
    /// Something has changed on the disk. What was said stays until there is something else to say.
    void askAgain();

  private:
    using Safeties = std::map<lumo::EntryIndex, std::optional<lumo::Safety>>;

    [[nodiscard]] Safeties found(const std::vector<lumo::EntryIndex>& entries);

    const std::shared_ptr<const lumo::NamedTree> tree_;
    const std::string home_;
    Safeties known_;
    Safeties before_; ///< What was said before the disk changed.
    std::vector<lumo::EntryIndex> asked_;
    std::unique_ptr<CertainPlaces> certain_; ///< Belongs to what goes on, while something does.
    std::future<Safeties> finding_; ///< Last, so that it has ended before anything that it uses goes.
};

} // namespace tarvo
