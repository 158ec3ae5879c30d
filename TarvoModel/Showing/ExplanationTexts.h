#pragma once

#include "LumoCore/Basics/Language.h"
#include "LumoCore/Explaining/Explanation.h"

#include <string>
#include <string_view>
#include <vector>

/// An explanation as every face shows it.
namespace tarvo {

/// One thing that an explanation says, and what kind of thing that is.
struct ExplanationLine {
    std::string label; ///< "What", "Risk"; a word or two.
    std::string text;

    friend bool operator==(const ExplanationLine&, const ExplanationLine&) = default;
};

/// What it is, whose, how risky and why, what to do, and the note if there is one. Whose is left out where
/// nobody but a heuristic says so.
std::vector<ExplanationLine> explanationLines(const lumo::Explanation& explanation,
                                              lumo::Language language = lumo::currentLanguage());

/// Who says so, in a word or two: "AI", "approximate", "catalog".
std::string sourceWord(lumo::Explanation::Source source, lumo::Language language = lumo::currentLanguage());

} // namespace tarvo
