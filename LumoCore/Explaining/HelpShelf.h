#pragma once

#include "LumoCore/Explaining/HelpCatalog.h"

/// The topics as questions are compared with them.
namespace lumo::HelpCatalog {

/// The normalized texts of one topic.
struct Searchable {
    std::string asked; ///< Question and keywords.
    std::string answered;
};

/// The topics of one language and system, and their texts at the same places.
struct Shelf {
    std::vector<HelpTopic> topics;
    std::vector<Searchable> texts;

    Shelf(Language language, System system);
};

/// Made once, since several steps of one answer look at it; lasts as long as the process.
const Shelf& shelf(Language language, System system);

/// The word without the ending that changes with gender and number; short words are left whole.
std::string stemOf(std::string word);

} // namespace lumo::HelpCatalog
