#include "LumoCore/Basics/Text.h"
#include "LumoCore/Explaining/HelpAssistant.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace lumo;
using namespace testing;

TEST(HelpCatalog, HasTheSameTopicsInBothLanguagesSaysWhatAModelCanRepeatAndHasPlainKeywords) {
    for (const Language language : {Language::es, Language::en}) {
        for (std::size_t index = 0; index < HelpCatalog::topics(language).size(); ++index) {
            const HelpTopic& topic = HelpCatalog::topics(language)[index];
            EXPECT_EQ(topic.id, HelpCatalog::topics(Language::es).at(index).id);
            EXPECT_GE(characterCount(topic.answer), 170U) << topic.id;
            EXPECT_TRUE(HelpGuard::acceptable(topic.answer, topic.answer)) << topic.answer;
            // One list was agreed longer than the others.
            const std::size_t most = topic.id == "colores" && language == Language::en ? 13 : 12;
            EXPECT_GE(topic.keywords.size(), 6U) << topic.id;
            EXPECT_LE(topic.keywords.size(), most) << topic.id;
            for (const std::string& keyword : topic.keywords) {
                EXPECT_EQ(HelpCatalog::normalize(keyword), keyword) << topic.id;
            }
        }
    }
}

TEST(HelpCatalog, AnswersEachOfItsOwnQuestionsUnlessTheySoundLikeOnesAboutThisDisk) {
    for (const Language language : {Language::es, Language::en}) {
        for (const HelpTopic& topic : HelpCatalog::topics(language)) {
            EXPECT_EQ(HelpCatalog::relevant(topic.question, 1, language).front(), &topic) << topic.question;
            EXPECT_EQ(HelpCatalog::topicNamed(topic.question, language), &topic);
            EXPECT_EQ(HelpCatalog::directAnswer(topic.question, language).has_value(),
                      !HelpCatalog::isAboutThisMac(topic.question))
                << topic.question;
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
        const auto scored = HelpCatalog::scored(question, language);
        ASSERT_FALSE(scored.empty()) << question;
        EXPECT_EQ(scored.front().topic->id, best) << question;
        EXPECT_EQ(scored.front().score, score) << question;
    }
    // Equal scores keep the order of the topics, which lie behind each other.
    EXPECT_TRUE(
        std::ranges::is_sorted(HelpCatalog::scored("la carpeta del disco", Language::es), {},
                               [](const auto& scored) { return std::pair(-scored.score, scored.topic); }));
    for (const char* nothing : {"", "y de la", "¿? — …", "xyzzy"}) {
        EXPECT_THAT(HelpCatalog::scored(nothing, Language::es), IsEmpty()) << nothing;
    }
    const auto equal = HelpCatalog::scored("verde verdes", Language::es);
    ASSERT_EQ(equal.size(), 1U);
    EXPECT_EQ(equal.front().score, 4); // The plural is a stem of its own, which stands nowhere.
    EXPECT_FALSE(HelpCatalog::directAnswer("docker", Language::es)); // 4 of the 6 that it takes.
}

TEST(HelpCatalog, LeavesQuestionsAboutThisDiskToThoseWhoCanMeasureInEitherLanguage) {
    for (const char* about : {"¿CUÁNTO ocupa Docker?", "¿tengo cachés?", "How  many... how many?",
                              "on my disk", "¿Qué toca en mis proyectos?"}) {
        EXPECT_TRUE(HelpCatalog::isAboutThisMac(about)) << about;
        EXPECT_FALSE(HelpCatalog::directAnswer(about, Language::es)) << about;
    }
    for (const char* general : {"how-much", "¿Cómo deshago una limpieza?", "", "how, much"}) {
        EXPECT_EQ(HelpCatalog::isAboutThisMac(general), std::string(general) == "how-much") << general;
    }
}
