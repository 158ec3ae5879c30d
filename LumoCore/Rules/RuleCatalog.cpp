#include "LumoCore/Rules/RuleCatalog.h"

#include "LumoCore/Basics/Words.h"
#include "LumoCore/Rules/RuleRow.h"

namespace lumo::RuleCatalog {

namespace {

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

void append(std::vector<Rule>& rules, std::span<const Row> rows, Safety safety, Language language) {
    for (const Row& row : rows) {
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
        rules.push_back(std::move(rule));
    }
}

} // namespace

const std::vector<Rule>& all() {
    static const std::vector<Rule> rules = inLanguage(currentLanguage());
    return rules;
}

std::vector<Rule> inLanguage(Language language) {
    std::vector<Rule> rules;
    append(rules, safeRows(), Safety::safe, language);
    append(rules, reviewRows(), Safety::review, language);
    append(rules, keepRows(), Safety::keep, language);
    return rules;
}

} // namespace lumo::RuleCatalog
