#include "LumoCore/Basics/Words.h"
#include "Tests/App/WindowStory.h"

#include <utility>

using namespace tarvo;
using namespace tarvo::testing;
using ::testing::Not;
using ::testing::StartsWith;

namespace {

std::string label(const MapModel& map, int at) {
    return bytesOf(map.tile(at, TileList::labelRole).toString()) + ", ";
}

} // namespace

// In a low window with large letters a long question pushed its buttons out of the dialog, and once one had
// been left the next showed no focus.
TEST_F(MainWindowTest, AQuestionKeepsItsButtonsInALowWindowAndItsFocusIsSeenEachTime) {
    QQuickWindow& window = open();
    AppModel& app = story.app();
    app.settings()->setTextScale(1.3);
    window.resize(900, 600);
    asked::FromFile file{.name = "plan.json",
                         .deleted = std::vector<std::string>(12, "~/.cache/one of many folders")};
    const asked::Clean asked{.actions = app.ticked()->agreement().actions, .shown = {}, .file = file};
    const std::string cancel(lumo::Words{"Cancelar", "Cancel"}.in());
    for (int time = 0; time < 2; ++time) {
        app.question()->ask(asked);
        ASSERT_TRUE(story.waitUntil([&] { return focused() == cancel; })) << focused();
        EXPECT_TRUE(story.waitUntil([&] {
            return window.activeFocusItem()->property("visualFocus").toBool();
        })) << time;
        const QQuickItem& button = *window.activeFocusItem();
        // The dialog's margin and its padding.
        EXPECT_TRUE(story.waitUntil(
            [&] { return button.mapToScene({0, button.height()}).y() <= window.height() - 24 - 24 + 1; }));
        press(Qt::Key_Escape);
        ASSERT_TRUE(story.waitUntil([&] { return !app.question()->isOpen(); }));
    }
}

// The keyboard came into the map at whatever tile had got the place of the last one, and no key led to its
// ends.
TEST_F(MainWindowAtHomeTest, TheKeysAreOnTheSameTileAfterALookAtTheDiskAndReachBothEnds) {
    story.addCache(2'000'000);
    story.addOwn(1'000'000);
    open();
    AppModel& app = story.app();
    const MapModel& map = *app.map();
    ASSERT_EQ(map.count(), 2);
    const std::string first = label(map, 0);
    const std::string last = label(map, 1);
    for (int tabs = 0; tabs < 20 && !focused().starts_with(first); ++tabs) {
        press(Qt::Key_Tab);
    }
    press(Qt::Key_End);
    EXPECT_THAT(focused(), StartsWith(last));
    EXPECT_TRUE(story.waitUntil([&] {
        return app.places()->mapHovered() == map.tile(1, TileList::keyRole).toString();
    })) << "told of as with the pointer";
    story.addOwn(9'000'000);
    app.scanning()->scan();
    ASSERT_TRUE(story.waitUntilIdle());
    ASSERT_EQ(label(map, 0), last) << "the larger one now";
    EXPECT_TRUE(story.waitUntil([&] { return focused().starts_with(label(map, 0)); })) << focused();
    press(Qt::Key_End);
    EXPECT_THAT(focused(), Not(StartsWith(label(map, 0))));
    press(Qt::Key_Home);
    EXPECT_THAT(focused(), StartsWith(label(map, 0)));
}

