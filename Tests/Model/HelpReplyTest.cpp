#include "TarvoModel/Flows/HelpReply.h"
#include "Tests/support/TempHome.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using lumo::HelpTopic;
using lumo::Language;
using tarvo::HelpReply;
using namespace testing;

namespace {

/// Writes the same whatever it is asked.
class Writer final : public lumo::LanguageModel {
  public:
    std::optional<std::string> unavailableReason(Language) override { return std::nullopt; }
    lumo::Result<std::string> respond(const lumo::ModelRequest&, const std::stop_token&) override {
        return std::string("Docker: 12,3 GB.");
    }
};

struct Asked {
    int models = 0;
    tarvo::HelpSources sources{.facts = [] { return std::vector<std::string>{"Docker: 12,3 GB."}; },
                               .model =
                                   [this] {
                                       ++models;
                                       return std::make_unique<Writer>();
                                   }};

    HelpReply ask(const std::string& question) {
        return tarvo::answerTo(question, sources, {}, Language::es);
    }
};

} // namespace

TEST(HelpReply, ComesFromTheHelpInEitherLanguageWithoutAModel) {
    // Each face tried the languages by itself, and one of them did not.
    for (const auto& [question, answer] :
         {std::pair<const char*, Language>{"¿Tiene atajos de teclado?", Language::es},
          {"Does it have keyboard shortcuts?", Language::en},
          {"¿Mis archivos o datos salen de mi equipo?", Language::es},
          {"How much can I trust the AI's explanations?", Language::en}}) {
        Asked asked;
        const HelpReply reply = asked.ask(question);
        ASSERT_NE(reply.topic, nullptr) << question;
        EXPECT_EQ(reply.topic, lumo::HelpCatalog::topicNamed(reply.topic->id, answer)) << question;
        EXPECT_EQ(reply.answer.text, reply.topic->answer);
        EXPECT_THAT(reply.answer.sources, ElementsAre(reply.topic->id));
        EXPECT_THAT(reply.related, ElementsAre(reply.topic));
        EXPECT_EQ(asked.models, 0);
        EXPECT_TRUE(tarvo::isInHelp(question, Language::es));
    }
}

TEST(HelpReply, ComesFromTheModelOrNamesTheClosestTopics) {
    Asked asked;
    const HelpReply reply = asked.ask("¿Cuánto ocupa Docker?");
    EXPECT_EQ(reply.answer.text, "Docker: 12,3 GB.");
    EXPECT_TRUE(reply.answer.byAI && reply.isAboutThisDisk);
    EXPECT_EQ(reply.topic, nullptr);
    EXPECT_EQ(reply.related.front()->id, "docker");
    asked.sources.model = [] { return nullptr; };
    const HelpReply alone = asked.ask("¿Cuánto ocupa Docker?");
    EXPECT_FALSE(alone.answer.byAI);
    EXPECT_EQ(alone.answer, tarvo::answerTo("¿Cuánto ocupa Docker?", {}, {}, Language::es).answer);
    EXPECT_EQ(alone.related.size(), alone.answer.sources.size());
}
