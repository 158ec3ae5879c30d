#include "LumoCore/Cleanup/SavedPlan.h"

#include "LumoCore/Cleanup/CoveredPlaces.h"
#include "LumoCore/Rules/RuleCatalog.h"
#include "Tests/support/TempHome.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

using namespace lumo;
using namespace tarvo::testing;
using namespace testing;

namespace {

const std::vector<Rule>& rules() {
    static const std::vector<Rule> all{
        {.id = "npm", .safety = Safety::safe, .cleanup = cleanup::Command{"npm  clean --force"}},
        {.id = "chosen", .safety = Safety::review, .cleanup = cleanup::Command{"ollama rm <modelo>"}},
        {.id = "web", .safety = Safety::safe, .cleanup = cleanup::DeleteItems{}, .closeFirst = "browser"},
        {.id = "hand", .safety = Safety::review, .cleanup = cleanup::Manual{"Empty it"}}};
    return all;
}

PlanEntry entry(std::string id, Method how, std::optional<std::string> reason = {}) {
    return {{.id = std::move(id), .safety = Safety::safe, .estimatedBytes = 5, .method = std::move(how)},
            std::move(reason)};
}

Result<std::vector<PlanEntry>> savedAndRead(const std::vector<PlanEntry>& entries) {
    return savedPlanFromJson(dumpJson(encode(entries), JsonLayout::indented), rules());
}

} // namespace

TEST(SavedPlan, IsReadAsItWasSaved) {
    const std::vector<PlanEntry> entries{
        entry("npm", method::Command{{"npm", "clean", "--force"}}),
        entry("npm", method::Command{{"npm", "clean", "--force"}}, "quit it first"),
        entry("proyecto:a/target", method::TrashItems{{"/home/x/caf\xE9/target"}}),
        entry("web", method::TrashContents{{"/home/x/web"}})};
    EXPECT_EQ(savedAndRead(entries), entries);
    EXPECT_EQ(savedAndRead({}), std::vector<PlanEntry>{});
}

TEST(SavedPlan, NeverBringsItsOwnCommandsNorActsOnWhatIsKept) {
    const auto refusal = [](PlanEntry last) {
        const auto read = savedAndRead({entry("web", method::TrashItems{}), std::move(last)});
        return read ? "" : read.error().message;
    };
    const auto ofCommand = [&](std::string id, std::vector<std::string> words) {
        return refusal(entry(std::move(id), method::Command{std::move(words)}, "left out, but a command"));
    };
    for (const std::string& message :
         {ofCommand("npm", {"npm", "clean", "--force", "/"}), ofCommand("npm", {"npm", "clean"}),
          ofCommand("npm", {"npm", "clean --force"}), ofCommand("web", {"npm", "clean", "--force"}),
          ofCommand("other", {"npm", "clean", "--force"}), ofCommand("web", {}),
          ofCommand("chosen", {"ollama", "rm", "<modelo>"}),
          ofCommand("chosen", {"ollama", "rm", "llama"})}) {
        EXPECT_THAT(message, HasSubstr("document[1].action: a command that is not its rule's"));
    }
    PlanEntry kept = entry("web", method::TrashItems{}, "reason");
    kept.action.safety = Safety::keep;
    EXPECT_EQ(refusal(kept), "document[1].action: something that is kept (web)");
    EXPECT_EQ(refusal(entry("hand", method::TrashItems{})),
              "document[1].action: less care than its rule's (hand)");
    PlanEntry counted = entry("web", method::TrashItems{});
    counted.action.estimatedBytes = -1;
    EXPECT_EQ(refusal(counted), "document[1].action: a negative estimate (web)");
    counted.action.estimatedBytes = std::numeric_limits<std::int64_t>::max();
    EXPECT_EQ(refusal(counted), "document: the estimates are too large");
    EXPECT_FALSE(savedPlanFromJson(R"([{"skipReason":"x"}])", rules()));
    EXPECT_FALSE(savedPlanFromJson("{}", rules()));
}

TEST(SavedPlan, TakesReportsOnlyWithTheCleanupsOfTheRules) {
    const auto refusal = [](const std::string& id, Safety safety, Cleanup cleanup) {
        ScanReport report;
        report.findings = {{.ruleID = id, .safety = safety, .cleanup = std::move(cleanup)}};
        const auto checked = checkCleanups(report, rules());
        return checked ? "" : checked.error().message;
    };
    const Cleanup npm = cleanup::Command{"npm  clean --force"};
    EXPECT_EQ(refusal("npm", Safety::safe, npm), "");
    EXPECT_EQ(refusal("hand", Safety::review, cleanup::Manual{"Vacíala"}), "");
    const std::string message = "document.findings[0]: not as its rule says ";
    EXPECT_EQ(refusal("npm", Safety::review, npm), message + "(npm)");
    EXPECT_EQ(refusal("npm", Safety::safe, cleanup::Command{"npm clean --force"}), message + "(npm)");
    EXPECT_EQ(refusal("npm", Safety::safe, cleanup::Manual{"x"}), message + "(npm)");
    EXPECT_EQ(refusal("hand", Safety::review, cleanup::DeleteItems{}), message + "(hand)");
    EXPECT_EQ(refusal("new", Safety::safe, npm), "document.findings[0]: an unknown rule (new)");
}

