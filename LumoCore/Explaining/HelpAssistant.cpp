#include "LumoCore/Explaining/HelpAssistant.h"

#include "LumoCore/Basics/Text.h"
#include "LumoCore/Basics/Words.h"
#include "LumoCore/Explaining/DiskSummary.h"
#include "LumoCore/Explaining/ModelGuard.h"

#include <algorithm>
#include <array>

namespace lumo {

namespace {

constexpr std::size_t mostSources = 3;

std::vector<std::string> idsOf(const std::vector<const HelpTopic*>& topics) {
    std::vector<std::string> ids;
    for (const HelpTopic* topic : topics) {
        ids.push_back(topic->id);
    }
    return ids;
}

/// The topics that a model is shown.
std::vector<const HelpTopic*> topicsFor(std::string_view question, Language language, System system) {
    constexpr std::size_t mostWithoutMatch = 6;
    std::vector<const HelpTopic*> topics = HelpCatalog::relevant(question, mostSources, language, system);
    if (topics.empty()) {
        for (const HelpTopic& topic : HelpCatalog::topics(language, system)) {
            if (topics.size() < mostWithoutMatch) {
                topics.push_back(&topic);
            }
        }
    }
    return topics;
}

std::string contextOf(const std::vector<const HelpTopic*>& topics, const std::vector<std::string>& facts,
                      Language language, System system) {
    std::string context(Words{"AYUDA:\n", "HELP:\n"}.in(language));
    for (const HelpTopic* topic : topics) {
        context += (topic == topics.front() ? "" : "\n\n") + topic->question + "\n" + topic->answer;
    }
    constexpr SystemWords data{.macos = {"\n\nDATOS DE ESTE MAC:\n", "\n\nTHIS MAC'S DATA:\n"},
                               .linux = {"\n\nDATOS DE ESTE EQUIPO:\n", "\n\nTHIS COMPUTER'S DATA:\n"}};
    context += data.on(system).in(language);
    for (std::size_t index = 0; index < facts.size(); ++index) {
        context += (index == 0 ? "" : "\n") + facts[index];
    }
    return context;
}

/// In lower case where it matters: the letters that the forbidden words are made of.
std::string lowered(std::string_view text) {
    std::string lower(text);
    for (char& c : lower) {
        c = c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    }
    return lower;
}

} // namespace

namespace HelpWriter {

std::string instructions(Language language, System system) {
    // The runs of blanks are part of what models were tried with.
    constexpr Words onMac{
        "Eres la ayuda de la app Tarvo AI para Mac, que ayuda a liberar espacio en disco sin miedo. "
        "Responde en español, en dos a cuatro frases claras, usando solo la información de AYUDA y de "
        "DATOS DE ESTE MAC. Si la respuesta no está ahí, responde exactamente: «No lo sé con seguridad; "
        "mira las preguntas de la ayuda.» No inventes menús, botones, ajustes ni comandos. Copia las "
        "cifras tal cual aparecen.",
        "You are the help for Tarvo AI for Mac, an app that helps free up disk space without fear.     "
        "Answer in English, in two to four clear sentences, using only the information in HELP and     "
        "THIS MAC'S DATA. If the answer isn't there, reply exactly:     "
        "«I'm not sure; check the questions in the help.»     "
        "Don't make up menus, buttons, settings or commands. Copy figures exactly as they appear."};
    constexpr Words onLinux{
        "Eres la ayuda de Tarvo AI, un programa para Linux que ayuda a liberar espacio en disco sin miedo. "
        "Responde en español, en dos a cuatro frases claras, usando solo la información de AYUDA y de DATOS "
        "DE "
        "ESTE EQUIPO. Si la respuesta no está ahí, responde exactamente: «No lo sé con seguridad; mira las "
        "preguntas de la ayuda.» No inventes menús, botones, ajustes ni órdenes, y no des direcciones web. "
        "Copia "
        "las cifras tal cual aparecen.",
        "You are the help for Tarvo AI, a program for Linux that helps free up disk space without fear. "
        "Answer "
        "in English, in two to four clear sentences, using only the information in HELP and THIS COMPUTER'S "
        "DATA. If the answer isn't there, reply exactly: «I'm not sure; check the questions in the help.» "
        "Don't "
        "make up menus, buttons, settings or commands, and give no web addresses. Copy figures exactly as "
        "they "
        "appear."};
    return SystemWords{.macos = onMac, .linux = onLinux}.on(system).in(language);
}

std::string prompt(std::string_view question, std::string_view context, Language language) {
    return std::string(context) + Words{"\n\nPREGUNTA:\n", "\n\nQUESTION:\n"}.in(language) +
           std::string(question);
}

} // namespace HelpWriter

namespace HelpGuard {

bool acceptable(std::string_view text, std::string_view allowedText) {
    constexpr std::size_t mostCharacters = 700;
    constexpr std::array<std::string_view, 7> forbidden{"rm ",      "rm -",           "sudo", "→",
                                                        "terminal", "defaults write", "chmod"};
    if (text.empty() || characterCount(text) > mostCharacters) {
        return false;
    }
    const std::string lower = lowered(text);
    const auto isIn = [&](std::string_view words) { return lower.find(words) != std::string::npos; };
    // The help's own commands may be repeated.
    const std::vector<std::string> ours = ModelGuard::instructions(allowedText);
    return std::ranges::none_of(forbidden, isIn) &&
           DiskSummary::usesOnlyKnownAmounts(text, {std::string(allowedText)}) &&
           ModelGuard::namesOnlyFiguresOf(allowedText, text) &&
           std::ranges::all_of(ModelGuard::instructions(text), [&](const std::string& instruction) {
               return std::ranges::find(ours, instruction) != ours.end();
           });
}

HelpAnswer fallback(std::string_view question, Language language, System system) {
    return {.text =
                Words{"No encuentro esa duda en la ayuda. Prueba con otras palabras o mira las preguntas de "
                      "abajo.",
                      "I can't find that in the help. Try other words or look at the questions below."}
                    .in(language),
            .byAI = false,
            .sources = idsOf(HelpCatalog::relevant(question, mostSources, language, system))};
}

} // namespace HelpGuard

namespace HelpAssistant {

std::string context(std::string_view question, const std::vector<std::string>& facts, Language language,
                    System system) {
    return contextOf(topicsFor(question, language, system), facts, language, system);
}

HelpAnswer answer(const std::string& question, const Facts& facts, const HelpWriter::Write& write,
                  Language language, System system) {
    if (std::optional<HelpAnswer> direct = HelpCatalog::directAnswer(question, language, system)) {
        return *direct;
    }
    if (write) {
        const std::vector<const HelpTopic*> topics = topicsFor(question, language, system);
        const std::string allowed =
            contextOf(topics, facts ? facts() : std::vector<std::string>(), language, system);
        const std::optional<std::string> written = write(question, allowed);
        if (written && HelpGuard::acceptable(*written, allowed)) {
            return {.text = *written, .byAI = true, .sources = idsOf(topics)};
        }
    }
    return HelpGuard::fallback(question, language, system);
}

} // namespace HelpAssistant

} // namespace lumo
