#include "LumoCore/Basics/Language.h"
#include "TarvoApp/App/QtText.h"
#include "TarvoApp/Views/MainWindow.h"
#include "TarvoApp/Views/ReleaseNotes.h"
#include "Tests/App/AppStory.h"
#include "Tests/App/PrivateBus.h"
#include "Tests/support/TempHome.h"

#include <gtest/gtest.h>

#include <QQuickWindow>

#include <optional>
#include <thread>

using namespace tarvo;
using namespace tarvo::testing;

// A second start with a folder, or in another language, silently raised the first as it was.
TEST(OneInstance, TellsTheRunningOneWhatTheSecondStartWasAskedFor) {
    const PrivateBus bus;
    OneInstance first(bus.connection("first"));
    std::optional<StartWish> heard;
    QObject::connect(&first, &OneInstance::activated, [&](const StartWish& wish) { heard = wish; });
    EXPECT_TRUE(first.claim({}));
    const std::string folder = "/home/u/caf\xE9"; // Which is no text.
    AppStory story;
    bool isFirst = true;
    std::jthread second([&] {
        OneInstance other(bus.connection("second"));
        isFirst = other.claim({.language = "en", .folder = folder});
    });
    ASSERT_TRUE(story.waitUntil([&] { return heard.has_value(); }));
    second.join();
    EXPECT_FALSE(isFirst);
    EXPECT_EQ(heard->language, "en");
    EXPECT_EQ(heard->folder, folder);
}

// HOME=other tarvo-app raised the window of the home that was open, and looked at that.
TEST(OneInstance, EachHomeHasItsOwnHoweverItIsSpelled) {
    const PrivateBus bus;
    const TempHome home;
    const TempHome other;
    OneInstance usual(bus.connection("usual"));
    EXPECT_TRUE(usual.claim({}));
    OneInstance first(bus.connection("first"), home.path());
    EXPECT_TRUE(first.claim({}));
    OneInstance second(bus.connection("second"), other.path());
    EXPECT_TRUE(second.claim({}));
    other.link("link", home.path());
    bool isFirst = true;
    std::jthread third([&] { isFirst = OneInstance(bus.connection("third"), other.path("link")).claim({}); });
    AppStory story;
    EXPECT_TRUE(story.waitUntil([&] { return !isFirst; }));
}

TEST(OneInstance, TheRunningWindowShowsTheFolderAndSaysThatItsLanguageStays) {
    qputenv("QT_QUICK_BACKEND", "software");
    AppStory story;
    story.addCache(2'000'000);
    story.home.file("Videos/film", 3'000'000);
    AppModel& app = story.app();
    app.settings()->setWelcomeSeen(true);
    app.settings()->setSeenNews(ReleaseNotes::version());
    app.finishWelcome();
    // At login the full window opened.
    MainWindow windows(app, MainWindow::Begin::inPanel);
    EXPECT_FALSE(windows.window()->isVisible());
    ASSERT_TRUE(
        story.waitUntil([&] { return app.scanning()->hasFullReport() && !app.activity()->isBusy(); }));
    const QString own = windows.desktop().language();
    windows.answer({.language = own, .folder = story.home.path("Videos")});
    EXPECT_TRUE(story.waitUntil([&] { return app.map()->depth() == 1; }));
    EXPECT_EQ(app.activity()->notice(), "");
    EXPECT_TRUE(windows.window()->isVisible());
    // A large window came back as a small one.
    windows.window()->setWindowStates(Qt::WindowMaximized | Qt::WindowMinimized);
    windows.answer({.language = own, .folder = {}});
    EXPECT_EQ(windows.window()->visibility(), QWindow::Maximized);
    // The way to the second folder led over the first.
    windows.answer({.language = own, .folder = story.home.path(".npm")});
    EXPECT_TRUE(story.waitUntil([&] { return app.map()->zoomTitles() == QStringList{".npm"}; }));
    windows.answer({.language = own == "es" ? "en" : "es", .folder = {}});
    EXPECT_NE(app.activity()->notice(), "");
}
