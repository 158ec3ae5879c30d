#include "LumoCore/Rules/RuleCatalog.h"
#include "Tests/support/Golden.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>

using namespace lumo;
using testing::ElementsAre;

namespace {

/// The rule in one line, all its fields in it; where it looks stands as it is shown.
std::string lineOf(const Rule& rule, Language language) {
    constexpr std::array<std::string_view, 5> locators{"path", "children", "olderVersions", "newestVersion",
                                                       "installers"};
    std::string line = rule.id;
    for (const std::string& part :
         {std::string(nameOf(rule.category)), std::string(nameOf(rule.safety)),
          std::string(locators.at(rule.locator.index())), rule.displayPath(language),
          dumpJson(encode(rule.cleanup), JsonLayout::line), rule.closeFirst.value_or("-"), rule.name,
          rule.explanation}) {
        line += " | " + part;
    }
    return line + "\n";
}

std::string catalogue(Language language) {
    std::string lines;
    for (const Rule& rule : RuleCatalog::inLanguage(language)) {
        lines += lineOf(rule, language);
    }
    return lines;
}

} // namespace

TEST(RuleCatalog, IsWrittenAsAgreedAndNamesEachRuleOnce) {
    tarvo::testing::expectGolden("catalogue-es.txt", catalogue(Language::es));
    tarvo::testing::expectGolden("catalogue-en.txt", catalogue(Language::en));
    std::set<std::string> ids;
    for (const Rule& rule : RuleCatalog::all()) {
        EXPECT_TRUE(ids.insert(rule.id).second) << rule.id;
    }
}

TEST(RuleCatalog, TranslatesTextsAndInstructionsButNothingThatActs) {
    const std::vector<Rule> spanish = RuleCatalog::inLanguage(Language::es);
    const std::vector<Rule> english = RuleCatalog::inLanguage(Language::en);
    ASSERT_EQ(spanish.size(), english.size());
    for (std::size_t index = 0; index < spanish.size(); ++index) {
        const Rule& es = spanish[index];
        Rule en = english[index];
        EXPECT_NE(es.name, en.name) << es.id;
        EXPECT_NE(es.explanation, en.explanation) << es.id;
        en.name = es.name;
        en.explanation = es.explanation;
        if (std::holds_alternative<cleanup::Manual>(es.cleanup)) {
            EXPECT_NE(es.cleanup, en.cleanup) << es.id;
            ASSERT_EQ(es.cleanup.index(), en.cleanup.index()) << es.id;
            en.cleanup = es.cleanup;
        }
        EXPECT_EQ(es, en) << es.id; // Commands included.
    }
}

TEST(RuleCatalog, KnowsWhichRulesLookWhereTheSystemAsksForPermission) {
    std::vector<std::string> ids;
    for (const Rule& rule : RuleCatalog::all()) {
        if (rule.needsFolderPermission()) {
            ids.push_back(rule.id);
        }
    }
    EXPECT_THAT(ids, ElementsAre("used-installers", "downloaded-installers", "desktop-screenshots",
                                 "photos-library"));
}
