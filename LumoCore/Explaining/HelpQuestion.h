#pragma once

#include "LumoCore/Explaining/HelpCatalog.h"

/// What a question in somebody's own words is about, and which topic clearly answers it, on Linux.
namespace lumo::HelpQuestion {

/// The words of a normalized text, in their order.
std::vector<std::string> wordsIn(std::string_view normalized);

/// What of the question is looked for in the topics: its words without those that any question in that
/// language may hold, and, where others are left, without those of things that half the topics are about (a
/// folder, a block of the map). Words of the same once; normalized.
std::string soughtIn(std::string_view question, Language language);

/// The topic that clearly answers the question: one of whose keywords is the question or, being of several
/// words, stands in it; or that has two words of it and the score that this takes; or for which its words say
/// more than for any other, with few that the help does not use. None when there is no such topic.
const HelpTopic* clearTopic(std::string_view question, Language language);

/// How many of the words that are looked for, of four letters at least, stand whole in the topic's question
/// or keywords.
std::size_t wholeWords(std::string_view question, const HelpTopic& topic, Language language);

} // namespace lumo::HelpQuestion
