#include "LumoCore/Basics/Text.h"
#include "LumoCore/Explaining/HelpAssistant.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace lumo;
using namespace testing;

namespace {

constexpr Language languages[] = {Language::es, Language::en};
constexpr System systems[] = {System::macos, System::linux};

} // namespace

TEST(HelpCatalog, HasTheSameTopicsEverywhereSaysWhatAModelCanRepeatAndHasPlainKeywords) {
    for (const Language language : languages) {
        for (const System system : systems) {
            const auto& topics = HelpCatalog::topics(language, system);
            const auto& documented = HelpCatalog::topics(Language::es, System::macos);
            ASSERT_EQ(documented.size(), 31U);
            // The windows of cleanups and of growth had no topic.
            ASSERT_EQ(topics.size(), system == System::linux ? 33U : 31U);
            for (std::size_t index = 0; index < topics.size(); ++index) {
                const HelpTopic& topic = topics[index];
                EXPECT_EQ(topic.id, index < documented.size() ? documented[index].id
                                    : index == 31             ? "historial"
                                                              : "crecimiento");
                EXPECT_GE(characterCount(topic.answer), 170U) << topic.id;
                EXPECT_TRUE(HelpGuard::acceptable(topic.answer, topic.answer)) << topic.answer;
                // One list was agreed longer than the others.
                const std::size_t most = topic.id == "colores" && language == Language::en ? 13 : 12;
                EXPECT_GE(topic.keywords.size(), 6U) << topic.id;
                EXPECT_TRUE(system == System::linux || topic.keywords.size() <= most) << topic.id;
                for (const std::string& keyword : topic.keywords) {
                    EXPECT_EQ(HelpCatalog::normalize(keyword), keyword) << topic.id;
                }
            }
        }
    }
}

TEST(HelpCatalog, SpeaksOfTheOtherSystemOnLinuxOnlyWhereItSaysThatItHasNone) {
    // Settings of a Mac, its menu bar and its keys were explained to people who have none of them.
    const std::vector<std::string> mentioned{"icloud", "purgable", "requisitos"};
    for (const Language language : languages) {
        for (const HelpTopic& topic : HelpCatalog::topics(language, System::linux)) {
            for (const char* word : {"Mac", "macOS", "Finder", "Apple", "iCloud", "Time Machine", "⌘", "⇧",
                                     "menu bar", "barra de menús", "Library", "Linux no", "En un Mac"}) {
                const bool isSaid = (topic.question + topic.answer).find(word) != std::string::npos;
                EXPECT_TRUE(!isSaid || std::ranges::count(mentioned, topic.id) > 0)
                    << topic.id << " " << word;
            }
        }
    }
    EXPECT_EQ(HelpCatalog::topicNamed("barra", Language::en, System::macos)->question,
              "What is the menu bar icon for?");
}

TEST(HelpCatalog, AnswersEachOfItsOwnQuestionsUnlessTheySoundLikeOnesAboutThisDisk) {
    constexpr System system = System::macos;
    for (const Language language : languages) {
        for (const HelpTopic& topic : HelpCatalog::topics(language, system)) {
            EXPECT_EQ(HelpCatalog::relevant(topic.question, 1, language, system).front(), &topic)
                << topic.question;
            EXPECT_EQ(HelpCatalog::topicNamed(topic.question, language, system), &topic);
            EXPECT_EQ(HelpCatalog::directAnswer(topic.question, language, system).has_value(),
                      !HelpCatalog::isAboutThisMac(topic.question, system))
                << topic.question;
        }
        for (const HelpTopic& topic : HelpCatalog::topics(language, System::linux)) {
            EXPECT_EQ(HelpCatalog::topicAskedFor(topic.question, language, System::linux), &topic);
        }
    }
}

TEST(HelpCatalog, ScoresWordsByTheirStemsOnceEachWithTheAnswerCountingLess) {
    using Case = std::tuple<const char*, Language, const char*, int>;
    for (const auto& [question, language, best, score] :
         {Case{"Docker, DOCKER y docker", Language::es, "docker", 4}, // In question and answer, once.
          {"duplicadas", Language::es, "duplicados", 3},              // "duplicad" is in the keywords alone.
          {"Códex", Language::es, "agente", 4},
          {"gatekeeper hotkey", Language::en, "atajos", 3},
          {"pendrive", Language::es, "otro-disco", 3}}) {
        const auto scored = HelpCatalog::scored(question, language, System::macos);
        ASSERT_FALSE(scored.empty()) << question;
        EXPECT_EQ(scored.front().topic->id, best) << question;
        EXPECT_EQ(scored.front().score, score) << question;
    }
    // Equal scores keep the order of the topics, which lie behind each other.
    EXPECT_TRUE(
        std::ranges::is_sorted(HelpCatalog::scored("la carpeta del disco", Language::es, System::macos), {},
                               [](const auto& scored) { return std::pair(-scored.score, scored.topic); }));
    for (const char* nothing : {"", "y de la", "¿? — …", "xyzzy"}) {
        EXPECT_THAT(HelpCatalog::scored(nothing, Language::es, System::macos), IsEmpty()) << nothing;
    }
    const auto equal = HelpCatalog::scored("verde verdes", Language::es, System::macos);
    ASSERT_EQ(equal.size(), 1U);
    EXPECT_EQ(equal.front().score, 4); // The plural is a stem of its own, which stands nowhere.
    EXPECT_FALSE(
        HelpCatalog::directAnswer("docker", Language::es, System::macos)); // 4 of the 6 that it takes.
}

TEST(HelpCatalog, LeavesQuestionsAboutThisDiskToThoseWhoCanMeasureInEitherLanguage) {
    for (const char* about : {"¿CUÁNTO ocupa Docker?", "¿tengo cachés?", "How  many... how many?",
                              "on my disk", "¿Qué toca en mis proyectos?"}) {
        EXPECT_TRUE(HelpCatalog::isAboutThisMac(about, System::macos)) << about;
        EXPECT_FALSE(HelpCatalog::directAnswer(about, Language::es, System::macos)) << about;
    }
    for (const char* general : {"how-much", "¿Cómo deshago una limpieza?", "", "how, much"}) {
        EXPECT_EQ(HelpCatalog::isAboutThisMac(general, System::macos), std::string(general) == "how-much")
            << general;
    }
    // On Linux they were called questions about the disk for what they begin with.
    for (const auto& [question, isAbout] : {std::pair("¿tengo que ser administrador?", false),
                                            {"¿cuánto tiempo se guarda?", false},
                                            {"en minutos", false},
                                            {"¿tengo cachés?", true},
                                            {"how much does it cost", false},
                                            {"do I have to wait", false},
                                            {"how much is on my disk", true}}) {
        EXPECT_EQ(HelpCatalog::isAboutThisMac(question, System::linux), isAbout) << question;
    }
}
