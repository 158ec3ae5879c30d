#include "LumoCore/Basics/Language.h"
#include "LumoCore/Basics/Words.h"
#include "TarvoApp/App/QtText.h"
#include "TarvoApp/Views/MainWindow.h"
#include "TarvoApp/Views/ReleaseNotes.h"
#include "TarvoApp/Views/WindowPlace.h"
#include "Tests/App/AppStory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QAccessible>
#include <QFile>
#include <QImage>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QTest>

using namespace tarvo;
using namespace tarvo::testing;
using ::testing::IsEmpty;
using Side = MainWindow::Side;

namespace {

std::vector<std::string> complaints;

void keepComplaints(QtMsgType type, const QMessageLogContext&, const QString& message) {
    if (type != QtDebugMsg && type != QtInfoMsg) {
        complaints.push_back(bytesOf(message));
    }
}

QAccessibleInterface* namedIn(QAccessibleInterface* item, const QString& name) {
    if (item == nullptr || item->state().invisible) {
        return nullptr;
    }
    if (item->text(QAccessible::Name) == name && item->role() != QAccessible::StaticText) {
        return item;
    }
    for (int child = 0; child < item->childCount(); ++child) {
        if (QAccessibleInterface* const found = namedIn(item->child(child), name)) {
            return found;
        }
    }
    return nullptr;
}

/// The kinds of the things that can be reached with the keyboard and have no name.
void findNameless(QAccessibleInterface* item, std::vector<std::string>& kinds) {
    if (item == nullptr || item->state().invisible) {
        return;
    }
    if (item->state().focusable && item->text(QAccessible::Name).isEmpty()) {
        kinds.emplace_back(item->object()->metaObject()->className());
    }
    for (int child = 0; child < item->childCount(); ++child) {
        findNameless(item->child(child), kinds);
    }
}

void findPictures(QQuickItem& item, std::vector<QQuickItem*>& pictures) {
    if (item.inherits("QQuickImage")) {
        pictures.push_back(&item);
    }
    for (QQuickItem* const child : item.childItems()) {
        findPictures(*child, pictures);
    }
}

} // namespace

/// The windows beside the main one, on a home of their own.
class SideWindowsTest : public ::testing::Test {
  protected:
    SideWindowsTest() {
        qputenv("QT_QUICK_BACKEND", "software");
        QAccessible::setActive(true);
        complaints.clear();
        previous_ = qInstallMessageHandler(keepComplaints);
        story.app().settings()->setWelcomeSeen(true);
        story.app().finishWelcome();
        story.app().settings()->setSeenNews(ReleaseNotes::version());
    }
    ~SideWindowsTest() override {
        close();
        qInstallMessageHandler(previous_);
        EXPECT_THAT(complaints, IsEmpty());
    }

    MainWindow& windows() {
        if (!windows_) {
            windows_ = std::make_unique<MainWindow>(story.app());
            EXPECT_TRUE(story.waitUntil(
                [&] { return story.app().scanning()->hasReport() && !story.app().activity()->isBusy(); }));
            EXPECT_TRUE(QTest::qWaitForWindowActive(windows_->window()));
        }
        return *windows_;
    }
    void close() { windows_.reset(); }

    QQuickWindow& open(Side side) {
        QQuickWindow* const window = windows().open(side);
        // A window is active before it has told its items.
        EXPECT_TRUE(story.waitUntil([&] { return window->activeFocusItem() != nullptr; }));
        return *window;
    }

    static void click(QQuickWindow& window, std::string_view es, std::string_view en) {
        QTest::qWait(0);
        QAccessibleInterface* const item =
            namedIn(QAccessible::queryAccessibleInterface(&window), shown(lumo::Words{es, en}.in()));
        ASSERT_NE(item, nullptr) << es;
        QTest::mouseClick(&window, Qt::LeftButton, {}, window.mapFromGlobal(item->rect().center()));
    }

    AppStory story;

  private:
    std::unique_ptr<MainWindow> windows_;
    QtMessageHandler previous_ = nullptr;
};

