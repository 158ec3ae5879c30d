#pragma once

#include "LumoCore/Explaining/Explanation.h"
#include "LumoCore/Explaining/FolderEvidence.h"
#include "LumoCore/Inventories/Installers.h"
#include "LumoCore/Rules/HomePlaces.h"
#include "LumoCore/Scanning/ScanReport.h"
#include "LumoCore/Scanning/Scanner.h"

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace lumo {

/// What is certain of a path, so that nothing has to be guessed about it. The rule of thumb, and a model,
/// were made for the folders that applications leave in a home and no rule knows; of anything else (the home,
/// what is the user's own, a project, a place of the catalogue) they would say the same and call it a
/// leftover. Used by one thread at a time.
class KnownPlaces final {
  public:
    /// Looks up the places of the catalogue and the caches of installed applications in the home. What is
    /// installed must outlive this. `systemRoot` stands before the paths of the list of packages.
    KnownPlaces(HomePlaces places, const Installed& installed, Language language = currentLanguage(),
                const std::string& systemRoot = {});

    /// What the evidence's path is, whether it can go, and how; absent for what may be guessed about.
    [[nodiscard]] std::optional<Explanation> explain(const FolderEvidence& evidence, Date now) const;

    /// The same of what a scan measured, by path; what may be guessed about is missing.
    [[nodiscard]] std::map<std::string, Explanation> explainAll(const std::vector<UnclassifiedItem>& items,
                                                                Date now) const;

  private:
    struct RulePlaces {
        Rule rule;
        Explanation::Source source;
        std::vector<std::string> paths;
    };

    /// What folders were found to be, for all that is asked at once.
    struct Seen {
        Scanner::SeenFolders folders;
        std::map<std::string, bool> artifacts; ///< By the path of the folder that may be one.
    };

    void lookUp(std::vector<Rule> rules, Explanation::Source source);
    /// The rule that says what becomes of the place which that one found: of installers one finds all, and
    /// which of them were used is only known once somebody asks.
    [[nodiscard]] const Rule& ruleFor(const RulePlaces& found, const std::string& place) const;
    void divideCaches(const std::vector<Rule>& catalogue);

    [[nodiscard]] std::optional<Explanation> told(const FolderEvidence& evidence, Date now, Seen& seen) const;
    [[nodiscard]] std::optional<Explanation> saying(const FolderEvidence& evidence, Seen& seen) const;
    [[nodiscard]] std::optional<Explanation> ofRulesPlace(const FolderEvidence& evidence) const;
    [[nodiscard]] std::optional<Explanation> inProject(const std::string& path, Seen& seen) const;
    [[nodiscard]] std::optional<Explanation> aboveRules(const FolderEvidence& evidence) const;
    [[nodiscard]] std::optional<Explanation> inDividedCache(const std::string& path) const;
    [[nodiscard]] std::optional<Explanation> ofHidden(const FolderEvidence& evidence) const;
    [[nodiscard]] bool mayBeGuessedAbout(const std::string& path) const;
    [[nodiscard]] std::optional<std::string> ownerOf(const std::string& path,
                                                     const std::optional<InstalledApp>& app) const;

    HomePlaces places_;
    const Installed& installed_;
    Language language_;
    std::vector<RulePlaces> rulePlaces_;
    std::optional<Rule> usedInstallers_;
    std::shared_ptr<Installers::Judge> judge_; ///< Reads the list of packages once, when it is needed.
    std::vector<std::string> claimed_;         ///< The paths of these, and our own folders.
    std::vector<std::string> divided_;         ///< Cache folders of which a rule knows parts, there or not.
};

} // namespace lumo
