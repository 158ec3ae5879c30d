#include "LumoCore/Scanning/ScanReport.h"
#include "Tests/support/RunTarvo.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace lumo;
using namespace tarvo::testing;
using namespace testing;

TEST(AskCommand, AnswersWordsWithAndWithoutQuotesAndOpensTopicsByTheirNames) {
    const TempHome home;
    const std::string answer = runTarvo(home, {"preguntar", "¿Cómo deshago una limpieza?"}).output;
    EXPECT_THAT(answer, StartsWith("¿Qué es el Apartado y cómo deshago una limpieza?\n"));
    EXPECT_EQ(runTarvo(home, {"preguntar", "cómo", "deshago", "una", "limpieza"}).output, answer);
    EXPECT_EQ(runTarvo(home, {"ask", "--topics", "apartado"}).output, answer);
    EXPECT_EQ(runTarvo(home, {"ask", "¿Cómo deshago una limpieza?"}, {"TARVO_IDIOMA=en"}).output, answer);
    // The document said that the help does not know what the text answered in the other language.
    const auto inEnglish = jsonOf(home, {"ask", "What is Recently Cleaned, and how do I undo a cleanup?"});
    EXPECT_EQ(*inEnglish.find("sources"), json(R"(["apartado"])"));
    EXPECT_THAT(runTarvo(home, {"ask", "What is Recently Cleaned, and how do I undo a cleanup?"}).output,
                StartsWith("What is Recently Cleaned, and how do I undo a cleanup?\n"));
    EXPECT_THAT(runTarvo(home, {"ask", "--topics"}, {"TARVO_IDIOMA=en"}).output,
                HasSubstr("  lento         Why is it slow, or showing “Also searching…”?\n"));
    const auto topics = jsonOf(home, {"ask", "--topics"});
    EXPECT_EQ(std::get<JsonValue::Array>(topics.value).size(), 33U)
        << "two are of this system's windows only";
    for (const std::vector<std::string>& wrong :
         {std::vector<std::string>{"ask"}, std::vector<std::string>{"ask", "--topics", "nada"}}) {
        EXPECT_EQ(runTarvo(home, wrong).exitCode, 2);
    }
}

TEST(AskCommand, ListsRelatedQuestionsUnderWhatItDoesNotKnowAndMeasuresNothingForIt) {
    const TempHome home;
    EXPECT_EQ(jsonOf(home, {"ask", "y de la"}),
              json(R"({"text": "No encuentro esa duda en la ayuda. Prueba con otras palabras o mira las )"
                   R"(preguntas de abajo.", "byAI": false, "sources": []})"));
    const auto ran = runTarvo(home, {"ask", "how much does Docker take"}, {"TARVO_IDIOMA=en"});
    EXPECT_THAT(ran.output, HasSubstr("  docker  Why does Docker look bigger than it is?\n"));
    EXPECT_EQ(ran.error, "");
    // Our own question, though it sounds like one about this disk.
    EXPECT_THAT(
        runTarvo(home, {"ask", "how much can i trust the ai's explanations"}, {"TARVO_IDIOMA=en"}).output,
        StartsWith("How much can I trust the AI's explanations?\nThey "));
}

TEST(SummaryCommand, TellsWhatThePlanFreesNowAndFromWhichFacts) {
    const TempHome home;
    ScanReport report{.home = home.path(), .volume = {.availableBytes = 5000000000}};
    Finding cache;
    cache.safety = Safety::safe;
    cache.cleanup = cleanup::DeleteContents{};
    cache.paths = {home.path("a")};
    cache.usage.allocatedBytes = 2000000000;
    report.findings = {cache, cache};
    report.findings.back().paths = {home.path("protected/b")};
    const std::string file = home.fileWith("r.json", dumpJson(encode(report), JsonLayout::line));
    runTarvo(home, {"settings", "set", "carpetasProtegidas", home.folder("protected")});
    EXPECT_EQ(jsonOf(home, {"summary", "--report", file}),
              json(R"({"text": "Puedes recuperar 2,0 GB sin riesgo, sobre todo 4,0 GB en cachés de )"
                   R"(herramientas de desarrollo.", "byAI": false, "facts": [)"
                   R"("Recuperable sin riesgo en total: 2,0 GB.", "Parte de lo recuperable: cachés de )"
                   R"(herramientas de desarrollo (uv, npm, pnpm, Gradle…), 4,0 GB.", )"
                   R"("Espacio libre ahora: 5,0 GB."]})"));
}
