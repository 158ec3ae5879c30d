#include "LumoAI/AIExplainer.h"
#include "LumoAI/ExplanationCache.h"
#include "LumoAI/ExplanationService.h"
#include "LumoAI/Instructions.h"
#include "LumoCore/Explaining/HeuristicExplainer.h"
#include "LumoCore/Explaining/SafetyPolicy.h"
#include "Tests/AI/Parrot.h"
#include "Tests/support/TempHome.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <limits>

using namespace lumo;
using Source = Explanation::Source;
using namespace tarvo::testing;
using namespace testing;

namespace {

using namespace std::chrono_literals;

const Date now = dateFromIsoText("2025-06-01T12:00:00Z").value();
constexpr const char* store = "Library/Caches/TarvoAI/explicaciones.json";

std::string answerWith(const std::string& risk, const std::string& action,
                       const std::string& whatItIs = "Datos", const std::string& reason = "Porque sí",
                       const std::string& owner = "App") {
    return R"({"que_es":")" + whatItIs + R"(","pertenece_a":")" + owner + R"(","riesgo":")" + risk +
           R"(","motivo":")" + reason + R"(","accion":")" + action + "\"}";
}

FolderEvidence folder(std::int64_t bytes) {
    FolderEvidence evidence;
    evidence.path = "/h/x";
    evidence.usage.allocatedBytes = bytes;
    return evidence;
}

ExplanationSettings settingsFor(const TempHome& home) {
    return {.home = home.path(),
            .cacheHome = home.path(),
            .installed = {},
            .now = now,
            .language = Language::es,
            .modelTime = 10s};
}

} // namespace

TEST(AIExplainer, TakesWordsThatItDidNotOfferForTheCautiousOnes) {
    using Case = std::tuple<const char*, const char*, Safety, std::optional<Safety>, FreeingAction>;
    for (const auto& [risk, action, safety, suggested, freeing] :
         {Case{"seguro", "no_tocar", Safety::review, Safety::safe, FreeingAction::leaveAlone},
          Case{"revisar", "vaciar_desde_app", Safety::review, {}, FreeingAction::clearFromApp},
          // What was to be kept came with the advice to delete it.
          Case{"conservar", "borrar_si_no_se_usa", Safety::keep, {}, FreeingAction::deleteIfUnused},
          Case{"conservar", "revisar_contenido", Safety::keep, {}, FreeingAction::reviewContents},
          Case{"Seguro", "borrar", Safety::review, {}, FreeingAction::reviewContents},
          Case{"", "No_tocar", Safety::review, {}, FreeingAction::reviewContents}}) {
        Parrot model;
        model.answer = answerWith(risk, action);
        const auto explained = AIExplainer::explain(folder(5), model, now, {}, Language::es, System::linux);
        ASSERT_TRUE(explained) << risk;
        EXPECT_EQ(explained->safety, safety) << risk;
        EXPECT_EQ(explained->suggestedSafety, suggested) << risk;
        EXPECT_EQ(explained->howToFree,
                  SafetyPolicy::advice(freeing, safety, folder(5), Language::es, System::linux));
        EXPECT_EQ(explained->whatItIs + explained->owner, "DatosApp");
        // A motive for another safety stood beside the one that the policy had put in its place.
        EXPECT_EQ(explained->reason,
                  suggested ? HeuristicExplainer::explain(folder(5), now, Language::es, System::linux).reason
                            : "Porque sí")
            << risk;
        EXPECT_EQ(explained->howToFree.contains("borra la carpeta"), false);
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
        EXPECT_FALSE(AIExplainer::explain(folder(5), model, now, {})) << wrong;
    }
}

