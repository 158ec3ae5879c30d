#include "LumoCore/Explaining/DiskSummary.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace lumo;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::SizeIs;

namespace {

const Date now = *dateFromIsoText("2026-03-31T12:00:00Z");

Finding finding(std::string name, Category category, Safety safety, std::int64_t bytes) {
    Finding found;
    found.name = std::move(name);
    found.category = category;
    found.safety = safety;
    found.usage.allocatedBytes = bytes;
    return found;
}

ProjectReport project(std::int64_t ageInDays, std::int64_t dependencies, std::int64_t builds = 0) {
    ProjectReport made;
    made.artifacts = {{.name = "node_modules", .usage = {.allocatedBytes = dependencies}},
                      {.name = ".next", .usage = {.allocatedBytes = builds}}};
    made.lastCodeChange = now - std::chrono::days(ageInDays);
    return made;
}

ScanReport report(std::vector<Finding> findings, std::vector<ProjectReport> projects = {}) {
    return {.volume = {.totalBytes = 100000000000, .availableBytes = 38200000000},
            .findings = std::move(findings),
            .projects = std::move(projects)};
}

std::string spanish(const ScanReport& report, System system = currentSystem()) {
    return DiskSummary::templateText(report, 17900000000, now, Language::es, system);
}

const ScanReport rich = report({finding("Docker", Category::virtualMachine, Safety::review, 22000000000),
                                finding("npm", Category::packageCache, Safety::safe, 9400000000),
                                finding("Registros", Category::appCache, Safety::safe, 99000000000),
                                finding("Fotos", Category::personal, Safety::keep, 99000000000),
                                finding("Pip", Category::packageCache, Safety::review, 500000),
                                finding("Tercero", Category::personal, Safety::review, 1)},
                               {project(30, 2000000000, 700000000), project(31, 3000000000)});

} // namespace

TEST(DiskSummary, StatesEachFactInItsSentence) {
    EXPECT_THAT(DiskSummary::facts(rich, 17900000000, now, Language::es),
                ElementsAre("Recuperable sin riesgo en total: 17,9 GB.",
                            "Parte de lo recuperable: cachés de herramientas de desarrollo (uv, npm, pnpm, "
                            "Gradle…), 9,4 GB.",
                            "Parte de lo recuperable: dependencias (node_modules, .venv) de 2 proyectos sin "
                            "cambios desde hace más de 30 días, 5,0 GB.",
                            "Parte de lo recuperable: compilaciones de proyectos, 700 MB.",
                            "Ocupa mucho, pero hay que revisarlo (no es sin riesgo): Docker 22,0 GB; Pip 1 "
                            "MB.",
                            "Espacio libre ahora: 38,2 GB."));
    EXPECT_THAT(DiskSummary::facts(report({}), 0, now, Language::en),
                ElementsAre("Total recoverable with no risk: 0 MB.", "Free space now: 38.2 GB."));
}

TEST(DiskSummary, WordsTheTemplateByTheLargestPartAndTheFirstThingToReview) {
    EXPECT_EQ(spanish(rich),
              "Puedes recuperar 17,9 GB sin riesgo, sobre todo 9,4 GB en cachés de herramientas de "
              "desarrollo. Lo más grande para revisar es Docker (22,0 GB).");
    EXPECT_EQ(spanish(report({})), "Puedes recuperar 17,9 GB sin riesgo.");
    const auto single = [&](System system) { // Of two equal parts the first.
        return DiskSummary::templateText(report({}, {project(30, 1000000, 1000000)}), 5000000, now,
                                         Language::en, system);
    };
    EXPECT_EQ(single(System::macos),
              "You can recover 5 MB with no risk, mostly 1 MB in dependencies of 1 projects you haven't "
              "touched in a month.");
    EXPECT_THAT(single(System::linux), HasSubstr(" of 1 project you haven't "));
    ProjectReport ageless = project(30, 900000000, 1);
    ageless.lastCodeChange.reset();
    // Changed 29 days ago, too little to name, and nobody knows when.
    for (const ProjectReport& each : {project(29, 900000000, 1), project(30, 999999, 1), ageless}) {
        EXPECT_EQ(spanish(report({}, {each}), System::macos),
                  "Puedes recuperar 17,9 GB sin riesgo, sobre todo <1 MB en compilaciones de tus proyectos.");
        EXPECT_EQ(spanish(report({}, {each}), System::linux), "Puedes recuperar 17,9 GB sin riesgo.");
    }
}

// After a cleanup "Ollama models (<1 MB)" was the largest thing to review.
TEST(DiskSummary, NamesNothingToReviewThatIsNextToNothing) {
    const ScanReport emptied = report({finding("Ollama", Category::aiModel, Safety::review, 499999)});
    EXPECT_EQ(spanish(emptied, System::linux), "Puedes recuperar 17,9 GB sin riesgo.");
    EXPECT_THAT(DiskSummary::facts(emptied, 0, now, Language::en, System::linux), SizeIs(2));
    EXPECT_THAT(spanish(emptied, System::macos), HasSubstr(" es Ollama (<1 MB)."));
}

TEST(DiskSummary, FindsAmountsAsTheyAreWritten) {
    EXPECT_THAT(DiskSummary::amounts("1.234,5 GB, 7MB y 2 TB; 5 kB, GB, 3  GB, 16.0\u00A0GB 8 GBs"),
                ElementsAre("234,5 GB", "7MB", "2 TB", "16.0\u00A0GB", "8 GB"));
    // Looking for them gave up here, and what stood behind the digits went unseen.
    EXPECT_THAT(DiskSummary::amounts(std::string(1000000, '1') + "x 9 GB"), ElementsAre("9 GB"));
}

TEST(SummaryService, BelievesOnlyAModelThatNamesNoOtherSizes) {
    using Written = std::optional<std::string>;
    for (const Written& written : {Written("Mira Docker, que son 22,0 GB."), Written("No hay prisa."),
                                   Written("Son 17.9 GB."), Written("Son 18 GB."), Written(""), Written(),
                                   // These were shown as checked.
                                   Written("Son dieciocho gigas."), Written("Es el 12 % del disco."),
                                   Written("Son 17 900 MB."), Written("Usa apt clean.")}) {
        const auto summary = SummaryService::summary(
            rich, 17900000000, now, [&](const auto&) { return written; }, Language::es);
        const bool isRight = written && (written->starts_with("Mira") || written->starts_with("No"));
        EXPECT_EQ(summary.byAI, isRight) << written.value_or("-");
        EXPECT_EQ(summary.text, isRight ? *written : spanish(rich));
    }
    EXPECT_EQ(SummaryService::summary(rich, 17900000000, now, {}, Language::es).text, spanish(rich));
    EXPECT_FALSE(DiskSummary::usesOnlyKnownAmounts("5 GB", {"nada"}));
}
