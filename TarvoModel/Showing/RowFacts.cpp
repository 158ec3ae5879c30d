#include "TarvoModel/Showing/RowFacts.h"

#include "LumoCore/Basics/ByteFormat.h"
#include "LumoCore/Basics/Date.h"
#include "LumoCore/Basics/Text.h"
#include "LumoCore/Basics/Words.h"
#include "LumoCore/Cleanup/Holding.h"
#include "TarvoModel/Showing/CleanupTexts.h"

#include <variant>

namespace tarvo {

using lumo::Language;
using lumo::Words;
namespace method = lumo::method;

namespace {

/// As one would type it: the program by its name alone.
std::string commandLine(const method::Command& command) {
    std::string line;
    for (const std::string& word : command.words) {
        line += line.empty() ? std::string(word.substr(word.rfind('/') + 1)) : " " + word;
    }
    return lumo::printable(line);
}

std::string filesText(std::int64_t count, Language language) {
    return count == 1 ? Words{"1 archivo", "1 file"}.in(language)
                      : Words{"{} archivos", "{} files"}.in(
                            language, lumo::ByteFormat::number(static_cast<double>(count), 0, language));
}

/// What is to be done by hand, says the reason; no cleanup does any of it.
bool isLeftToTheUser(const lumo::CleanupAction& action) {
    const auto* const moved = std::get_if<method::TrashItems>(&action.method);
    return moved != nullptr && moved->paths.empty();
}

} // namespace

std::string freeingText(const lumo::CleanupAction& action, Language language) {
    if (std::holds_alternative<method::EvictFromICloud>(action.method)) {
        return Words{"se quita la copia de este equipo: los archivos siguen en la nube",
                     "the copy on this computer goes: the files stay in the cloud"}
            .in(language);
    }
    const auto* const command = std::get_if<method::Command>(&action.method);
    const Going going = goingOf({action});
    if (command != nullptr) {
        const std::string line = commandLine(*command);
        return going.forGood.empty()
                   ? Words{"al momento, con su propia herramienta: {}", "at once, by its own tool: {}"}.in(
                         language, line)
                   : Words{"al momento, con su propia herramienta, y no se puede deshacer: {}",
                           "at once, by its own tool, and that can't be undone: {}"}
                         .in(language, line);
    }
    if (going.own.empty()) {
        return Words{"se borra al momento y se regenera cuando haga falta",
                     "deleted at once; it recreates itself when it is needed"}
            .in(language);
    }
    return Words{"se aparta {} días: hasta entonces se puede recuperar",
                 "set aside for {} days: until then it can be put back"}
        .in(language, std::to_string(lumo::Holding::retentionDays));
}

std::vector<ExplanationLine> factsOf(const Row& row, const lumo::PlanEntry* entry, Language language) {
    std::vector<ExplanationLine> facts;
    if (entry != nullptr && (!entry->skipReason || (!row.kind && !isLeftToTheUser(entry->action)))) {
        facts.push_back({Words{"Se libera", "Freed"}.in(language), freeingText(entry->action, language)});
    }
    if (row.kept) {
        facts.push_back({Words{"Se queda", "Stays"}.in(language), lumo::printable(*row.kept)});
    }
    if (row.files > 0) {
        facts.push_back({Words{"Contiene", "Holds"}.in(language), filesText(row.files, language)});
    }
    if (row.lastChange) {
        const std::string day = lumo::dayText(*row.lastChange, language);
        facts.push_back(row.id.starts_with(lumo::artifactIDPrefix)
                            ? ExplanationLine{Words{"Proyecto", "Project"}.in(language),
                                              Words{"cambió por última vez el {}", "last changed on {}"}.in(
                                                  language, day)}
                            : ExplanationLine{Words{"Cambió", "Changed"}.in(language),
                                              Words{"por última vez el {}", "last on {}"}.in(language, day)});
    }
    return facts;
}

} // namespace tarvo
