#include "LumoCore/Basics/Words.h"
#include "TarvoApp/Views/CardPicture.h"
#include "Tests/App/WindowStory.h"

#include <QColor>
#include <QGuiApplication>
#include <QImage>
#include <QQuickWindow>

#include <algorithm>
#include <atomic>
#include <cmath>
#include <filesystem>
#include <latch>
#include <thread>

namespace fs = std::filesystem;
using namespace tarvo;
using namespace tarvo::testing;
using ::testing::IsEmpty;

namespace {

bool isOpen(const lumo::Words& title) {
    return std::ranges::any_of(QGuiApplication::topLevelWindows(), [&](const QWindow* window) {
        return window->isVisible() && bytesOf(window->title()).starts_with(title.in());
    });
}

} // namespace

// All tiles of a full map were made in one frame, and again after each look into a small folder; then they
// were kept, but told anew, all in one frame, what they stand for.
TEST_F(MainWindowAtHomeTest, TilesAreMadeAheadOfTheMapAndTheDisksStayWhileAFolderIsOpen) {
    story.addCache(2'000'000);
    story.addOwn(1'000'000);
    open();
    MapModel& map = *story.app().map();
    TileList& disk = *map.overview();
    ASSERT_TRUE(story.waitUntil([&] { return !map.wantsSpare(); }));
    const int made = disk.rowCount();
    EXPECT_GT(made, disk.count());
    std::vector<int> changes;
    const auto note = [&] { changes.push_back(disk.rowCount()); };
    QObject::connect(&disk, &TileList::rowsInserted, note);
    QObject::connect(&disk, &TileList::rowsRemoved, note);
    QObject::connect(&disk, &TileList::dataChanged, note);
    map.zoomInto(AppStory::cacheKey);
    ASSERT_TRUE(story.waitUntil([&] { return map.depth() == 1; }));
    EXPECT_EQ(map.count(), 1);
    EXPECT_EQ(named("model"), nullptr) << "a kept tile is not there for anybody";
    map.zoomOut(0);
    EXPECT_EQ(map.count(), 2);
    EXPECT_EQ(disk.rowCount(), made);
    EXPECT_THAT(changes, IsEmpty());
    // What has changed meanwhile is told when they are seen again.
    map.zoomInto(AppStory::cacheKey);
    story.app().ticked()->deselectAll();
    map.setWidth(map.width() / 2);
    EXPECT_THAT(changes, IsEmpty());
    map.zoomOut(0);
    EXPECT_FALSE(changes.empty());
    EXPECT_FALSE(named(bytesOf(map.tile(0, TileList::labelRole).toString()))->state().checked);
}

// What is in a row could only be ticked from the list, although the map showed it.
TEST_F(MainWindowAtHomeTest, ARowIsTickedFromTheFolderOnTheMapAndFromItsPreview) {
    story.addOwn(1'000'000);
    open();
    AppModel& app = story.app();
    const auto isTicked = [&] { return app.ticked()->plan().selection().contains(AppStory::ownKey); };
    ASSERT_FALSE(isTicked());
    app.map()->zoomInto(AppStory::ownKey);
    ASSERT_TRUE(story.waitUntil([&] { return app.map()->depth() == 1; }));
    const std::string row = app.ticked()->rows().front().title;
    const std::string all = lumo::Words{"Marcar «{}»", "Select “{}”"}.with(row);
    click(all);
    EXPECT_TRUE(isTicked());
    EXPECT_TRUE(named(all)->state().checked);
    const QString inside = app.map()->tile(0, TileList::keyRole).toString();
    const QVariantMap offers = app.places()->offers({inside});
    EXPECT_TRUE(offers.value("tick").toBool());
    EXPECT_EQ(bytesOf(offers.value("tickOf").toString()), row);
    app.places()->toggle(inside);
    EXPECT_FALSE(isTicked());
    app.places()->showPreview(inside);
    EXPECT_TRUE(app.places()->previewedRow().value("part").toBool());
    EXPECT_FALSE(app.places()->previewedRow().value("ticked").toBool());
    app.places()->toggle(inside);
    EXPECT_TRUE(app.places()->previewedRow().value("ticked").toBool());
    const std::string safe = lumo::Words{"Solo «Se regenera solo»", "Only “Recreates itself”"}.in();
    EXPECT_NE(named(safe), nullptr) << "what the colors mean is told in folders as well";
}