TEST_F(SideWindowsTest, WhatIsChangedInTheSettingsIsThereAfterARestart) {
    QQuickWindow& window = open(Side::settings);
    click(window, "Oscuro", "Dark");
    click(window, "Limpieza", "Cleaning");
    click(window, "Limpieza semanal", "Weekly cleanup");
    click(window, "Avisos", "Alerts");
    click(window, "Poco espacio", "Low space");
    QTest::keyClick(&window, Qt::Key_Up);
    EXPECT_TRUE(windows().desktop().isDark());
    windows().desktop().protectFolder(QUrl::fromEncoded("file:///srv/caf%E9/"));
    close();
    story.quit();
    const Settings& settings = *story.app().settings();
    EXPECT_EQ(bytesOf(settings.appearance()), "dark");
    EXPECT_TRUE(settings.autoCleanWeekly());
    EXPECT_EQ(settings.lowSpaceGB(), 11);
    EXPECT_EQ(settings.protectedFolders().size(), 1);
    EXPECT_EQ(wordsOf(*settings.preferences().json(preference::protectedFolders)), "/srv/caf\\xE9");
}

TEST_F(SideWindowsTest, ThePagesOfTheSettingsAreTurnedWithTheKeyboard) {
    QQuickWindow& window = open(Side::settings);
    EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
    const auto pageAfter = [&](Qt::Key key, Qt::KeyboardModifiers modifiers) {
        QTest::keyClick(&window, key, modifiers);
        return window.property("tab").toInt();
    };
    EXPECT_EQ(pageAfter(Qt::Key_Tab, Qt::ControlModifier), 1);
    EXPECT_EQ(pageAfter(Qt::Key_PageDown, Qt::ControlModifier), 2);
    EXPECT_EQ(pageAfter(Qt::Key_PageUp, Qt::ControlModifier), 1);
    EXPECT_EQ(pageAfter(Qt::Key_Backtab, Qt::ControlModifier | Qt::ShiftModifier), 0);
    EXPECT_EQ(pageAfter(Qt::Key_PageUp, Qt::ControlModifier), 4) << "from the first to the last";
}

// What had the keys before could be disabled by then, and no key did anything.
TEST_F(SideWindowsTest, TheKeysAreSeenEachTimeAWindowOpens) {
    for (const Side side : {Side::settings, Side::preview}) {
        for (int time = 0; time < 2; ++time) {
            QQuickWindow& window = open(side);
            EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
            EXPECT_TRUE(story.waitUntil([&] {
                return window.activeFocusItem()->property("visualFocus").toBool();
            })) << static_cast<int>(side)
                << " " << time;
            QTest::keyClick(&window, Qt::Key_Tab);
            QTest::keyClick(&window, Qt::Key_Escape);
            EXPECT_FALSE(window.isVisible());
        }
    }
    QQuickWindow& window = open(Side::settings);
    click(window, "Limpieza", "Cleaning");
    windows().desktop().protectFolder(QUrl("file:///srv/kept"));
    click(window, "Dejar de proteger /srv/kept", "Stop protecting /srv/kept");
    EXPECT_TRUE(window.activeFocusItem()->property("visualFocus").toBool()) << "the button went";
}

TEST_F(SideWindowsTest, WhatWasDoneElsewhereIsNotToldInASideWindow) {
    // What the main window had said stood for good in the footers, in the place of what is chosen.
    windows().window()->requestActivate();
    EXPECT_TRUE(QTest::qWaitForWindowActive(windows().window()));
    story.app().activity()->say("done elsewhere");
    QQuickWindow& window = open(Side::photos);
    EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
    EXPECT_EQ(bytesOf(window.property("told").toString()), "");
    story.app().activity()->say("done here");
    EXPECT_EQ(bytesOf(window.property("told").toString()), "done here");
    window.close();
    EXPECT_TRUE(story.waitUntil([&] { return window.property("told").toString().isEmpty(); }));
}

