#include "TarvoMCP/Questions.h"

#include "LumoCore/Basics/Text.h"
#include "LumoCore/Basics/Words.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>

using lumo::CleanupAction;
using lumo::Safety;
using tarvo::mcp::cleaningQuestion;
using testing::HasSubstr;
using testing::Not;

namespace {

CleanupAction action(const std::string& id, Safety safety, std::int64_t bytes, lumo::Method method,
                     std::vector<std::string> paths) {
    return {.id = id,
            .title = id,
            .safety = safety,
            .estimatedBytes = bytes,
            .method = std::move(method),
            .measuredPaths = std::move(paths),
            .fallbackContents = {}};
}

CleanupAction items(const std::string& id, Safety safety, std::int64_t bytes,
                    const std::vector<std::string>& paths) {
    return action(id, safety, bytes, lumo::method::TrashItems{paths}, paths);
}

} // namespace

TEST(Questions, NameFirstAndInFullWhatIsTheUsersAndWhatNobodyTakesBack) {
    // Fifteen caches were named, and none of the user's own files that were to go after them.
    std::vector<CleanupAction> actions;
    for (int index = 0; index < 40; ++index) {
        actions.push_back(items("cache" + std::to_string(index), Safety::safe, 1000000, {"/h/.cache/x"}));
    }
    std::vector<std::string> letters;
    for (int index = 0; index < 30; ++index) {
        letters.push_back("/h/Documents/letter " + std::to_string(index));
    }
    actions.push_back(items("letters", Safety::review, 7000000, letters));
    actions.push_back(items("empty", Safety::review, 0, {"/h/empty"}));
    actions.push_back(action("images", Safety::review, 9000000,
                             lumo::method::Command{{"docker", "system", "prune"}}, {"/h/docker"}));
    lumo::ScanReport report;
    report.findings.push_back({.ruleID = "letters", .usage = {.fileCount = 31}});
    const std::string question = cleaningQuestion(actions, report, {"Agent", "/h"});
    for (const std::string& letter : letters) {
        EXPECT_THAT(question, HasSubstr("\n  ~" + letter.substr(2) + "\n"));
    }
    EXPECT_THAT(question, HasSubstr("• letters — 31 items, 7 MB\n"));
    EXPECT_THAT(question, HasSubstr("• images — 9 MB\n  $ docker system prune\n  ~/docker\n"));
    EXPECT_LT(question.find("CANNOT BE UNDONE"), question.find("• images"));
    EXPECT_LT(question.find("• images"), question.find("YOURS"));
    EXPECT_LT(question.find("YOURS"), question.find("• empty"));
    EXPECT_LT(question.find("• letters"), question.find("• cache0"));
    EXPECT_THAT(question, HasSubstr("… and 35 more, 35 MB\n"));
    EXPECT_THAT(question, Not(HasSubstr("cache5")));
}

TEST(Questions, ShowWhatIsInvisibleInNamesAndKeepTheirLinesShort) {
    // A name with tags or joiners looked like another, and a long one pushed what followed out of sight.
    const std::string hidden = "a\u200Bb\U000E0041c\u3164d\u202Ee\n" + std::string(300, 'x') + "\xFF";
    const std::string question = cleaningQuestion({items("title\u2060", Safety::review, 1, {"/h/" + hidden})},
                                                  {}, {"A\u00ADgent", "/h"});
    EXPECT_THAT(question, HasSubstr(R"(~/a\xE2\x80\x8Bb\xF3\xA0\x81\x81c\xE3\x85\xA4d\xE2\x80\xAEe\n)"));
    EXPECT_THAT(question, HasSubstr("• title\\xE2\\x81\\xA0 — "));
    EXPECT_THAT(question, HasSubstr("A\\xC2\\xADgent asks"));
    std::istringstream lines(
        question + tarvo::mcp::restoringQuestion({{"/h/" + hidden, ""}}, {"Agent", "/h"}) +
        tarvo::mcp::archivingQuestion("/h/" + hidden, {"What comes of it."}, {"A", "/h"}));
    for (std::string line; std::getline(lines, line);) {
        EXPECT_LE(lumo::characterCount(line), 120U) << line;
    }
    EXPECT_EQ(tarvo::mcp::inShortLines(std::string(119, 'a') + " b c"), std::string(119, 'a') + "\n  b c");
}

TEST(Questions, StayWithinAnAnswerHoweverManyPathsThereAre) {
    std::vector<std::string> paths;
    for (int index = 0; index < 3000; ++index) {
        paths.push_back("/h/Downloads/a package with a rather long name " + std::to_string(index) + ".deb");
    }
    const std::string question = cleaningQuestion(
        {items("installers", Safety::review, 1, paths), items("other", Safety::review, 1, paths)}, {},
        {"Agent", "/h"});
    EXPECT_LT(question.size(), 16000U);
    EXPECT_THAT(question, HasSubstr("• other"));
    EXPECT_THAT(question, testing::ContainsRegex("… and 2[0-9]+ more\n"));
}
