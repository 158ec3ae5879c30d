#include "TarvoModel/Showing/ExplanationTexts.h"

#include "LumoCore/Basics/Words.h"
#include "TarvoModel/Showing/Rows.h"

namespace tarvo {

using lumo::Explanation;
using lumo::Language;

std::vector<ExplanationLine> explanationLines(const Explanation& explanation, Language language) {
    std::vector<ExplanationLine> lines;
    lines.push_back({lumo::Words{"Qué es", "What"}.in(language), explanation.whatItIs});
    if (explanation.source == Explanation::Source::ai) {
        lines.push_back({lumo::Words{"De quién", "Whose"}.in(language), explanation.owner});
    }
    lines.push_back({lumo::Words{"Riesgo", "Risk"}.in(language),
                     groupTitle(groupOf(explanation.safety), language) + ". " + explanation.reason});
    lines.push_back({lumo::Words{"Qué hacer", "To do"}.in(language), explanation.howToFree});
    if (explanation.note) {
        lines.push_back({lumo::Words{"Nota", "Note"}.in(language), *explanation.note});
    }
    return lines;
}

std::string sourceWord(Explanation::Source source, Language language) {
    switch (source) {
    case Explanation::Source::ai:
        return lumo::Words{"IA", "AI"}.in(language);
    case Explanation::Source::catalogue:
        return lumo::Words{"catálogo", "catalog"}.in(language);
    case Explanation::Source::project:
        return lumo::Words{"proyecto", "project"}.in(language);
    case Explanation::Source::inventory:
        return lumo::Words{"inventario", "inventory"}.in(language);
    case Explanation::Source::place:
        return lumo::Words{"por su lugar", "by its place"}.in(language);
    case Explanation::Source::heuristic:
        break;
    }
    return lumo::Words{"aproximada", "approximate"}.in(language);
}

} // namespace tarvo