TEST(WindowPlace, IsOverTheMiddleOfAnotherWindowAndOnItsScreen) {
    // Side windows opened with their lower edge beyond the screen's.
    const QRect screen(0, 0, 1280, 800);
    const QRect main(50, 40, 1180, 740);
    EXPECT_EQ(WindowPlace::over(main, {640, 560}, screen, {}), QRect(320, 130, 640, 560));
    EXPECT_EQ(WindowPlace::over(main, {640, 560}, screen, {{320, 130}}), QRect(352, 162, 640, 560));
    EXPECT_TRUE(screen.contains(WindowPlace::over({900, 500, 800, 600}, {900, 620}, screen, {})));
    EXPECT_TRUE(screen.contains(WindowPlace::over(main, {1400, 900}, screen, {})));
}

// F1 was the main window's alone.
TEST_F(SideWindowsTest, TheHelpComesFromTheSettingsToo) {
    QQuickWindow& settings = open(Side::settings);
    EXPECT_TRUE(QTest::qWaitForWindowActive(&settings));
    QTest::keyClick(&settings, Qt::Key_F1);
    const QObject* const help = windows().window()->findChild<QObject*>(QStringLiteral("help"));
    const auto* const shown = qobject_cast<QQuickWindow*>(help->property("item").value<QObject*>());
    EXPECT_TRUE(shown != nullptr && shown->isVisible());
}

// Ctrl+W did nothing anywhere.
TEST_F(SideWindowsTest, AWindowBesideTheMainOneClosesByTheKeysThatCloseAWindow) {
    for (const Side side :
         {Side::settings, Side::help, Side::preview, Side::history, Side::growth, Side::photos}) {
        QQuickWindow& window = open(side);
        EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
        QTest::keyClick(&window, Qt::Key_W, Qt::ControlModifier);
        EXPECT_FALSE(window.isVisible()) << static_cast<int>(side);
    }
    QTest::keyClick(windows().window(), Qt::Key_W, Qt::ControlModifier);
    EXPECT_TRUE(windows().window()->isVisible());
}

// From what was searched for in the help no arrow led to what was found.
TEST_F(SideWindowsTest, TheHelpIsSearchedAndReadByTheKeyboard) {
    QQuickWindow& window = open(Side::help);
    EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
    HelpDesk& help = *story.app().help();
    const QQuickItem* const search = window.activeFocusItem();
    for (const char letter : {'d', 'o', 'c', 'k', 'e', 'r'}) {
        QTest::keyClick(&window, letter);
    }
    QTest::keyClick(&window, Qt::Key_Down);
    ASSERT_NE(window.activeFocusItem(), search);
    const QVariantList topics = help.topics();
    ASSERT_GT(topics.size(), 1);
    QTest::keyClick(&window, Qt::Key_Down);
    QTest::keyClick(&window, Qt::Key_Return);
    EXPECT_EQ(help.expandedHelp(), topics[1].toMap()["id"].toString());
    QTest::keyClick(&window, Qt::Key_Home);
    QTest::keyClick(&window, Qt::Key_Up);
    EXPECT_EQ(window.activeFocusItem(), search);
}

TEST_F(SideWindowsTest, EveryWindowOpensInBothLanguagesAndAppearancesAndClosesWithEscape) {
    for (const Side side :
         {Side::settings, Side::help, Side::news, Side::preview, Side::history, Side::growth}) {
        QQuickWindow& window = open(side);
        for (const auto* language : {"es", "en"}) {
            qmlEngine(&window)->setUiLanguage(language);
            for (const auto* appearance : {"light", "dark"}) {
                windows().desktop().setAppearance(appearance);
                story.app().settings()->setTextScale(1.3);
                for (int tab = 0; tab < (side == Side::settings ? 5 : 1); ++tab) {
                    window.setProperty("tab", tab);
                    EXPECT_FALSE(window.grabWindow().isNull());
                    std::vector<std::string> nameless;
                    findNameless(QAccessible::queryAccessibleInterface(&window), nameless);
                    EXPECT_THAT(nameless, IsEmpty()) << tab;
                }
            }
        }
        QTest::keyClick(&window, Qt::Key_Escape);
        EXPECT_FALSE(window.isVisible()) << static_cast<int>(side);
    }
}

