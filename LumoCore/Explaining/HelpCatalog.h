#pragma once

#include "LumoCore/Basics/Codec.h"
#include "LumoCore/Basics/Language.h"
#include "LumoCore/Basics/System.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace lumo {

/// One question of the help and its answer.
struct HelpTopic {
    std::string id; ///< The same in both languages.
    std::string question;
    std::string answer;
    std::vector<std::string> keywords;      ///< Lower case, without accents.
    std::string answerWithoutCommands = {}; ///< For an agent, which has tools and no terminal. Not stored.

    static constexpr auto fields =
        std::tuple{field("id", &HelpTopic::id), field("question", &HelpTopic::question),
                   field("answer", &HelpTopic::answer), field("keywords", &HelpTopic::keywords)};
    friend bool operator==(const HelpTopic&, const HelpTopic&) = default;
};

/// What a person is told who asked something.
struct HelpAnswer {
    std::string text;
    bool byAI = false;                ///< A language model wrote the text.
    std::vector<std::string> sources; ///< Ids of the topics to show under it.

    static constexpr auto fields =
        std::tuple{field("text", &HelpAnswer::text), field("byAI", &HelpAnswer::byAI),
                   field("sources", &HelpAnswer::sources)};
    friend bool operator==(const HelpAnswer&, const HelpAnswer&) = default;
};

/// The fixed questions and answers, and which of them a question in somebody's own words is about.
namespace HelpCatalog {

/// The topics in the order in which they are shown. They last as long as the process.
const std::vector<HelpTopic>& topics(Language language = currentLanguage(), System system = currentSystem());

/// The topic that these words name: its id, or its question word for word; none when there is no such topic.
const HelpTopic* topicNamed(std::string_view words, Language language = currentLanguage(),
                            System system = currentSystem());

/// Without case and accents, and with a blank in place of everything that is no letter and no number.
std::string normalize(std::string_view text);

struct ScoredTopic {
    const HelpTopic* topic = nullptr; ///< Never null; one of `topics`.
    int score = 0;
};

/// The topics that share words with the question, best first. A word of three characters or more counts 3 in
/// a topic's question or keywords, and 1 in its answer.
std::vector<ScoredTopic> scored(std::string_view question, Language language = currentLanguage(),
                                System system = currentSystem());

/// The first of these, at most `limit`. On Linux only what the question is about is looked for.
std::vector<const HelpTopic*> relevant(std::string_view question, std::size_t limit,
                                       Language language = currentLanguage(),
                                       System system = currentSystem());

/// True for a question about what is on this disk, which no fixed text can answer. On Linux whole words
/// count, and "tengo que" or "how much does it cost" ask for something else.
bool isAboutThisMac(std::string_view question, System system = currentSystem());

/// The answer of the topic that clearly matches; none when no one does or the question is about this Mac. On
/// a Mac that takes a score of 6; on Linux see `HelpQuestion::clearTopic`.
std::optional<HelpAnswer> directAnswer(std::string_view question, Language language = currentLanguage(),
                                       System system = currentSystem());

/// The topic that answers the question: its own word for word, which may sound like one about this disk, or
/// the one that clearly matches. Both are also tried in the other language, since people ask in theirs
/// whatever the interface's is, on Linux with two whole words of four letters at least; the topic is in the
/// language in which it was found. None when there is none.
const HelpTopic* topicAskedFor(std::string_view question, Language language = currentLanguage(),
                               System system = currentSystem());

} // namespace HelpCatalog

} // namespace lumo
