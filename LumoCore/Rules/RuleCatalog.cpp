#include "LumoCore/Rules/RuleCatalog.h"

#include "LumoCore/Rules/RuleRow.h"

namespace lumo::RuleCatalog {

namespace {

std::string in(Language language, const Both& words) {
    return std::string(text(words.es, words.en, language));
}

Cleanup cleanupOf(const HowToFree& how, Language language) {
    switch (how.way) {
    case Freeing::byCommand:
        return cleanup::Command{in(language, how.words)};
    case Freeing::byHand:
        return cleanup::Manual{in(language, how.words)};
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
                  .name = in(language, row.name),
                  .category = row.category,
                  .safety = safety,
                  .explanation = in(language, row.explanation),
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