// While pages were turned, each tile was made anew for each page, and one frame in eight was late.
TEST_F(SideWindowsTest, PhotosAreReachedWithTheKeyboardInTheTilesThatAreThere) {
    for (int number = 0; number < 80; ++number) {
        QImage image(4, 3, QImage::Format_RGB32);
        image.fill(QColor::fromHsv(number * 4, 200, 200));
        story.home.folder("Pictures");
        ASSERT_TRUE(image.save(
            QFile::decodeName(story.home.path("Pictures/" + std::to_string(number) + ".png").c_str())));
    }
    QQuickWindow& window = open(Side::photos);
    PhotosDesk& photos = *story.app().photos();
    ASSERT_TRUE(
        story.waitUntil([&] { return photos.busyText().isEmpty() && photos.photos()->count() == 80; }));
    const auto all = [&] {
        std::vector<QQuickItem*> pictures;
        findPictures(*window.contentItem(), pictures);
        return pictures;
    };
    const auto showing = [&] {
        return std::ranges::count_if(all(), [](const QQuickItem* picture) {
            return picture->isVisible() && !picture->property("source").toString().isEmpty() &&
                   picture->implicitWidth() == 4;
        });
    };
    const auto press = [&](Qt::Key key) {
        QKeyEvent event(QEvent::KeyPress, key, {});
        QCoreApplication::sendEvent(&window, &event);
    };
    ASSERT_TRUE(story.waitUntil([&] { return showing() > 4; }));
    const std::vector<QQuickItem*> before = all();
    for (const Qt::Key key : {Qt::Key_End, Qt::Key_Home, Qt::Key_PageDown, Qt::Key_PageDown, Qt::Key_End}) {
        press(key);
    }
    EXPECT_EQ(showing(), 0);
    EXPECT_EQ(photos.places()->current(), 79);
    ASSERT_TRUE(story.waitUntil([&] { return showing() > 4; }));
    EXPECT_EQ(all(), before);
    for (const Qt::Key key : {Qt::Key_Right, Qt::Key_Left, Qt::Key_Up, Qt::Key_Down, Qt::Key_Space}) {
        press(key);
    }
    EXPECT_EQ(photos.places()->current(), 78);
    EXPECT_TRUE(photos.photos()->read(78, PhotoList::chosenRole).toBool());
    // Nothing was asked by the key that asks it in the explorer.
    press(Qt::Key_Delete);
    EXPECT_TRUE(story.waitUntil([&] { return story.app().question()->isOpenInPhotos(); }));
    story.app().question()->cancel();
    std::vector<std::string> nameless;
    findNameless(QAccessible::queryAccessibleInterface(&window), nameless);
    EXPECT_THAT(nameless, IsEmpty());
}

TEST_F(SideWindowsTest, OneThingOfACleanupIsPutBackFromTheHistory) {
    // Of what a cleanup had set aside only all of it could go back.
    story.addCache(2'000'000);
    story.addOwn(1'000'000);
    AppModel& app = story.app();
    (void)windows();
    app.ticked()->toggle(AppStory::ownKey);
    app.cleaning()->requestClean();
    app.question()->accept();
    ASSERT_TRUE(story.waitUntilIdle());
    ASSERT_FALSE(story.hasOwn());
    QQuickWindow& window = open(Side::history);
    ASSERT_TRUE(story.waitUntil([&] { return !app.history()->isBusy(); }));
    ASSERT_EQ(app.history()->cleanups().size(), 1);
    EXPECT_EQ(bytesOf(app.history()->lines()[2].toMap()["place"].toString()), "~/.cache/whisper/model");
    click(window, "Devolver: ~/.cache/whisper/model", "Put Back: ~/.cache/whisper/model");
    EXPECT_TRUE(app.activity()->isBusy());
    ASSERT_TRUE(story.waitUntil([&] { return !app.activity()->isBusy() && !app.history()->isBusy(); }));
    EXPECT_TRUE(story.hasOwn());
    EXPECT_FALSE(story.hasCache());
    const QVariantMap piece = app.history()->lines()[2].toMap();
    EXPECT_EQ(bytesOf(piece["key"].toString()), "") << "cannot go back twice";
    EXPECT_EQ(bytesOf(piece["text"].toString()), (lumo::Words{"devuelto", "put back"}.in()));
}