// From a row that was opened by its menu the next key led to a button far below, which nobody saw.
TEST_F(MainWindowTest, FromAnOpenedRowTheKeysReachItsButtonsAndWhatTheyReachIsSeen) {
    QQuickWindow& window = open();
    const std::string title = story.app().rows()->rows().front().title + ", ";
    const auto tabTo = [&](const std::string& name) {
        for (int tabs = 0; tabs < 60 && !focused().starts_with(name); ++tabs) {
            press(Qt::Key_Tab);
        }
    };
    tabTo(title);
    const std::string growth(lumo::Words{"Ver su evolución", "Show over Time"}.in());
    tabTo(growth);
    ASSERT_EQ(focused(), growth);
    const QQuickItem* const reached = window.activeFocusItem();
    const QQuickItem* list = reached;
    while (!list->inherits("QQuickListView")) {
        list = list->parentItem();
    }
    EXPECT_TRUE(story.waitUntil([&] {
        const QRectF place = reached->mapRectToItem(list, QRectF(0, 0, reached->width(), reached->height()));
        return place.top() >= 0 && place.bottom() <= list->height();
    }));
    press(Qt::Key_F, Qt::ControlModifier);
    press(Qt::Key_Down);
    ASSERT_THAT(focused(), StartsWith(title));
    press(Qt::Key_F10, Qt::ShiftModifier);
    const std::string known(lumo::Words{"Ver qué es", "See What It Is"}.in());
    ASSERT_TRUE(story.waitUntil([&] { return named(known) != nullptr; }));
    for (int steps = 0; steps < 9 && focused() != known; ++steps) {
        press(Qt::Key_Down);
    }
    press(Qt::Key_Return);
    ASSERT_TRUE(story.waitUntil([&] { return focused().starts_with(title); })) << focused();
    ASSERT_TRUE(
        story.waitUntil([&] { return named(lumo::Words("Vista previa", "Preview").in()) != nullptr; }));
    press(Qt::Key_Tab);
    EXPECT_EQ(focused(), lumo::Words("Vista previa", "Preview").in());
    press(Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_THAT(focused(), StartsWith(title));
    press(Qt::Key_Left);
    EXPECT_THAT(focused(), StartsWith(title));
}

// With the kinds beside it the list lay over the map once the window was made large.
TEST_F(MainWindowAtHomeTest, TheMapEndsWhereTheListBegins) {
    story.addCache(2'000'000);
    QQuickWindow& window = open();
    click(lumo::Words{"De cerca", "Closer Look"}.in());
    const auto fits = [&] {
        const QAccessibleInterface* const map = named(lumo::Words{"Mapa del disco", "Disk map"}.in());
        const QAccessibleInterface* const search = named(lumo::Words{"Buscar", "Search"}.in());
        return map != nullptr && search != nullptr && map->rect().right() < search->rect().left();
    };
    for (const auto& [width, height] : {std::pair{1180, 760}, {1366, 841}, {1010, 600}, {1366, 600}}) {
        window.resize(width, height);
        EXPECT_TRUE(story.waitUntil(fits)) << width;
        story.app().map()->zoomInto(AppStory::cacheKey);
        EXPECT_TRUE(story.waitUntil([&] { return story.app().map()->depth() == 1 && fits(); })) << width;
        story.app().map()->zoomOut(0);
        EXPECT_TRUE(story.waitUntil(fits)) << width;
    }
    // Room was kept for a legend that had gone elsewhere.
    window.resize(900, 600);
    EXPECT_TRUE(story.waitUntil([&] {
        const QAccessibleInterface* const map = named(lumo::Words{"Mapa del disco", "Disk map"}.in());
        const QAccessibleInterface* const whole =
            named(lumo::Words{"Ver disco entero", "Show Whole Disk"}.in());
        return map != nullptr && whole != nullptr && map->rect().top() - whole->rect().bottom() < 20;
    }));
}

// The tab that the arrows led to showed no ring.
TEST_F(MainWindowTest, ATabThatTheArrowsLeadToShowsThatItHasTheFocus) {
    QQuickWindow& window = open();
    const std::string list(lumo::Words{"Lista", "List"}.in());
    const std::string explore(lumo::Words{"Explorar", "Explore"}.in());
    for (int tabs = 0; tabs < 30 && focused() != list; ++tabs) {
        press(Qt::Key_Tab);
    }
    for (const auto& [key, name] : {std::pair{Qt::Key_Right, explore}, {Qt::Key_Left, list}}) {
        press(key);
        EXPECT_EQ(focused(), name);
        EXPECT_TRUE(window.activeFocusItem()->property("visualFocus").toBool()) << name;
    }
}

// The tile of a row that had gone from below the pointer stayed lit.
TEST_F(MainWindowTest, NoTileIsLitByARowThatHasGone) {
    QQuickWindow& window = open();
    AppModel& app = story.app();
    const std::string title = app.rows()->rows().front().title + ", ";
    QAccessibleInterface* row = nullptr;
    visit(QAccessible::queryAccessibleInterface(&window), [&](QAccessibleInterface& item) {
        row = bytesOf(item.text(QAccessible::Name)).starts_with(title) ? &item : row;
    });
    ASSERT_NE(row, nullptr);
    QTest::mouseMove(&window, window.mapFromGlobal(row->rect().center()));
    ASSERT_TRUE(story.waitUntil([&] { return !app.places()->hovered().isEmpty(); }));
    app.list()->setSearchText(shown(app.rows()->rows().back().title));
    EXPECT_TRUE(story.waitUntil([&] { return app.places()->hovered().isEmpty(); }));
}
