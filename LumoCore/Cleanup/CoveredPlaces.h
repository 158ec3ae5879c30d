#pragma once

#include "LumoCore/Basics/Language.h"
#include "LumoCore/Rules/CleanupAction.h"

#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace lumo {

/// Where this build would act by itself in a home. A plan or a report from a file may name any path under a
/// good id; only those that the rule with that id finds, or that are artifacts of the project it names, are
/// acted on.
class CoveredPlaces final {
  public:
    /// Looks at the home now: at the places of the rules that the actions name, and for its projects only
    /// when an action is on one. Rules that are carried out by hand cover nothing.
    CoveredPlaces(std::string home, const std::vector<Rule>& rules,
                  const std::vector<CleanupAction>& actions);

    /// Why the action may not be carried out, in words for the user; absent when all its paths, those that
    /// are measured and those of its fallback included, are covered or gone. Only of actions that were given.
    [[nodiscard]] std::optional<std::string> refusal(const CleanupAction& action,
                                                     Language language = currentLanguage()) const;

  private:
    [[nodiscard]] bool covers(const std::string& id, const std::string& path) const;
    [[nodiscard]] bool isArtifact(std::string_view id, const std::string& path) const;

    std::string home_;
    std::map<std::string, std::set<std::string>> ofRules_; ///< Absolute paths, by the rule's id.
    std::set<std::string> projects_;                       ///< Absolute.
};

} // namespace lumo
