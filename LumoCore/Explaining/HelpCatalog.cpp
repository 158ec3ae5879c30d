#include "LumoCore/Explaining/HelpCatalog.h"

#include "LumoCore/Basics/LargestFirst.h"
#include "LumoCore/Basics/Text.h"
#include "LumoCore/Basics/Words.h"
#include "LumoCore/Explaining/HelpTopicRow.h"

#include <algorithm>
#include <array>
#include <set>

namespace lumo::HelpCatalog {

namespace {

std::vector<std::string> split(std::string_view list, std::string_view separator) {
    std::vector<std::string> parts;
    while (!list.empty()) {
        const std::size_t end = std::min(list.find(separator), list.size());
        if (end > 0) {
            parts.emplace_back(list.substr(0, end));
        }
        list.remove_prefix(std::min(end + separator.size(), list.size()));
    }
    return parts;
}

std::vector<HelpTopic> makeTopics(Language language) {
    std::vector<HelpTopic> topics;
    for (const auto rows : {cleaningRows(), placeRows(), usingRows()}) {
        for (const Row& row : rows) {
            topics.push_back({std::string(row.id), row.question.in(language), row.answer.in(language),
                              split(row.keywords.in(language), ", ")});
        }
    }
    return topics;
}

/// What questions are compared with.
struct Searchable {
    std::string asked; ///< Question and keywords.
    std::string answered;
};

std::vector<Searchable> makeSearchable(Language language) {
    std::vector<Searchable> texts;
    for (const HelpTopic& topic : topics(language)) {
        std::string asked = topic.question;
        for (const std::string& keyword : topic.keywords) {
            asked += " " + keyword;
        }
        texts.push_back({normalize(asked), normalize(topic.answer)});
    }
    return texts;
}

/// The normalized texts of all topics, made once: several steps of one answer look at them.
const std::vector<Searchable>& searchable(Language language) {
    if (language == Language::es) {
        static const std::vector<Searchable> spanish = makeSearchable(Language::es);
        return spanish;
    }
    static const std::vector<Searchable> english = makeSearchable(Language::en);
    return english;
}

/// The word without the ending that changes with gender and number; short words are left whole.
std::string stemOf(std::string word) {
    constexpr std::size_t shortestWithEnding = 7;
    constexpr int endingCharacters = 2;
    if (characterCount(word) < shortestWithEnding) {
        return word;
    }
    for (int dropped = 0; dropped < endingCharacters; ++dropped) {
        while ((static_cast<unsigned char>(word.back()) & 0xC0U) == 0x80U) {
            word.pop_back(); // The later bytes of one character.
        }
        word.pop_back();
    }
    return word;
}

/// The stems of the question's words, each word once.
std::vector<std::string> stemsIn(std::string_view question) {
    constexpr std::size_t shortestWord = 3;
    std::set<std::string> words;
    for (std::string& word : split(normalize(question), " ")) {
        if (characterCount(word) >= shortestWord) {
            words.insert(std::move(word));
        }
    }
    std::vector<std::string> stems;
    for (const std::string& word : words) {
        stems.push_back(stemOf(word));
    }
    return stems;
}

int scoreOf(const Searchable& texts, const std::vector<std::string>& stems) {
    constexpr int whereAsked = 3;
    constexpr int whereAnswered = 1;
    int score = 0;
    for (const std::string& stem : stems) {
        score += texts.asked.find(stem) != std::string::npos ? whereAsked : 0;
        score += texts.answered.find(stem) != std::string::npos ? whereAnswered : 0;
    }
    return score;
}

} // namespace

const std::vector<HelpTopic>& topics(Language language) {
    if (language == Language::es) {
        static const std::vector<HelpTopic> spanish = makeTopics(Language::es);
        return spanish;
    }
    static const std::vector<HelpTopic> english = makeTopics(Language::en);
    return english;
}

const HelpTopic* topicNamed(std::string_view words, Language language) {
    const std::vector<std::string> asked = split(normalize(words), " ");
    const auto& all = topics(language);
    const auto found = std::ranges::find_if(all, [&](const HelpTopic& topic) {
        return topic.id == words || split(normalize(topic.question), " ") == asked;
    });
    return found == all.end() ? nullptr : &*found;
}

std::string normalize(std::string_view text) {
    return wordsApart(folded(text));
}

std::vector<ScoredTopic> scored(std::string_view question, Language language) {
    const std::vector<std::string> stems = stemsIn(question);
    if (stems.empty()) {
        return {};
    }
    const auto& all = topics(language);
    const auto& texts = searchable(language);
    std::vector<ScoredTopic> found;
    for (std::size_t index = 0; index < all.size(); ++index) {
        if (const int score = scoreOf(texts[index], stems); score > 0) {
            found.push_back({&all[index], score});
        }
    }
    sortLargestFirst(found, &ScoredTopic::score);
    return found;
}

std::vector<const HelpTopic*> relevant(std::string_view question, std::size_t limit, Language language) {
    std::vector<const HelpTopic*> first;
    for (const ScoredTopic& scoredTopic : scored(question, language)) {
        if (first.size() == limit) {
            break;
        }
        first.push_back(scoredTopic.topic);
    }
    return first;
}

bool isAboutThisMac(std::string_view question) {
    // Whatever the interface's language is, people ask in theirs.
    constexpr std::array<std::string_view, 19> phrases{
        "cuanto",   "cuantos",      "mi mac",    "mi disco",   "este mac", "ocupa mas", "que ocupa",
        "tengo",    "mis carpetas", "en mi",     "how much",   "how many", "my mac",    "my disk",
        "this mac", "taking up",    "do i have", "my folders", "on my"};
    const std::string asked = normalize(question);
    return std::ranges::any_of(
        phrases, [&](std::string_view phrase) { return asked.find(phrase) != std::string::npos; });
}

std::optional<HelpAnswer> directAnswer(std::string_view question, Language language) {
    constexpr int clearMatch = 6;
    if (isAboutThisMac(question)) {
        return std::nullopt;
    }
    const std::vector<ScoredTopic> found = scored(question, language);
    if (found.empty() || found.front().score < clearMatch) {
        return std::nullopt;
    }
    const HelpTopic& topic = *found.front().topic;
    return HelpAnswer{.text = topic.answer, .byAI = false, .sources = {topic.id}};
}

const HelpTopic* topicAskedFor(std::string_view question, Language language) {
    const Language other = language == Language::es ? Language::en : Language::es;
    // Word for word first: in the wrong language, many words are parts of others.
    for (const Language tried : {language, other}) {
        if (const HelpTopic* topic = topicNamed(question, tried)) {
            return topic;
        }
    }
    for (const Language tried : {language, other}) {
        if (const std::optional<HelpAnswer> answer = directAnswer(question, tried)) {
            return topicNamed(answer->sources.front(), tried);
        }
    }
    return nullptr;
}

} // namespace lumo::HelpCatalog
