#include "LumoCore/Explaining/HelpAssistant.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using lumo::HelpAnswer;
using lumo::Language;
using lumo::System;
using namespace testing;
namespace HelpAssistant = lumo::HelpAssistant;
namespace HelpGuard = lumo::HelpGuard;

namespace {

/// Asks with a model that always writes that text, and notes what it was shown.
struct Asked {
    std::string context;
    int facts = 0;

    HelpAnswer ask(const std::string& question, std::optional<std::string> written,
                   System system = System::macos) {
        return HelpAssistant::answer(
            question,
            [this] {
                ++facts;
                return std::vector<std::string>{"Docker: 12,3 GB.", "Libre: 5 MB."};
            },
            [this, written](const std::string&, const std::string& shown) {
                context = shown;
                return written;
            },
            Language::es, system);
    }
};

} // namespace

TEST(HelpGuard, RefusesCommandsMenuPathsUnknownSizesAndLongTexts) {
    const std::string allowed = "Docker ocupa 12,3 GB.";
    using Case = std::tuple<std::string, bool>;
    for (const auto& [text, isAcceptable] : {Case{"Ocupa 12,3 GB.", true},
                                             {"Ocupa 12.3 GB.", false},
                                             {"Ocupa 12,3\u00A0GB.", false}, // Another blank is another text.
                                             {"Ocupa \u0663 GB.", false},    // Digits of another script, too.
                                             {"Sin cifras.", true},
                                             {"", false},
                                             {std::string(700, 'x'), true},
                                             {std::string(701, 'x'), false},
                                             {"Abre el TERMINAL", false},
                                             {"Ajustes → General", false},
                                             {"SuDo algo", false},
                                             {"usa RM -rf", false},
                                             {"a firm answer", false}, // "rm " is looked for as it is.
                                             {"defaults write x", false},
                                             {"chmod", false},
                                             // Figures in other clothes went unseen.
                                             {"Son doce gigas.", false},
                                             {"Son 1 200 MB.", false},
                                             {"Son 12 300 MB y 12,3 GB.", false},
                                             {"Son 12,3 gigabytes.", false},
                                             {"Ocupa varios cientos de megas.", false},
                                             {"Half a gigabyte.", false},
                                             {"El 12 % del disco.", false},
                                             {"doce por ciento", false},
                                             {"Ocupa 12G.", false},
                                             {"Ocupa gigas.", false},
                                             {"Una caché de un programa, dos carpetas y 3 archivos.", true},
                                             {"MEGA and Gigabyte’s tools", false},
                                             // So did addresses and commands.
                                             {"Mira https://x.example", false},
                                             {"Mira www.x.es", false},
                                             {"Visita malo.com.", false},
                                             {"Usa apt purge docker.", false},
                                             {"Usa docker system prune -a", false},
                                             {"Con pip cache purge", false},
                                             {"curl x.io/y", false},
                                             {"a && b", false},
                                             {"Con --force", false},
                                             {"com.foo.Bar y Node.js, de Docker", true},
                                             {"Ajustes > General", false}}) {
        EXPECT_EQ(HelpGuard::acceptable(text, allowed), isAcceptable) << text;
    }
    std::string accents;
    for (int count = 0; count < 700; ++count) {
        accents += "é"; // Characters are counted, not bytes.
    }
    EXPECT_TRUE(HelpGuard::acceptable(accents, allowed));
    EXPECT_FALSE(HelpGuard::acceptable("5 GB", "nada"));
    EXPECT_TRUE(HelpGuard::acceptable("Con medio giga o «docker system prune».",
                                      "Libera medio giga. Hace «docker system prune»."));
}

TEST(HelpAssistant, ShowsTheModelTheClosestTopicsAndTheFactsAndBelievesWhatItCanCheck) {
    Asked asked;
    const HelpAnswer answer = asked.ask("¿Cuánto ocupa Docker?", "Docker ocupa 12,3 GB.");
    EXPECT_EQ(answer.text, "Docker ocupa 12,3 GB.");
    EXPECT_TRUE(answer.byAI);
    ASSERT_THAT(answer.sources, SizeIs(3));
    EXPECT_EQ(answer.sources.front(), "docker");
    EXPECT_THAT(asked.context, StartsWith("AYUDA:\n¿Por qué Docker aparenta más de lo que ocupa?\nDocker "));
    EXPECT_THAT(asked.context, HasSubstr(".\n\n¿"));
    EXPECT_THAT(asked.context, EndsWith("\n\nDATOS DE ESTE MAC:\nDocker: 12,3 GB.\nLibre: 5 MB."));
    EXPECT_TRUE(asked.ask("¿Cuánto ocupa Docker?", "Sí.", System::linux).byAI);
    EXPECT_THAT(asked.context, EndsWith("\n\nDATOS DE ESTE EQUIPO:\nDocker: 12,3 GB.\nLibre: 5 MB."));
    for (const Language language : {Language::es, Language::en}) {
        EXPECT_THAT(lumo::HelpWriter::instructions(language, System::linux), Not(HasSubstr("Mac")));
        EXPECT_THAT(lumo::HelpWriter::instructions(language, System::macos), HasSubstr("Mac"));
    }
    EXPECT_THAT(asked.ask("y de la", "Sí.").sources,
                ElementsAre("colores", "regenera", "libera", "apartado", "vaciar", "permisos"));
}

TEST(HelpAssistant, FallsBackToTheClosestTopicsWhenThereIsNoAnswerToBelieve) {
    Asked asked;
    for (const std::optional<std::string>& refused :
         {std::optional<std::string>(), std::optional<std::string>(""),
          std::optional<std::string>("Abre la Terminal."), std::optional<std::string>("Ocupa 99 GB.")}) {
        const HelpAnswer answer = asked.ask("¿Cuánto ocupa Docker?", refused);
        EXPECT_THAT(answer.text, StartsWith("No encuentro esa duda en la ayuda."));
        EXPECT_FALSE(answer.byAI);
        EXPECT_THAT(answer.sources, SizeIs(3));
    }
    asked.facts = 0;
    EXPECT_THAT(asked.ask("¿Cómo deshago una limpieza?", "otra cosa").sources, ElementsAre("apartado"));
    EXPECT_EQ(asked.facts, 0) << "The catalogue has the answer itself.";
    const auto facts = []() -> std::vector<std::string> {
        ADD_FAILURE() << "No model, no facts.";
        return {};
    };
    EXPECT_THAT(HelpAssistant::answer("y de la", facts, {}, Language::es, System::macos).sources, IsEmpty());
}