TEST(AIExplainer, ShowsNoTextThatIsEmptyOrNamesWhatNobodyMeasuredOrWhatCouldBeTyped) {
    // A figure or a command that a model made up, or read in a file's name, stood under a true head.
    FolderEvidence evidence = folder(12300000000);
    evidence.largestEntries = {{.name = "https://evil.example", .bytes = 2000000000}};
    using Case = std::tuple<std::string, std::string, bool>;
    for (const auto& [whatItIs, reason, isShown] :
         {Case{"Datos", "Ocupa 12,3 GB.", true}, Case{"Datos", "Ocupa 12 GB.", false},
          Case{"Datos", "Son dos gigas.", false}, Case{"1 200 MB de datos", "No", false},
          Case{"Datos", "Es el 12 % del disco.", false}, Case{"", "No", false}, Case{"Datos", " . ", false},
          Case{"Datos", "Ejecuta sudo rm -rf ~/x.", false}, Case{"Mira https://evil.example", "No", false},
          Case{"Herramientas de terminal", "Cross-platform files", true},
          Case{"Datos", "Abre la Terminal.", false}}) {
        Parrot model;
        model.answer = answerWith("revisar", "no_tocar", whatItIs, reason);
        EXPECT_EQ(AIExplainer::explain(evidence, model, now, {}, Language::es).has_value(), isShown)
            << whatItIs << " " << reason;
    }
    Parrot model;
    model.answer = answerWith("revisar", "no_tocar", "Datos", "No", "Mira www.evil.example");
    EXPECT_FALSE(AIExplainer::explain(evidence, model, now, {}));
    model.answer = answerWith("revisar", "no_tocar", "Datos", "No", "");
    EXPECT_EQ(AIExplainer::explain(evidence, model, now, {}, Language::en)->owner, "unknown");
    EXPECT_THAT(model.last.instructions, HasSubstr("Linux expert"));
    // The model was told that this is a Mac.
    for (const Language language : {Language::es, Language::en}) {
        EXPECT_THAT(folderInstructions(language, System::linux),
                    Not(AnyOf(HasSubstr("Mac"), HasSubstr("macOS"), HasSubstr("Apple"))));
        EXPECT_THAT(folderInstructions(language, System::macos), HasSubstr("macOS"));
    }
}

TEST(ExplanationCache, ReusesWhatIsRecentAndOfASimilarSize) {
    using Case = std::tuple<std::int64_t, std::int64_t, std::chrono::seconds, bool>;
    constexpr std::int64_t most = std::numeric_limits<std::int64_t>::max();
    constexpr std::chrono::seconds days{86400};
    for (const auto& [before, today, age, isReused] :
         {Case{10, 13, 29 * days, true}, Case{10, 14, 29 * days, false}, Case{75, 100, 0s, true},
          Case{74, 100, 0s, false}, Case{133, 100, 0s, true}, Case{134, 100, 0s, false}, Case{0, 0, 0s, true},
          Case{0, 2, 0s, false}, Case{10, 10, 30 * days, false}, Case{10, 10, 30 * days - 1s, true},
          Case{10, 10, -40 * days, true}, Case{most, most, 0s, true}, Case{-most - 1, most, 0s, false},
          Case{-most - 1, 1, 0s, true}}) {
        ExplanationCache cache("/nonexistent");
        cache.store({.path = "/h/x", .sizeBytes = before, .createdAt = now - age});
        EXPECT_EQ(cache.lookup(folder(today), now).has_value(), isReused)
            << before << " " << today << " " << age.count();
    }
}

TEST(ExplanationCache, IsWrittenWithSortedKeysAndReplacesOnlyWhatItCouldRead) {
    const Explanation explanation{.path = "/h/x", .sizeBytes = 5, .whatItIs = "ñ", .createdAt = now};
    const TempHome home;
    for (const char* before : {"", "{", "[]", R"({"/a":{"path":"/a"}})"}) {
        home.fileWith(store, before);
        ExplanationCache cache = ExplanationCache::ofHome(home.path());
        cache.store(explanation);
        EXPECT_TRUE(cache.save());
        EXPECT_THAT(contentOf(home.path(store)), StartsWith("{\n  \"/h/x\": {\n    \"createdAt\": \"2025"));
    }
    const ExplanationCache kept = ExplanationCache::ofHome(home.path());
    EXPECT_EQ(kept.lookup(folder(5), now), explanation);
    // Asked in English, the Spanish text was shown.
    const Language other = currentLanguage() == Language::es ? Language::en : Language::es;
    EXPECT_EQ(kept.lookup(folder(5), now, other), std::nullopt);
    auto written = explanationsIn(contentOf(home.path(store)));
    written.at("/h/x").language.clear(); // As older files are.
    home.fileWith(store, bytesOf(written));
    EXPECT_EQ(ExplanationCache::ofHome(home.path()).lookup(folder(5), now, other), explanation);
    std::filesystem::remove(home.path(store));
    home.file(std::string(store) + "/inside");
    EXPECT_FALSE(ExplanationCache::ofHome(home.path()).save());
    EXPECT_TRUE(std::filesystem::exists(home.path(std::string(store) + "/inside")));
}