TEST(SavedPlan, IsHeldBackByWhatHoldsAFreshPlanBack) {
    const std::vector<std::string> work{"/home/x/code/app"};
    const std::vector<std::string> beside{"/home/x/codeshop"};
    std::vector<PlanEntry> saved{entry("a", method::TrashItems{work}),
                                 entry("a", method::TrashItems{work}, "before"),
                                 entry("a", method::TrashContents{work}),
                                 entry("a", method::EvictFromICloud{work}),
                                 entry("npm", method::Command{}),
                                 entry("npm", method::Command{}),
                                 entry("a", method::TrashItems{beside}),
                                 entry("web", method::TrashItems{beside}),
                                 entry("web", method::TrashItems{beside}, "before")};
    saved[4].action.measuredPaths = work;
    saved[5].action.fallbackContents = work;
    const auto reasons = [&](const CleanupOptions& options) {
        std::vector<std::string> said;
        for (const PlanEntry& held :
             heldBackNow(saved, options, rules(),
                         {.isRunning = [](const std::string& id) { return id == "browser"; },
                          .nameOf = [](const std::string& id) { return "App " + id; },
                          .language = Language::en},
                         "/home/x")) {
            said.push_back(held.skipReason.value_or(""));
        }
        return said;
    };
    const std::string open = "quit App browser first";
    const std::string kept = "it's in a folder protected in Settings";
    EXPECT_THAT(reasons({}), ElementsAre("", "before", "", "", "", "", "", open, "before"));
    EXPECT_THAT(reasons({.protectedFolders = {"/home/x/code"}}),
                ElementsAre(kept, "before", kept, kept, kept, kept, "", open, "before"));
    EXPECT_THAT(reasons({.protectedFolders = {"/home/x/codeshop/deep"}}),
                ElementsAre("", "before", "", "", "", "", kept, kept, "before"));
    EXPECT_THAT(reasons({.excludedProjects = {"/home/x/code"}}), ElementsAre("", open, "before"));
    EXPECT_THAT(reasons({.only = std::set<std::string>{"web"}}), ElementsAre(open, "before"));
}

TEST(CoveredPlaces, HoldActionsFromAFileToWhereTheirRuleOrProjectActs) {
    // Any path under a good id was deleted at once, and the question never named it.
    const TempHome home;
    home.files({".npm/_npx/x", "Documents/letter", "Desktop/Screenshot 1", "Desktop/mine",
                "code/app/package.json", "code/app/sub/node_modules/x", "code/app/src/x",
                "loose/node_modules/x", "code/app/target/x", "venv/x"});
    home.link("code/app/way", "../../loose");
    const auto reasonFor = [&](const std::string& id, Method method, const Arguments& measured = {},
                               const Arguments& fallback = {}) {
        const CleanupAction action{
            .id = id, .method = std::move(method), .measuredPaths = measured, .fallbackContents = fallback};
        return CoveredPlaces(home.path(), RuleCatalog::all(), {action})
            .refusal(action, Language::en)
            .value_or("");
    };
    const auto items = [&](const std::string& id, const std::string& name) {
        return reasonFor(id, method::TrashItems{{home.path(name)}});
    };
    const std::string artifacts = "proyecto:code/app/node_modules";
    EXPECT_EQ(
        reasonFor("npx-cache", method::TrashContents{{home.path(".npm/_npx")}}, {home.path(".npm/_npx")}),
        "");
    EXPECT_EQ(items("desktop-screenshots", "Desktop/Screenshot 1"), "");
    EXPECT_EQ(items("desktop-screenshots", "Desktop/Screenshot gone"), "");
    EXPECT_EQ(items(artifacts, "code/app/sub/node_modules"), "");
    EXPECT_EQ(reasonFor("uv-cache", method::Command{{"uv", "cache", "clean"}}), "");
    home.fileWith("code/app/out/x64/CACHEDIR.TAG", "Signature: 8a477f597d28d172789f06886806bc55");
    EXPECT_EQ(items("proyecto:code/app/out/x64", "code/app/out/x64"), "");
    EXPECT_EQ(items("npx-cache", "Documents"),
              home.path("Documents") + ": not a place that “npx-cache” cleans");
    const std::string letter = home.path("Documents/letter");
    for (const std::string& reason :
         {items("npx-cache", ".npm/_npx/x"), items("npx-cache", ".npm"), items("x", "Documents/letter"),
          items("desktop-screenshots", "Desktop/mine"), items(artifacts, "code/app/src"),
          items(artifacts, "code/app"), items(artifacts, "loose/node_modules"),
          items(artifacts, "code/app/way/node_modules"), items("proyecto:code/app/src", "code/app/src"),
          items("proyecto:code/app/target", "code/app/target"), items("proyecto:venv", "venv"),
          items("proyecto:loose/node_modules", "loose/node_modules"),
          items("proyecto:code/app/out", "code/app/out"), items("proyecto:code/app/out/x64", "code/app/src"),
          reasonFor("uv-cache", method::Command{}, {letter}),
          reasonFor("uv-cache", method::Command{}, {}, {letter}),
          reasonFor("npx-cache", method::EvictFromICloud{{letter}})}) {
        EXPECT_THAT(reason, HasSubstr(": not a place that “"));
    }
}
