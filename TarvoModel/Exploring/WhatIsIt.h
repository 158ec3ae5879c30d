#pragma once

#include "LumoCore/Explaining/KnownPlaces.h"
#include "LumoCore/Scanning/NamedTree.h"
#include "TarvoModel/Showing/ExplanationTexts.h"

#include <map>
#include <optional>
#include <stop_token>
#include <string>
#include <vector>

/// What is known of what somebody looks at in a home.
namespace tarvo {

/// What is certain of paths in a home. Making one looks at what is installed, and takes a moment.
class CertainPlaces final {
  public:
    explicit CertainPlaces(const std::string& home);

    /// How risky it is to remove what stands at each of these paths; those of which that is not certain are
    /// missing. Used by one thread at a time.
    [[nodiscard]] std::map<std::string, lumo::Safety>
    safetiesOf(const std::vector<lumo::UnclassifiedItem>& items) const;

  private:
    lumo::Installed installed_;
    lumo::KnownPlaces known_;
};

/// What stands at the path, line by line: what is certain, else what a model said lately, else the rule of
/// thumb. Measures it; nothing after a stop.
std::vector<ExplanationLine> whatItIs(const std::string& path, const std::string& home, lumo::Date now,
                                      const std::stop_token& stop = {});

/// What could not be read of an entry, when there is anything: its size is too small then.
std::optional<ExplanationLine> unreadLine(const lumo::NamedEntry& entry);

/// One letter for the safety, the first of its word: "S", "R", "C" in Spanish, "S", "R", "K" in English.
char safetyLetter(lumo::Safety safety, lumo::Language language = lumo::currentLanguage());

} // namespace tarvo