TEST(ExplanationService, AsksTheModelOnceForAFolderThatStaysAsItIs) {
    const TempHome home;
    const std::vector<std::string> folders{home.folder(".b"), home.folder(".a")};
    Parrot model;
    model.answer = answerWith("revisar", "no_tocar");
    ExplanationSettings settings = settingsFor(home);
    std::vector<std::pair<std::size_t, std::size_t>> progress;
    settings.progress = [&](std::size_t done, std::size_t total) { progress.emplace_back(done, total); };
    const auto first = ExplanationService::explain(folders, model, settings);
    EXPECT_EQ(ExplanationService::explain(folders, model, settings), first);
    EXPECT_EQ(first.at(folders[0]).source, Source::ai);
    EXPECT_EQ(model.questions, 2);
    EXPECT_EQ(model.probes, 2);
    EXPECT_THAT(progress, ElementsAre(Pair(1, 2), Pair(2, 2), Pair(1, 2), Pair(2, 2)));
    ExplanationService::explain({}, model, settings);
    EXPECT_EQ(model.probes, 2) << "without folders there is nothing to ask";
    // What is remembered is checked like what was just written: the file may be older than the checks.
    Explanation stale = first.at(folders[0]);
    stale.reason = "Ocupa 99 GB.";
    ExplanationCache cache = ExplanationCache::ofHome(home.path());
    cache.store(stale, Language::es);
    ASSERT_TRUE(cache.save());
    EXPECT_EQ(ExplanationService::explain(folders, model, settings), first);
    EXPECT_EQ(model.questions, 3);
}

TEST(ExplanationService, AsksNoModelAboutWhatIsCertain) {
    // The home, documents, projects and places of the catalogue were called leftovers to be deleted.
    const TempHome home;
    home.files({"Documents/letter", ".cache/uv/archive/x", ".config/Tool/sub/x", ".config/mystery/x",
                "Library/Application Support/Old/x"});
    Parrot model;
    model.answer = answerWith("seguro", "borrar_si_no_se_usa");
    const auto explained = [&](const std::string& path) {
        return ExplanationService::explain({path}, model, settingsFor(home)).at(path);
    };
    EXPECT_EQ(explained(home.path("Documents")).source, Source::place);
    EXPECT_EQ(explained(home.path(".cache/uv")).source, Source::catalogue);
    EXPECT_EQ(explained(home.path(".config/Tool/sub")).whatItIs, "Parte de «~/.config/Tool»");
    EXPECT_EQ(explained("/proc/version").safety, Safety::keep);
    EXPECT_EQ(model.questions, 0);
    for (const char* name : {".config/mystery", ".config/Tool", "Library/Application Support/Old"}) {
        EXPECT_EQ(explained(home.path(name)).source, Source::ai) << name;
    }
}

TEST(ExplanationService, FallsBackToRulesOfThumbWhichItDoesNotKeep) {
    const TempHome home;
    const std::string folder = home.folder(".a");
    ExplanationSettings settings = settingsFor(home);
    settings.modelTime = 20ms;
    using Case = std::tuple<std::optional<std::string>, std::string, bool, int>;
    for (const auto& [reason, answer, isSlow, questions] :
         {Case{"no", "", false, 0}, Case{{}, "{}", false, 1}, Case{{}, answerWith("revisar", ""), true, 1}}) {
        Parrot model;
        model.reason = reason;
        model.answer = answer;
        model.isSlow = isSlow;
        EXPECT_EQ(ExplanationService::explain({folder}, model, settings).at(folder).source,
                  Source::heuristic);
        EXPECT_FALSE(std::filesystem::exists(home.path(store)));
        EXPECT_EQ(model.questions, questions);
    }
}

TEST(ExplanationService, EndsSoonAfterAStopAndKeepsWhatIsDone) {
    const TempHome home;
    const std::vector<std::string> folders{home.folder(".a"), home.folder(".b")};
    std::stop_source stop;
    Parrot model;
    model.answer = answerWith("revisar", "no_tocar");
    ExplanationSettings settings = settingsFor(home);
    settings.watch.stop = stop.get_token();
    settings.progress = [&](std::size_t, std::size_t) { stop.request_stop(); };
    EXPECT_THAT(ExplanationService::explain(folders, model, settings), ElementsAre(Pair(folders[0], _)));
    EXPECT_THAT(contentOf(home.path(store)), HasSubstr(folders[0]));
}
