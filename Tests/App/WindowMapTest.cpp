#include "LumoCore/Basics/Words.h"
#include "Tests/App/WindowStory.h"

#include <QGuiApplication>

#include <algorithm>
#include <latch>
#include <thread>

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

// All tiles of a full map were made in one frame, and again after each look into a small folder.
TEST_F(MainWindowAtHomeTest, TilesAreMadeAheadOfTheMapAndKeptForTheNext) {
    story.addCache(2'000'000);
    story.addOwn(1'000'000);
    open();
    MapModel& map = *story.app().map();
    ASSERT_TRUE(story.waitUntil([&] { return !map.wantsSpare(); }));
    const int made = map.rowCount();
    EXPECT_GT(made, map.count());
    std::vector<int> changes;
    const auto note = [&] { changes.push_back(map.rowCount()); };
    QObject::connect(&map, &MapModel::rowsInserted, note);
    QObject::connect(&map, &MapModel::rowsRemoved, note);
    map.zoomInto(AppStory::cacheKey);
    ASSERT_TRUE(story.waitUntil([&] { return map.depth() == 1; }));
    EXPECT_EQ(map.count(), 1);
    EXPECT_EQ(named("model"), nullptr) << "a kept tile is not there for anybody";
    map.zoomOut(0);
    EXPECT_EQ(map.count(), 2);
    EXPECT_EQ(map.rowCount(), made);
    EXPECT_THAT(changes, IsEmpty());
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
    const QString inside = app.map()->data(app.map()->index(0), MapModel::keyRole).toString();
    const QVariantMap offers = app.places()->offers(inside);
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
