#include "LumoCore/Explaining/HelpCatalog.h"

#include "LumoCore/Basics/LargestFirst.h"
#include "LumoCore/Basics/Text.h"
#include "LumoCore/Basics/Words.h"
#include "LumoCore/Explaining/HelpQuestion.h"
#include "LumoCore/Explaining/HelpShelf.h"
#include "LumoCore/Explaining/HelpTopicRow.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

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

void makeTrueOnLinux(HelpTopic& topic, Language language) {
    const auto rows = linuxRows();
    const auto row = std::ranges::find(rows, topic.id, &LinuxRow::id);
    if (row == rows.end()) {
        return;
    }
    if (!row->question.en.empty()) {
        topic.question = row->question.in(language);
    }
    if (!row->answer.en.empty()) {
        topic.answer = row->answer.in(language);
    }
    for (std::string& keyword : split(row->keywords.in(language), ", ")) {
        topic.keywords.push_back(std::move(keyword));
    }
}

enum class Commands { leftOut, told };

/// The answer as it is written down, with what stands in square brackets or without it.
std::string read(std::string_view written, Commands commands) {
    std::string text;
    bool isTold = true;
    for (const char c : written) {
        if (c == '[' || c == ']') {
            isTold = c == ']' || commands == Commands::told;
        } else if (isTold) {
            text += c;
        }
    }
    return text;
}

std::vector<HelpTopic> makeTopics(Language language, System system) {
    std::vector<HelpTopic> topics;
    const bool isLinux = system == System::linux;
    for (const auto rows :
         {cleaningRows(), placeRows(), usingRows(), isLinux ? linuxOnlyRows() : std::span<const Row>()}) {
        for (const Row& row : rows) {
            topics.push_back({std::string(row.id), row.question.in(language), row.answer.in(language),
                              split(row.keywords.in(language), ", ")});
            if (isLinux) {
                makeTrueOnLinux(topics.back(), language);
            }
            std::string& answer = topics.back().answer;
            topics.back().answerWithoutCommands = read(answer, Commands::leftOut);
            answer = read(answer, Commands::told);
        }
    }
    return topics;
}

std::vector<Searchable> makeSearchable(const std::vector<HelpTopic>& topics) {
    std::vector<Searchable> texts;
    for (const HelpTopic& topic : topics) {
        std::string asked = topic.question;
        for (const std::string& keyword : topic.keywords) {
            asked += " " + keyword;
        }
        texts.push_back({normalize(asked), normalize(topic.answer)});
    }
    return texts;
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

/// What of the question is looked for.
std::string soughtIn(std::string_view question, Language language, System system) {
    return system == System::macos ? std::string(question) : HelpQuestion::soughtIn(question, language);
}

/// The topic that clearly matches, as it was agreed for a Mac.
const HelpTopic* clearTopicOnMac(std::string_view question, Language language) {
    constexpr int clearMatch = 6;
    const std::vector<ScoredTopic> found = scored(question, language, System::macos);
    return found.empty() || found.front().score < clearMatch ? nullptr : found.front().topic;
}

} // namespace

Shelf::Shelf(Language language, System system)
    : topics(makeTopics(language, system)), texts(makeSearchable(topics)) {}

const Shelf& shelf(Language language, System system) {
    if (system == System::macos) {
        static const Shelf onMac[] = {{Language::en, System::macos}, {Language::es, System::macos}};
        return onMac[language == Language::es];
    }
    static const Shelf onLinux[] = {{Language::en, System::linux}, {Language::es, System::linux}};
    return onLinux[language == Language::es];
}

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

const std::vector<HelpTopic>& topics(Language language, System system) {
    return shelf(language, system).topics;
}

const HelpTopic* topicNamed(std::string_view words, Language language, System system) {
    const std::vector<std::string> asked = split(normalize(words), " ");
    const auto& all = topics(language, system);
    const auto found = std::ranges::find_if(all, [&](const HelpTopic& topic) {
        return topic.id == words || split(normalize(topic.question), " ") == asked;
    });
    return found == all.end() ? nullptr : &*found;
}