TEST_F(SideWindowsTest, ALineOfGrowthIsChosenWithTheKeyboardAndFollowsTheScans) {
    // Nothing showed more than what grew since yesterday.
    AppModel& app = story.app();
    QQuickWindow& window = open(Side::growth);
    ASSERT_TRUE(story.waitUntil([&] { return !app.growth()->isBusy(); }));
    EXPECT_NE(bytesOf(app.growth()->emptyText()), "") << "there is one scan";
    story.addCache(2'000'000);
    story.pass(std::chrono::hours(24));
    app.scanning()->scan();
    ASSERT_TRUE(story.waitUntil([&] { return !app.activity()->isBusy() && !app.growth()->isBusy(); }));
    story.addCache(301'000'000);
    story.pass(std::chrono::hours(24));
    app.scanning()->scan();
    ASSERT_TRUE(story.waitUntil([&] {
        return !app.activity()->isBusy() && !app.growth()->isBusy() && app.growth()->lines().size() == 2;
    }));
    EXPECT_EQ(idOf(app.growth()->lines()[1].toMap()["key"].toString()), AppStory::cacheKey);
    EXPECT_EQ(app.growth()->chosen(), 1);
    QTest::keyClick(&window, Qt::Key_Up);
    EXPECT_EQ(app.growth()->chosen(), 0);
    EXPECT_EQ(app.growth()->title(), shown(lumo::Words{"Espacio libre", "Free space"}.in()));
}

TEST_F(SideWindowsTest, TheHelpAnswersWhatIsTypedAndEscapeEmptiesTheSearchFirst) {
    QQuickWindow& window = open(Side::help);
    HelpDesk& help = *story.app().help();
    for (const char letter : {'d', 'o', 'c', 'k'}) {
        QTest::keyClick(&window, letter);
    }
    EXPECT_EQ(bytesOf(help.helpSearch()), "dock");
    QTest::keyClick(&window, Qt::Key_Escape);
    EXPECT_EQ(bytesOf(help.helpSearch()), "");
    EXPECT_TRUE(window.isVisible());
    click(window, "Tu pregunta", "Your question");
    for (const char letter : std::string_view("what do the colors mean")) {
        QTest::keyClick(&window, letter);
    }
    QTest::keyClick(&window, Qt::Key_Return);
    ASSERT_TRUE(story.waitUntil([&] { return !help.isBusy(); }));
    EXPECT_EQ(help.helpSources().size(), 1);
}

TEST_F(SideWindowsTest, TheCardOfACleanupGoesWithAnyKeyButThoseThatLeadToItsButtons) {
    QQuickWindow& window = *windows().window();
    for (const Qt::Key key : {Qt::Key_X, Qt::Key_Return, Qt::Key_Escape}) {
        story.app().celebrating()->celebrate({.freedBytes = 1'000'000'000});
        ASSERT_TRUE(story.waitUntil([&] {
            return story.app().celebrating()->isCelebrating() && window.activeFocusItem() != nullptr &&
                   window.activeFocusItem()->property("text") == shown(lumo::Words{"Cerrar", "Close"}.in());
        }));
        QTest::keyClick(&window, Qt::Key_Tab);
        QTest::keyClick(&window, Qt::Key_Tab, Qt::ShiftModifier);
        EXPECT_TRUE(story.app().celebrating()->isCelebrating());
        QTest::keyClick(&window, key);
        EXPECT_FALSE(story.app().celebrating()->isCelebrating());
    }
}

TEST_F(SideWindowsTest, NewsAreToldOnceAndNotToWhoIsNew) {
    Settings& settings = *story.app().settings();
    ReleaseNotes notes(story.app());
    EXPECT_FALSE(notes.takeDue());
    settings.setSeenNews("0.0.1");
    EXPECT_TRUE(notes.takeDue());
    EXPECT_FALSE(notes.takeDue());
    settings.setSeenNews("");
    settings.setWelcomeSeen(false);
    EXPECT_FALSE(notes.takeDue());
    settings.setWelcomeSeen(true);
    EXPECT_FALSE(notes.takeDue());
}
