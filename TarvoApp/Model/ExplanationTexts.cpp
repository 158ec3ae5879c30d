#include "TarvoApp/Model/ExplanationTexts.h"

#include "TarvoApp/Model/Rows.h"
#include "TarvoApp/Model/Said.h"

namespace tarvo {

using lumo::Explanation;
using lumo::Language;

std::vector<ExplanationLine> explanationLines(const Explanation& explanation, Language language) {
    std::vector<ExplanationLine> lines;
    lines.push_back({said("Qué es", "What", language), explanation.whatItIs});
    if (explanation.source == Explanation::Source::ai) {
        lines.push_back({said("De quién", "Whose", language), explanation.owner});
    }
    lines.push_back({said("Riesgo", "Risk", language),
                     groupTitle(groupOf(explanation.safety), language) + ". " + explanation.reason});
    lines.push_back({said("Qué hacer", "To do", language), explanation.howToFree});
    if (explanation.note) {
        lines.push_back({said("Nota", "Note", language), *explanation.note});
    }
    return lines;
}

std::string_view sourceWord(Explanation::Source source, Language language) {
    return source == Explanation::Source::ai ? lumo::text("IA", "AI", language)
                                             : lumo::text("aproximada", "approximate", language);
}

} // namespace tarvo