// A film on the map of the home could only be set aside by looking for it in the explorer.
TEST_F(MainWindowAtHomeTest, WhatNoRowIsAboutIsSetAsideFromTheMap) {
    const std::string film = story.home.path("film");
    story.home.file("film", 3'000'000);
    open();
    AppModel& app = story.app();
    ASSERT_TRUE(story.waitUntil([&] { return app.map()->depth() == 1; }));
    const QString key = keyOf(DiskMap::insideID(film));
    ASSERT_TRUE(app.places()->offers({key}).value("aside").toBool());
    app.places()->showPreview(key);
    ASSERT_TRUE(story.waitUntil([&] { return isOpen({"film", "film"}); }));
    app.places()->setAside({key});
    ASSERT_TRUE(story.waitUntil([&] { return app.question()->isOpen(); }));
    EXPECT_TRUE(fs::exists(film)) << "nobody has said yes";
    app.question()->accept();
    ASSERT_TRUE(story.waitUntil([&] { return !fs::exists(film); }));
    ASSERT_TRUE(story.waitUntilIdle());
    app.holding()->undoLastCleanup();
    EXPECT_TRUE(story.waitUntil([&] { return fs::exists(film); }));
    ASSERT_TRUE(story.waitUntilIdle());
}

// After the preview of a folder that of a picture stayed blank: its place was only worked out with the
// window's.
TEST_F(MainWindowAtHomeTest, APictureIsSeenAfterTheFolderItIsIn) {
    const std::string picture = story.home.path("Pictures/a.png");
    story.home.file("Pictures/b", 2'000'000);
    QImage image(64, 48, QImage::Format_RGB32);
    image.fill(Qt::red);
    ASSERT_TRUE(image.save(shown(picture)));
    open();
    AppModel& app = story.app();
    ASSERT_TRUE(story.waitUntil([&] { return app.map()->depth() == 1; }));
    app.places()->showPreview(keyOf(DiskMap::insideID(story.home.path("Pictures"))));
    ASSERT_TRUE(story.waitUntil([&] { return app.preview()->kind() == PreviewDesk::Kind::Folder; }));
    for (QWindow* const window : QGuiApplication::topLevelWindows()) {
        if (window->title() == "Pictures") {
            window->close();
        }
    }
    app.preview()->show(keyOf(picture), "a.png", {picture});
    ASSERT_TRUE(story.waitUntil([&] { return app.preview()->kind() == PreviewDesk::Kind::Picture; }));
    // Of a photo the button that shows it in the file manager was disabled.
    EXPECT_EQ(app.places()->pathOf(app.preview()->key()), picture);
    const auto isSeen = [](const QWindow* window) {
        const auto* const quick = qobject_cast<const QQuickWindow*>(window);
        return quick != nullptr && quick->isVisible() && quick->title() == "a.png" &&
               std::ranges::any_of(quick->findChildren<CardPicture*>(), [](const CardPicture* card) {
                   return card->isVisible() && card->width() == 64 && card->height() == 48;
               });
    };
    EXPECT_TRUE(
        story.waitUntil([&] { return std::ranges::any_of(QGuiApplication::topLevelWindows(), isSeen); }));
}

