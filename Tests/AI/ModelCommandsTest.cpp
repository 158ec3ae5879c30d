#include "LumoCore/Scanning/ScanReport.h"
#include "Tests/AI/FakeModelService.h"
#include "Tests/support/RunTarvo.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>

using namespace lumo;
using namespace tarvo::testing;
using namespace testing;

namespace {

void answerWith(FakeModelService& service, const std::string& written) {
    service.reply = [reply = service.wrapped(written)](const httplib::Request&, httplib::Response& response) {
        response.set_content(reply, "application/json");
    };
}

} // namespace

TEST(ExplainCommand, ShowsWhatTheChosenModelWroteAndAsksItOnce) {
    const TempHome home;
    const std::string folder = home.folder(".tool");
    FakeModelService service(ChatInterface::ollama);
    answerWith(service, R"({"que_es":"Modelos de voz","pertenece_a":"Voces","riesgo":"seguro",)"
                        R"("motivo":"Se descargan.","accion":"desinstalar_herramienta"})");
    EXPECT_EQ(runTarvo(home, {"settings", "set", "modeloLocal", service.place()}).exitCode, 0);
    for (int round = 0; round < 2; ++round) {
        EXPECT_THAT(
            runTarvo(home, {"explain", folder}).output,
            AllOf(HasSubstr(" · IA\n  Qué es     Modelos de voz\n  De quién   Voces\n"
                            "  Riesgo     Míralo antes. Muchas herramientas no aparecen entre las apps.\n"),
                  HasSubstr("Nota       La IA lo cree seguro, pero no hay garantía: revísalo.")));
    }
    EXPECT_THAT(service.questions(), SizeIs(1));
}

TEST(SummaryCommand, TakesTheModelsTextOnlyWithTheFiguresOfTheFacts) {
    const TempHome home;
    ScanReport report{.home = home.path(), .volume = {.availableBytes = 5000000000}};
    const std::string file = home.fileWith("r.json", dumpJson(encode(report), JsonLayout::line));
    auto service = std::make_unique<FakeModelService>(ChatInterface::openAI);
    runTarvo(home, {"settings", "set", "modeloLocal", service->place()});
    const auto summary = [&] { return runTarvo(home, {"summary", "--report", file}); };
    answerWith(*service, "Quedan 5,0 GB.");
    EXPECT_THAT(summary().output, AllOf(HasSubstr("Quedan 5,0 GB.\n"), HasSubstr("Lo ha escrito la IA")));
    answerWith(*service, "Quedan 5 GB.");
    EXPECT_EQ(summary().output, "Puedes recuperar 0 MB sin riesgo.\n");
    answerWith(*service, "La ayuda dice que quedan 98765,4 GB.");
    EXPECT_THAT(runTarvo(home, {"ask", "¿cuánto me queda?"}).output, HasSubstr("No encuentro esa duda"))
        << "a figure that nobody measured";
    answerWith(*service, "Mira el resumen.");
    EXPECT_THAT(runTarvo(home, {"ask", "¿cuánto me queda?"}).output, HasSubstr("Mira el resumen.\n"));
    service.reset();
    const auto alone = summary();
    EXPECT_EQ(alone.exitCode, 0);
    EXPECT_EQ(alone.error, "tarvo: IA no disponible: el modelo no está disponible.\n");
}
