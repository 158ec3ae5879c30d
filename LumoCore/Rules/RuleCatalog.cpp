#include "LumoCore/Rules/RuleCatalog.h"

#include "LumoCore/Basics/Words.h"
#include "LumoCore/Rules/RuleRow.h"

#include <array>
#include <span>
#include <string_view>

namespace lumo::RuleCatalog {

namespace {

/// What people download on Linux to install or unpack: packages, programs in one file, and archives.
constexpr auto linuxInstallers =
    std::to_array<std::string_view>({".deb", ".rpm", ".appimage", ".flatpak", ".flatpakref", ".snap", ".run",
                                     ".tar.gz", ".tgz", ".tar.xz", ".tar.bz2", ".tar.zst", ".7z", ".rar"});

bool isEmpty(const Words& words) {
    return words.en.empty();
}

Cleanup cleanupOf(const HowToFree& how, Language language) {
    switch (how.way) {
    case Freeing::byCommand:
        return cleanup::Command{how.words.in(language)};
    case Freeing::byHand:
        return cleanup::Manual{how.words.in(language)};
    case Freeing::deletingContents:
        return cleanup::DeleteContents{};
    case Freeing::deletingItems:
        break;
    }
    return cleanup::DeleteItems{};
}

Rule ruleOf(const Row& row, Safety safety, Language language) {
    Rule rule{.id = std::string(row.id),
              .name = row.name.in(language),
              .category = row.category,
              .safety = safety,
              .explanation = row.explanation.in(language),
              .cleanup = cleanupOf(row.cleanup, language),
              .locator = row.locator};
    if (!row.closeFirst.empty()) {
        rule.closeFirst = std::string(row.closeFirst);
    }
    return rule;
}

/// What the row says and where it looks on Linux.
void adaptToLinux(Rule& rule, const Row& row, Language language) {
    if (!isEmpty(row.nameOnLinux)) {
        rule.name = row.nameOnLinux.in(language);
    }
    if (!isEmpty(row.explanationOnLinux)) {
        rule.explanation = row.explanationOnLinux.in(language);
    }
    if (!isEmpty(row.handOnLinux)) {
        rule.cleanup = cleanup::Manual{row.handOnLinux.in(language)};
    }
    if (row.emptiesOnLinux) {
        rule.cleanup = cleanup::DeleteContents{};
    }
    rule.places = {row.locator};
    rule.places.insert(rule.places.end(), row.onLinux.begin(), row.onLinux.end());
    for (Locator& place : rule.places) {
        if (auto* installers = std::get_if<locator::Installers>(&place)) {
            installers->furtherExtensions.assign(linuxInstallers.begin(), linuxInstallers.end());
        }
    }
}

void append(std::vector<Rule>& rules, std::span<const Row> rows, Safety safety, System system,
            Language language) {
    for (const Row& row : rows) {
        rules.push_back(ruleOf(row, safety, language));
        if (system == System::linux) {
            adaptToLinux(rules.back(), row, language);
        }
    }
}

void appendAll(std::vector<Rule>& rules, System system, Language language) {
    append(rules, safeRows(), Safety::safe, system, language);
    append(rules, reviewRows(), Safety::review, system, language);
    append(rules, keepRows(), Safety::keep, system, language);
}

/// The same locator looking where the place is in that home.
Locator placed(Locator where, const HomePlaces& home) {
    struct Place {
        const HomePlaces& home;

        void operator()(locator::Path& path) const {
            path.path = home.placed(path.path);
            for (std::string& other : path.onlyWith) {
                other = home.placed(other);
            }
        }
        void operator()(locator::Children& children) const { children.of = home.placed(children.of); }
        void operator()(locator::Below& below) const { below.of = home.placed(below.of); }
        void operator()(locator::OlderVersions& versions) const { versions.of = home.placed(versions.of); }
        void operator()(locator::NewestVersion& version) const { version.of = home.placed(version.of); }
        void operator()(locator::Installers& installers) const { installers.in = home.placed(installers.in); }
    };
    std::visit(Place{home}, where);
    return where;
}

} // namespace

const std::vector<Rule>& all() {
    static const std::vector<Rule> rules = inLanguage(currentLanguage());
    return rules;
}

std::vector<Rule> inLanguage(Language language) {
    return of(System::macos, language);
}

std::vector<Rule> of(System system, Language language) {
    std::vector<Rule> rules;
    appendAll(rules, system, language);
    if (system == System::linux) {
        append(rules, linuxSafeRows(), Safety::safe, system, language);
        append(rules, linuxReviewRows(), Safety::review, system, language);
        append(rules, linuxKeepRows(), Safety::keep, system, language);
    }
    return rules;
}

std::vector<Rule> inHome(const HomePlaces& home, Language language) {
    std::vector<Rule> rules = of(home.system(), language);
    for (Rule& rule : rules) {
        for (Locator& place : rule.places) {
            place = placed(std::move(place), home);
        }
        std::erase_if(rule.places, [](const Locator& place) { return !startOf(place).starts_with('~'); });
    }
    return rules;
}

std::vector<Rule> inHome(const std::string& home) {
    return inHome(HomePlaces::ofThisMachine(home));
}

} // namespace lumo::RuleCatalog
