#pragma once

#include "LumoCore/Basics/Words.h"
#include "LumoCore/Explaining/Explanation.h"
#include "LumoCore/Explaining/FolderEvidence.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace lumo {

/// What is certain of a path by where it stands, so that nothing has to be guessed about it. The rule of
/// thumb, and a model, were made for the folders that applications leave in a home and no rule knows; of
/// anything else (the home, what is the user's own, a project, a place of the catalogue) they would say the
/// same and call it a leftover.
class KnownPlaces final {
  public:
    /// Looks up the places of the catalogue in the home.
    explicit KnownPlaces(std::string home);

    /// What the evidence's path is, with the advice to keep it; absent for what may be guessed about.
    [[nodiscard]] std::optional<Explanation> explain(const FolderEvidence& evidence, Date now,
                                                     Language language = currentLanguage()) const;

  private:
    struct RulePlace {
        std::string path;
        std::string_view ruleName;
    };

    /// What is said of a place; the owner is as in an explanation.
    struct Saying {
        Words whatItIs;
        Words owner;
        std::string_view ruleName = {}; ///< To be filled in, of a place of the catalogue.
    };

    [[nodiscard]] std::optional<Saying> sayingFor(const std::string& path) const;
    [[nodiscard]] std::optional<Saying> sayingInHome(const std::string& path) const;

    std::string home_;
    std::vector<RulePlace> rulePlaces_;
    std::vector<std::string> claimed_; ///< The paths of these, and our own folders.
};

} // namespace lumo
