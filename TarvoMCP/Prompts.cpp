#include "TarvoMCP/Tools.h"

#include "LumoCore/Basics/Words.h"

#include <string_view>

namespace tarvo::mcp {

using lumo::Words;

namespace {

/// "20", "0.5" or "0,5": what a person writes for so many gigabytes.
bool isAmount(std::string_view text) {
    constexpr std::size_t mostCharacters = 8;
    const auto areDigits = [](std::string_view part) {
        return !part.empty() && part.find_first_not_of("0123456789") == std::string_view::npos;
    };
    const std::size_t point = text.find_first_of(".,");
    return text.size() <= mostCharacters && areDigits(text.substr(0, point)) &&
           (point == std::string_view::npos || areDigits(text.substr(point + 1))) &&
           text.find_first_of("123456789") != std::string_view::npos;
}

constexpr Words lookFirst{
    "Libera {} GB en mi equipo con las herramientas de Tarvo AI, sin que pierda nada mío por accidente.\n"
    "1. Mide con analyze_disk: recoverableBytes es lo que se puede liberar sin riesgo.\n"
    "2. Haz un plan con propose_cleanup. Si no llega a {} GB, enséñame lo que habría que mirar antes "
    "(review), con su tamaño y qué es, e incluye solo lo que yo elija. Para las carpetas que nadie conoce "
    "usa "
    "explain_folder.\n",
    "Free {} GB on my computer with the tools of Tarvo AI, so that I lose nothing of mine by accident.\n"
    "1. Measure with analyze_disk: recoverableBytes is what can be freed with no risk.\n"
    "2. Make a plan with propose_cleanup. If it does not reach {} GB, show me what needs a look (review), "
    "with "
    "its size and what it is, and include only what I choose. For folders that nobody recognizes use "
    "explain_folder.\n"};

constexpr Words thenClean{"3. Dime qué se borra ya, qué se aparta y qué no se puede deshacer, y llama a "
                          "clean, que me pregunta por su "
                          "cuenta. Si digo que no, déjalo así.\n"
                          "4. Dime cuánto ha quedado libre y cuánto está apartado y aún no libre.",
                          "3. Tell me what is deleted now, what is set aside and what cannot be undone, and "
                          "call clean, which asks me "
                          "by itself. If I say no, leave it at that.\n"
                          "4. Tell me how much is free now and how much is set aside and not free yet."};

constexpr Words thenShow{"3. Enséñame el plan: qué se borraría ya, qué se apartaría y qué no se podría "
                         "deshacer. Este servidor es de "
                         "solo lectura: no limpies nada por otros medios.",
                         "3. Show me the plan: what would be deleted now, what set aside and what could not "
                         "be undone. This server "
                         "is read-only: do not clean anything by other means."};

} // namespace

std::vector<Prompt> prompts(Offer offer) {
    const auto words = [offer](const JsonValue& arguments) -> lumo::Result<std::string> {
        const std::string& amount = *textIn(arguments, "gigabytes");
        if (!isAmount(amount)) {
            return lumo::failure(Words{"«gigabytes» es una cantidad, por ejemplo 20",
                                       "“gigabytes” is an amount, for example 20"}
                                     .in());
        }
        return lookFirst.with(amount, amount) + (offer == Offer::everything ? thenClean : thenShow).in();
    };
    return {{.name = "free_space",
             .title = Words{"Liberar N GB sin miedo", "Free N GB safely"}.in(),
             .description = Words{"Busca qué puede irse, lo propone y pregunta antes de limpiar",
                                  "Finds what can go, proposes it and asks before cleaning"}
                                .in(),
             .arguments =
                 {{.name = "gigabytes",
                   .title = Words{"Gigabytes", "Gigabytes"}.in(),
                   .description =
                       Words{"cuánto liberar, por ejemplo 20", "how much to free, for example 20"}.in()}},
             .words = words}};
}

} // namespace tarvo::mcp
