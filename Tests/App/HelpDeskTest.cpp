#include "LumoCore/Basics/Language.h"
#include "LumoCore/Basics/Words.h"
#include "TarvoApp/App/QtText.h"
#include "Tests/App/AppStory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <condition_variable>
#include <mutex>
#include <utility>

using namespace tarvo;
using namespace tarvo::testing;
using ::testing::Contains;

namespace {

/// Never answers a question with "zzhang" in it; to others it says what it is.
class SlowModel final : public lumo::LanguageModel {
  public:
    explicit SlowModel(std::atomic<int>& asked) : asked_(asked) {}

    std::optional<std::string> unavailableReason(lumo::Language) override { return std::nullopt; }

    lumo::Result<std::string> respond(const lumo::ModelRequest& request,
                                      const std::stop_token& stop) override {
        ++asked_;
        if (request.prompt.find("zzhang") == std::string::npos) {
            return std::string("The model's words.");
        }
        std::mutex mutex;
        std::unique_lock lock(mutex);
        std::condition_variable_any bell;
        bell.wait(lock, stop, [] { return false; });
        return lumo::failure("stopped");
    }

  private:
    std::atomic<int>& asked_;
};

class HelpDeskTest : public ::testing::Test {
  protected:
    HelpDeskTest() {
        story.services.model = [this](const Preferences&) { return std::make_unique<SlowModel>(asked); };
    }

    HelpDesk& ask(const QString& question) {
        story.app().help()->setHelpQuestion(question);
        story.app().help()->ask();
        return *story.app().help();
    }

    std::vector<std::string> shownTopics() {
        std::vector<std::string> ids;
        for (const QVariant& topic : story.app().help()->topics()) {
            ids.push_back(bytesOf(topic.toMap()["id"].toString()));
        }
        return ids;
    }

    std::atomic<int> asked = 0;
    AppStory story;
};

} // namespace

TEST_F(HelpDeskTest, AnswersFromTheHelpInEitherLanguageWithoutAskingTheModel) {
    for (const auto* question : {"¿Tiene atajos de teclado?", "Does it have keyboard shortcuts?"}) {
        HelpDesk& help = ask(QString::fromUtf8(question));
        ASSERT_TRUE(story.waitUntil([&] { return !help.isBusy(); }));
        ASSERT_EQ(help.helpSources().size(), 1) << question;
        EXPECT_EQ(bytesOf(help.helpSources()[0].toMap()["id"].toString()), "atajos") << question;
        EXPECT_FALSE(help.isByAI());
    }
    EXPECT_EQ(asked, 0);
    ask("   ");
    EXPECT_FALSE(story.app().help()->isBusy());
}

TEST_F(HelpDeskTest, ALaterQuestionEndsTheOneBeforeAndSoDoesClosing) {
    ask("zzxq zzhang");
    ASSERT_TRUE(story.waitUntil([&] { return asked == 1; }));
    HelpDesk& help = ask("zzxq wvvk");
    ASSERT_TRUE(story.waitUntil([&] { return !help.isBusy(); }));
    EXPECT_EQ(bytesOf(help.helpAnswer()), "The model's words.");
    EXPECT_TRUE(help.isByAI());
    ask("zzxq zzhang");
    help.forget();
    EXPECT_FALSE(help.isBusy());
    ask("zzxq zzhang");
    ASSERT_TRUE(story.waitUntil([&] { return asked >= 3; }));
    story.quit();
}

TEST_F(HelpDeskTest, ASearchNarrowsWhileItIsTypedAndATopicThatIsWantedWidensItAgain) {
    HelpDesk& help = *story.app().help();
    const std::size_t all = shownTopics().size();
    help.setHelpSearch("dock");
    EXPECT_THAT(shownTopics(), Contains("docker"));
    EXPECT_LT(shownTopics().size(), all);
    // No text has this ending.
    help.setHelpSearch(shown(lumo::Words{"duplicadxx", "duplicatxx"}.in()));
    EXPECT_THAT(shownTopics(), Contains("duplicados"));
    help.setHelpSearch("zzxq");
    EXPECT_TRUE(shownTopics().empty());
    help.show("apartado");
    EXPECT_EQ(shownTopics().size(), all);
    EXPECT_EQ(help.expandedHelp(), "apartado");
}
