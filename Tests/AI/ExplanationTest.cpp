#include "LumoAI/AIExplainer.h"
#include "LumoAI/ExplanationCache.h"
#include "LumoAI/ExplanationService.h"
#include "LumoCore/Explaining/FreeingAction.h"
#include "Tests/AI/Parrot.h"
#include "Tests/support/TempHome.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <limits>
#include <sstream>

using lumo::Explanation;
using lumo::ExplanationCache;
using lumo::FolderEvidence;
using lumo::FreeingAction;
using lumo::Language;
using lumo::Safety;
using Source = lumo::Explanation::Source;
using tarvo::testing::Parrot;
using tarvo::testing::TempHome;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Pair;

namespace {

using namespace std::chrono_literals;

const lumo::Date now = lumo::dateFromIsoText("2025-06-01T12:00:00Z").value();
constexpr const char* store = "Library/Caches/TarvoAI/explicaciones.json";

std::string answerWith(const std::string& risk, const std::string& action) {
    return R"({"que_es":"Datos","pertenece_a":"App","riesgo":")" + risk +
           R"(","motivo":"Porque sí","accion":")" + action + "\"}";
}

FolderEvidence folder(std::int64_t bytes) {
    FolderEvidence evidence;
    evidence.path = "/h/x";
    evidence.usage.allocatedBytes = bytes;
    return evidence;
}

std::string content(const std::string& path) {
    std::ostringstream text;
    text << std::ifstream(path, std::ios::binary).rdbuf();
    return text.str();
}

lumo::ExplanationSettings settingsFor(const TempHome& home) {
    return {.home = home.path(),
            .cacheHome = home.path(),
            .apps = {},
            .now = now,
            .language = Language::es,
            .modelTime = 10s};
}

} // namespace

TEST(AIExplainer, TakesWordsThatItDidNotOfferForTheCautiousOnes) {
    struct Case {
        const char* risk;
        const char* action;
        Safety safety;
        std::optional<Safety> suggested;
        FreeingAction freeing;
    };
    for (const Case& said :
         {Case{"seguro", "no_tocar", Safety::review, Safety::safe, FreeingAction::leaveAlone},
          Case{"revisar", "vaciar_desde_app", Safety::review, {}, FreeingAction::clearFromApp},
          Case{"conservar", "borrar_si_no_se_usa", Safety::keep, {}, FreeingAction::deleteIfUnused},
          Case{"Seguro", "borrar", Safety::review, {}, FreeingAction::reviewContents},
          Case{"", "No_tocar", Safety::review, {}, FreeingAction::reviewContents}}) {
        Parrot model;
        model.answer = answerWith(said.risk, said.action);
        const auto explained = lumo::AIExplainer::explain(folder(5), model, now, {}, Language::es);
        ASSERT_TRUE(explained) << said.risk;
        EXPECT_EQ(explained->safety, said.safety) << said.risk;
        EXPECT_EQ(explained->suggestedSafety, said.suggested) << said.risk;
        EXPECT_EQ(explained->howToFree, lumo::advice(said.freeing, folder(5), Language::es));
        EXPECT_EQ(explained->whatItIs + explained->owner + explained->reason, "DatosAppPorque sí");
        EXPECT_EQ(explained->source, Source::ai);
        EXPECT_EQ(explained->sizeBytes, 5);
        EXPECT_EQ(model.last.prompt, folder(5).promptDescription(now, Language::es));
    }
}

TEST(AIExplainer, BelievesNothingInAnotherForm) {
    const std::string right = answerWith("revisar", "no_tocar");
    for (const std::string& wrong :
         {std::string(), std::string("[]"), right.substr(0, right.size() - 1), "```json\n" + right + "```",
          std::string(R"({"que_es":"","pertenece_a":"","riesgo":"seguro","motivo":""})"),
          std::string(R"({"que_es":"","pertenece_a":"","riesgo":"seguro","motivo":7,"accion":""})"),
          std::string(R"({"que_es":"","pertenece_a":"","riesgo":"","motivo":"","accion":"","x":""})"),
          std::string(R"({"que_es":"","que_es":"","riesgo":"","motivo":"","accion":""})"),
          answerWith("revisar", "no_tocar").replace(11, 5, "\\u001b[2J"),
          answerWith("revisar", "no_tocar").replace(11, 5, std::string(601, 'x'))}) {
        Parrot model;
        model.answer = wrong;
        EXPECT_FALSE(lumo::AIExplainer::explain(folder(5), model, now, {})) << wrong;
    }
}