// The tile of all that is too small for one of its own led to some row of the list.
TEST_F(MainWindowAtHomeTest, TheRestOfAFolderOnTheMapIsLookedForInTheExplorer) {
    for (int at = 0; at < 60; ++at) {
        story.home.file("Videos/clip " + std::to_string(at), 100'000);
    }
    open();
    AppModel& app = story.app();
    app.places()->openFolder(story.home.path("Videos"));
    ASSERT_TRUE(story.waitUntil([&] { return app.map()->depth() == 1 && app.map()->count() == 41; }));
    app.places()->click(app.map()->tile(40, TileList::keyRole).toString());
    EXPECT_TRUE(story.waitUntil(
        [&] { return app.explorer()->isOpen() && app.explorer()->path() == story.home.path("Videos"); }));
    ASSERT_TRUE(story.waitUntilIdle());
}

// The history was to be had from the settings, and from the line about what is set aside while there was any.
TEST_F(MainWindowTest, TheMenuAndTheKeysLeadToHistoryGrowthAndFiles) {
    QQuickWindow& window = open();
    press(Qt::Key_H, Qt::ControlModifier);
    EXPECT_TRUE(story.waitUntil([] { return isOpen({"Historial", "History"}); }));
    window.requestActivate();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    press(Qt::Key_G, Qt::ControlModifier);
    EXPECT_TRUE(story.waitUntil([] { return isOpen({"Crecimiento", "Growth"}); }));
    click(lumo::Words{"Más", "More"}.in());
    for (const lumo::Words& item :
         {lumo::Words{"Abrir informe o plan…", "Open Report or Plan…"},
          lumo::Words{"Guardar informe…", "Save Report…"},
          lumo::Words{"Guardar lo marcado como plan…", "Save Selection as Plan…"},
          lumo::Words{"Historial", "History"}, lumo::Words{"Crecimiento", "Growth"}}) {
        EXPECT_TRUE(story.waitUntil([&] { return named(std::string(item.in())) != nullptr; })) << item.in();
    }
}

// A cleanup was a line of text, and a small button among others to stop it.
TEST_F(MainWindowAtHomeTest, ACleanupIsSeenStepByStepWithABarAndAStop) {
    std::latch mayEnd(1);
    std::atomic<bool> wasStopped = false;
    story.services.carryOut = [&](const std::vector<lumo::CleanupAction>& actions,
                                  const lumo::PathGuard& guard, lumo::CleanupExecutor::Control control) {
        control.onBegin = [&, tell = control.onBegin](std::size_t at) {
            tell(at);
            if (at > 0) {
                mayEnd.wait();
                wasStopped = control.stop.stop_requested();
            }
        };
        return usualCarryOut(actions, guard, control);
    };
    story.addCache(2'000'000);
    story.addOwn(1'000'000);
    open();
    AppModel& app = story.app();
    app.ticked()->toggle(AppStory::ownKey);
    const std::vector<lumo::CleanupAction> actions = app.ticked()->agreement().actions;
    app.cleaning()->requestClean();
    app.question()->accept();
    EXPECT_TRUE(story.waitUntil([&] { return idOf(app.cleaning()->inHand()) == actions.back().id; }));
    EXPECT_EQ(app.rows()->indexOf(keyOf(actions.front().id)), -1) << "it is done";
    EXPECT_TRUE(story.waitUntil([&] { return app.map()->count() == 1; })) << "and gone from the map";
    const std::string step = lumo::Words{"2 de 2: ", "2 of 2: "}.in() + actions.back().title;
    EXPECT_THAT(bytesOf(app.activity()->progressText()), ::testing::StartsWith(step));
    EXPECT_THAT(told(), ::testing::Contains(::testing::HasSubstr(step)));
    const auto share = static_cast<int>(std::lround(100 * app.activity()->progress()));
    EXPECT_TRUE(share > 0 && share < 100) << share;
    EXPECT_NE(named(lumo::Words{"Va por el {} %", "{}% done"}.with(share)), nullptr);
    int largest = 0;
    visit(QAccessible::queryAccessibleInterface(QGuiApplication::focusWindow()), [&](auto& item) {
        const bool isStop = bytesOf(item.text(QAccessible::Name)) == lumo::Words{"Parar", "Stop"}.in();
        largest = isStop ? std::max(largest, item.rect().height()) : largest;
    });
    EXPECT_GE(largest, 36) << "nobody misses it";
    press(Qt::Key_Escape);
    mayEnd.count_down();
    EXPECT_TRUE(story.waitUntilIdle());
    EXPECT_TRUE(wasStopped) << "whatever had the keys";
}

TEST_F(MainWindowAtHomeTest, TheWindowComesBackWhereItWasUnlessNobodyCouldReachItThere) {
    const QRect place(40, 60, 900, 620);
    open().setGeometry(place);
    EXPECT_EQ(begin().geometry(), place);
    // A screen has gone since.
    story.app().settings()->note(preference::windowPlace, "900x620+5000+5000");
    QQuickWindow& window = begin();
    EXPECT_LT(window.x(), 5000);
}

// Nobody could tell from the button what stopping leaves behind.
TEST_F(MainWindowAtHomeTest, StopSaysUnderThePointerWhatStays) {
    std::latch mayEnd(1);
    story.services.desk.now = [this, &mayEnd, main = std::this_thread::get_id()] {
        if (std::this_thread::get_id() != main) {
            mayEnd.wait();
        }
        return story.now();
    };
    QQuickWindow& window = begin();
    ASSERT_TRUE(story.waitUntil([&] { return story.app().activity()->isBusy(); }));
    QAccessibleInterface* stop = nullptr;
    ASSERT_TRUE(
        story.waitUntil([&] { return (stop = named(lumo::Words{"Parar", "Stop"}.in())) != nullptr; }));
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
    stop->object()->setProperty("hoverEnabled", true); // Which this platform has not by itself.
    const QPoint middle = window.mapFromGlobal(stop->rect().center());
    QTest::mouseMove(&window, middle - QPoint(0, 60));
    QTest::mouseMove(&window, middle);
    const QString help =
        shown(lumo::Words{"Para aquí: lo que ya se ve se queda", "Stops here: what is shown stays"}.in());
    EXPECT_TRUE(story.waitUntil([&] {
        const QList<QObject*> parts = stop->object()->findChildren<QObject*>();
        return std::ranges::any_of(parts, [&](const QObject* part) {
            return part->property("text").toString() == help && part->property("opened").toBool();
        });
    }));
    mayEnd.count_down();
    EXPECT_TRUE(story.waitUntilIdle());
}

namespace {

/// How far a color is from the way between two others, in steps of a channel.
int besideTheWay(const QColor& seen, const QColor& from, const QColor& to) {
    const auto beside = [](int value, int one, int other) {
        return std::max({std::min(one, other) - value, value - std::max(one, other), 0});
    };
    return std::max({beside(seen.red(), from.red(), to.red()), beside(seen.green(), from.green(), to.green()),
                     beside(seen.blue(), from.blue(), to.blue())});
}

} // namespace

// The pointer made rows and tiles dark gray for a moment, and let all other tiles fade.
TEST_F(MainWindowTest, HoveringNeverFlashes) {
    QQuickWindow& window = open();
    const std::string title = story.app().rows()->rows().front().title + ", ";
    QAccessibleInterface* row = nullptr;
    visit(QAccessible::queryAccessibleInterface(&window), [&](QAccessibleInterface& item) {
        row = bytesOf(item.text(QAccessible::Name)).starts_with(title) ? &item : row;
    });
    ASSERT_NE(row, nullptr);
    const QAccessibleInterface* const tile =
        named(bytesOf(story.app().map()->tile(0, TileList::labelRole).toString()));
    const QRect rowPlace(window.mapFromGlobal(row->rect().topLeft()), row->rect().size());
    const QRect tilePlace(window.mapFromGlobal(tile->rect().topLeft()), tile->rect().size());
    ASSERT_GT(rowPlace.left(), tilePlace.right()) << "the list, beside the map";
    const QColor fill = story.app().map()->tile(0, TileList::colorRole).value<QColor>();
    const QColor ink(story.app().map()->tile(0, TileList::darkInkRole).toBool() ? 0x1A1A19 : 0xFAFAF8);
    const auto mixed = [&](int below, int above) { return static_cast<int>(below * 0.92 + above * 0.08); };
    struct Place {
        QPoint point;
        QColor before;
        QColor hovered;
    };
    const Place places[] = {
        // Without its texts: the row's margin, and what is below the words of the tile.
        {{rowPlace.left() + 3, rowPlace.bottom() - 12}, QColor(), window.color()},
        {{tilePlace.center().x(), tilePlace.bottom() - 8},
         fill,
         QColor(mixed(fill.red(), ink.red()), mixed(fill.green(), ink.green()),
                mixed(fill.blue(), ink.blue()))},
    };
    for (const Place& place : places) {
        const auto seen = [&] { return window.grabWindow().pixelColor(place.point); };
        if (place.before.isValid()) { // Tiles are made a few a frame.
            ASSERT_TRUE(
                story.waitUntil([&] { return besideTheWay(seen(), place.before, place.before) == 0; }));
        }
        const QColor before = seen();
        int flash = 0;
        QTest::mouseMove(&window, place.point);
        EXPECT_TRUE(story.waitUntil([&] {
            const QColor now = seen();
            flash = std::max(flash, besideTheWay(now, before, place.hovered));
            return besideTheWay(now, place.hovered, place.hovered) <= 2;
        })) << seen().name().toStdString();
        EXPECT_LE(flash, 2);
    }
}