std::string normalize(std::string_view text) {
    return wordsApart(folded(text));
}

std::vector<ScoredTopic> scored(std::string_view question, Language language, System system) {
    const std::vector<std::string> stems = stemsIn(question);
    if (stems.empty()) {
        return {};
    }
    const auto& [all, texts] = shelf(language, system);
    std::vector<ScoredTopic> found;
    for (std::size_t index = 0; index < all.size(); ++index) {
        if (const int score = scoreOf(texts[index], stems); score > 0) {
            found.push_back({&all[index], score});
        }
    }
    sortLargestFirst(found, &ScoredTopic::score);
    return found;
}

std::vector<const HelpTopic*> relevant(std::string_view question, std::size_t limit, Language language,
                                       System system) {
    std::vector<const HelpTopic*> first;
    for (const ScoredTopic& scoredTopic : scored(soughtIn(question, language, system), language, system)) {
        if (first.size() == limit) {
            break;
        }
        first.push_back(scoredTopic.topic);
    }
    return first;
}

bool isAboutThisMac(std::string_view question, System system) {
    // Whatever the interface's language is, people ask in theirs.
    constexpr std::array<std::string_view, 19> phrases{
        "cuanto",   "cuantos",      "mi mac",    "mi disco",   "este mac", "ocupa mas", "que ocupa",
        "tengo",    "mis carpetas", "en mi",     "how much",   "how many", "my mac",    "my disk",
        "this mac", "taking up",    "do i have", "my folders", "on my"};
    // These begin like the phrases, and no disk has to be measured for them.
    constexpr std::array<std::string_view, 12> others{
        "tengo que",     "tengo miedo",           "cuanto tiempo",  "cuanto tarda",
        "cuanto dura",   "cuanto puedo",          "cuanto cuesta",  "cuantos dias",
        "how many days", "how much does it cost", "how much can i", "do i have to"};
    std::string asked = normalize(question);
    const bool isLinux = system == System::linux;
    if (isLinux) {
        asked = fmt::format(" {} ", fmt::join(HelpQuestion::wordsIn(asked), " "));
    }
    for (const std::string_view other : others) {
        if (const std::size_t at = asked.find(fmt::format(" {} ", other));
            isLinux && at != std::string::npos) {
            asked.erase(at + 1, other.size());
        }
    }
    return std::ranges::any_of(phrases, [&](std::string_view phrase) {
        return asked.find(isLinux ? fmt::format(" {} ", phrase) : std::string(phrase)) != std::string::npos;
    });
}

std::optional<HelpAnswer> directAnswer(std::string_view question, Language language, System system) {
    if (isAboutThisMac(question, system)) {
        return std::nullopt;
    }
    const HelpTopic* topic = system == System::macos ? clearTopicOnMac(question, language)
                                                     : HelpQuestion::clearTopic(question, language);
    return topic == nullptr
               ? std::nullopt
               : std::optional(HelpAnswer{.text = topic->answer, .byAI = false, .sources = {topic->id}});
}

const HelpTopic* topicAskedFor(std::string_view question, Language language, System system) {
    const Language other = language == Language::es ? Language::en : Language::es;
    // Word for word first: in the wrong language, many words are parts of others.
    for (const Language tried : {language, other}) {
        if (const HelpTopic* topic = topicNamed(question, tried, system)) {
            return topic;
        }
    }
    if (const std::optional<HelpAnswer> answer = directAnswer(question, language, system)) {
        return topicNamed(answer->sources.front(), language, system);
    }
    const std::optional<HelpAnswer> answer = directAnswer(question, other, system);
    const HelpTopic* topic = answer ? topicNamed(answer->sources.front(), other, system) : nullptr;
    if (topic == nullptr || system == System::macos) {
        return topic;
    }
    constexpr std::size_t fewestWords = 2;
    return HelpQuestion::wholeWords(question, *topic, other) >= fewestWords ? topic : nullptr;
}

} // namespace lumo::HelpCatalog