TEST(ExplanationCache, ReusesWhatIsRecentAndOfASimilarSize) {
    struct Case {
        std::int64_t before;
        std::int64_t today;
        std::chrono::seconds age;
        bool isReused;
    };
    constexpr std::int64_t most = std::numeric_limits<std::int64_t>::max();
    constexpr std::chrono::seconds days{86400};
    for (const Case& known :
         {Case{10, 13, 29 * days, true}, Case{10, 14, 29 * days, false}, Case{75, 100, 0s, true},
          Case{74, 100, 0s, false}, Case{133, 100, 0s, true}, Case{134, 100, 0s, false}, Case{0, 0, 0s, true},
          Case{0, 2, 0s, false}, Case{10, 10, 30 * days, false}, Case{10, 10, 30 * days - 1s, true},
          Case{10, 10, -40 * days, true}, Case{most, most, 0s, true}, Case{-most - 1, most, 0s, false},
          Case{-most - 1, 1, 0s, true}}) {
        ExplanationCache cache("/nonexistent");
        cache.store({.path = "/h/x", .sizeBytes = known.before, .createdAt = now - known.age});
        EXPECT_EQ(cache.lookup(folder(known.today), now).has_value(), known.isReused)
            << known.before << " " << known.today << " " << known.age.count();
    }
}

TEST(ExplanationCache, IsWrittenWithSortedKeysAndReplacesOnlyWhatItCouldRead) {
    const Explanation explanation{.path = "/h/x", .sizeBytes = 5, .whatItIs = "ñ", .createdAt = now};
    const std::string bytes = "{\n  \"/h/x\": {\n    \"createdAt\": \"2025-06-01T12:00:00Z\",\n"
                              "    \"howToFree\": \"\",\n    \"owner\": \"\",\n    \"path\": \"/h/x\",\n"
                              "    \"reason\": \"\",\n    \"safety\": \"review\",\n    \"sizeBytes\": 5,\n"
                              "    \"source\": \"heuristic\",\n    \"whatItIs\": \"ñ\"\n  }\n}\n";
    const TempHome home;
    for (const char* before : {"", "{", "[]", R"({"/a":{"path":"/a"}})"}) {
        home.fileWith(store, before);
        ExplanationCache cache = ExplanationCache::ofHome(home.path());
        cache.store(explanation);
        EXPECT_TRUE(cache.save());
        EXPECT_EQ(content(home.path(store)), bytes);
    }
    EXPECT_EQ(ExplanationCache::ofHome(home.path()).lookup(folder(5), now), explanation);
    std::filesystem::remove(home.path(store));
    home.file(std::string(store) + "/inside");
    EXPECT_FALSE(ExplanationCache::ofHome(home.path()).save());
    EXPECT_TRUE(std::filesystem::exists(home.path(std::string(store) + "/inside")));
}

TEST(ExplanationService, AsksTheModelOnceForAFolderThatStaysAsItIs) {
    const TempHome home;
    const std::vector<std::string> folders{home.folder("b"), home.folder("a")};
    Parrot model;
    model.answer = answerWith("revisar", "no_tocar");
    lumo::ExplanationSettings settings = settingsFor(home);
    std::vector<std::pair<std::size_t, std::size_t>> progress;
    settings.progress = [&](std::size_t done, std::size_t total) { progress.emplace_back(done, total); };
    const auto first = lumo::ExplanationService::explain(folders, model, settings);
    EXPECT_EQ(lumo::ExplanationService::explain(folders, model, settings), first);
    EXPECT_EQ(first.at(folders[0]).source, Source::ai);
    EXPECT_EQ(model.questions, 2);
    EXPECT_EQ(model.probes, 2);
    EXPECT_THAT(progress, ElementsAre(Pair(1, 2), Pair(2, 2), Pair(1, 2), Pair(2, 2)));
    lumo::ExplanationService::explain({}, model, settings);
    EXPECT_EQ(model.probes, 2) << "without folders there is nothing to ask";
}

TEST(ExplanationService, FallsBackToRulesOfThumbWhichItDoesNotKeep) {
    const TempHome home;
    const std::vector<std::string> folders{home.folder("a")};
    Parrot absent;
    absent.reason = "no";
    Parrot wrong;
    wrong.answer = "{}";
    Parrot slow;
    slow.answer = answerWith("revisar", "no_tocar");
    slow.isSlow = true;
    for (Parrot* model : {&absent, &wrong, &slow}) {
        lumo::ExplanationSettings settings = settingsFor(home);
        settings.modelTime = 20ms;
        const auto explained = lumo::ExplanationService::explain(folders, *model, settings);
        EXPECT_EQ(explained.at(folders[0]).source, Source::heuristic);
        EXPECT_FALSE(std::filesystem::exists(home.path(store)));
    }
    EXPECT_EQ(absent.questions, 0);
    EXPECT_EQ(slow.questions, 1);
}

TEST(ExplanationService, EndsSoonAfterAStopAndKeepsWhatIsDone) {
    const TempHome home;
    const std::vector<std::string> folders{home.folder("a"), home.folder("b")};
    std::stop_source stop;
    Parrot model;
    model.answer = answerWith("revisar", "no_tocar");
    lumo::ExplanationSettings settings = settingsFor(home);
    settings.watch.stop = stop.get_token();
    settings.progress = [&](std::size_t, std::size_t) { stop.request_stop(); };
    EXPECT_THAT(lumo::ExplanationService::explain(folders, model, settings),
                ElementsAre(Pair(folders[0], testing::_)));
    EXPECT_THAT(content(home.path(store)), HasSubstr(folders[0]));
}
