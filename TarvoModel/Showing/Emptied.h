#pragma once

#include "LumoCore/Cleanup/CleanupOutcome.h"
#include "LumoCore/Cleanup/CleanupPlanner.h"
#include "TarvoModel/Showing/Rows.h"
#include "TarvoModel/Showing/Selection.h"

#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace tarvo {

/// What cleanups have taken since the application began. Of most of it a folder stays that is as good as
/// empty: nobody wants to see that, still less to clean it again.
class Emptied final {
  public:
    /// Less than that is as good as nothing.
    static constexpr std::int64_t hardlyAnything = 1000000;

    /// Takes over what was done of a cleanup; the ids of that, and of the rows all of whose paths were set
    /// aside, whatever the cleanup called it.
    std::set<std::string> take(const std::vector<lumo::CleanupOutcome>& outcomes,
                               const std::vector<Row>& rows);

    /// What was set aside has come back, and is shown however small it is.
    void putBack() { setAside_.clear(); }

    [[nodiscard]] bool hasAny() const {
        return !deleted_.empty() || !setAside_.empty() || !fruitless_.empty();
    }

    /// Leaves out of a new plan what is still empty, and ticks nothing of which nothing was freed. What has
    /// grown since is a row like any other again.
    void leaveOut(std::vector<lumo::PlanEntry>& entries, Selection& defaults, std::vector<Row>& rows);

  private:
    void untickFruitless(const std::vector<lumo::PlanEntry>& entries, Selection& defaults);

    std::set<std::string> deleted_;
    std::set<std::string> setAside_;
    /// What came to an end without freeing anything would be ticked for ever; with the bytes it had
    /// afterwards, once a plan has told.
    std::map<std::string, std::optional<std::int64_t>> fruitless_;
};

} // namespace tarvo
