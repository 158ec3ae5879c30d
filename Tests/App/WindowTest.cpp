#include "LumoCore/Basics/Language.h"
#include "LumoCore/Basics/Words.h"
#include "TarvoApp/App/QtText.h"
#include "TarvoModel/Showing/DiskMap.h"
#include "Tests/App/WindowStory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QAccessible>
#include <QClipboard>
#include <QGuiApplication>
#include <QMetaEnum>
#include <QQuickItem>
#include <QQuickWindow>
#include <QTest>
#include <QTimer>

#include <algorithm>
#include <filesystem>
#include <latch>
#include <thread>

using namespace tarvo;
using namespace tarvo::testing;
using ::testing::Contains;
using ::testing::IsEmpty;
using ::testing::IsSupersetOf;
using ::testing::Not;
using ::testing::StartsWith;

TEST_F(MainWindowTest, AClickOnARowTicksItAndTheFooterSaysSo) {
    open();
    const std::string title = story.app().rows()->rows().front().title;
    const std::string before = bytesOf(story.app().ticked()->selectedBytesText());
    ASSERT_NE(named(before), nullptr);
    click(title);
    const std::string after = bytesOf(story.app().ticked()->selectedBytesText());
    EXPECT_NE(after, before);
    EXPECT_NE(named(after), nullptr);
}

TEST_F(MainWindowTest, SearchingNarrowsTheListAndEscapeWidensItAgain) {
    QQuickWindow& window = open();
    const int all = story.app().rows()->count();
    press(Qt::Key_F, Qt::ControlModifier);
    const std::string search = lumo::Words{"Buscar", "Search"}.in();
    ASSERT_TRUE(story.waitUntil([&] { return focused() == search; })) << focused();
    for (const Qt::Key letter : {Qt::Key_N, Qt::Key_P, Qt::Key_M}) {
        QTest::sendKeyEvent(QTest::Click, &window, letter, QString(QChar(letter)).toLower(), {});
    }
    EXPECT_TRUE(story.waitUntil([&] { return story.app().rows()->count() < all; }));
    EXPECT_GT(story.app().rows()->count(), 0);
    press(Qt::Key_Escape);
    EXPECT_TRUE(story.waitUntil([&] { return story.app().rows()->count() == all; }));
    // That nothing matches was written over what grew most.
    const std::string grew(lumo::Words{"Lo que más ha crecido", "Grew most"}.in());
    EXPECT_TRUE(story.waitUntil([&] { return named(grew) != nullptr; }));
    story.app().list()->setSearchText("no such thing");
    const std::string nothing = lumo::Words{"Nada coincide", "Nothing matches"}.in();
    EXPECT_TRUE(story.waitUntil([&] { return named(nothing) != nullptr; }));
    EXPECT_TRUE(story.waitUntil([&] { return named(grew) == nullptr; }));
    story.app().list()->setSearchText(" ");
    EXPECT_EQ(story.app().rows()->count(), all) << "a blank searches for nothing";
}

TEST_F(MainWindowTest, TheKeyboardGoesFromTileToTileIntoAFolderAndOut) {
    open();
    MapModel& map = *story.app().map();
    const std::string largest = bytesOf(map.tile(0, TileList::labelRole).toString());
    for (int tabs = 0; tabs < 20 && !focused().starts_with(largest); ++tabs) {
        press(Qt::Key_Tab);
    }
    ASSERT_THAT(focused(), StartsWith(largest));
    ASSERT_TRUE(story.waitUntil([&] { return map.tile(0, TileList::canZoomRole).toBool(); }));
    press(Qt::Key_Right);
    EXPECT_THAT(focused(), Not(StartsWith(largest)));
    press(Qt::Key_Left);
    EXPECT_THAT(focused(), StartsWith(largest));
    press(Qt::Key_Return);
    ASSERT_TRUE(story.waitUntil([&] { return map.depth() == 1; }));
    press(Qt::Key_Escape);
    EXPECT_EQ(map.depth(), 0);
}

// Reading the list faded the map away and the other way round, and the row of a tile was nowhere to be seen.
TEST_F(MainWindowTest, WhoeverStaysOnATileSeesItsRow) {
    open();
    const Row last = story.app().rows()->rows().back();
    const std::string row = "ListItem|" + last.title + ", ";
    const auto rowsTold = [&] {
        const std::vector<std::string> items = told();
        return std::ranges::count_if(items, [&](const std::string& item) { return item.starts_with(row); });
    };
    ASSERT_EQ(rowsTold(), 1) << "its tile";
    story.app().places()->setMapHovered(keyOf(last.id));
    EXPECT_TRUE(story.waitUntil([&] { return rowsTold() == 2; }));
}

// The list knew the arrows alone, and was left in its middle when a search began, where no key led into it.
TEST_F(MainWindowTest, TheListGoesToItsEndsAndByPagesAndFromTheSearchToItsFirstRow) {
    QQuickWindow& window = open();
    const std::vector<Row>& rows = story.app().rows()->rows();
    for (int tabs = 0; tabs < 30 && !focused().starts_with(rows.front().title); ++tabs) {
        press(Qt::Key_Tab);
    }
    press(Qt::Key_End);
    EXPECT_THAT(focused(), StartsWith(rows.back().title));
    const QQuickItem* list = window.activeFocusItem();
    while (!list->inherits("QQuickListView")) {
        list = list->parentItem();
    }
    EXPECT_FALSE(list->property("atYBeginning").toBool());
    story.app().list()->setSearchText(" a ");
    EXPECT_TRUE(story.waitUntil([&] { return list->property("atYBeginning").toBool(); }));
    // That nothing matches was told beyond the lower edge of a list that had been scrolled.
    story.app().list()->setSearchText("");
    press(Qt::Key_End);
    story.app().list()->setSearchText("no such thing");
    const std::string nothing = lumo::Words{"Nada coincide", "Nothing matches"}.in();
    EXPECT_TRUE(story.waitUntil([&] {
        const QAccessibleInterface* const line = named(nothing);
        const qreal top = list->mapToScene({}).y() + window.y();
        return line != nullptr && line->rect().top() >= top && line->rect().bottom() <= top + list->height();
    }));
    story.app().list()->setSearchText("");
    press(Qt::Key_F, Qt::ControlModifier);
    press(Qt::Key_Down);
    EXPECT_THAT(focused(), StartsWith(rows.front().title));
    press(Qt::Key_End);
    press(Qt::Key_PageUp);
    EXPECT_THAT(focused(), Not(StartsWith(rows.back().title)));
    press(Qt::Key_Home);
    EXPECT_THAT(focused(), StartsWith(rows.front().title));
}

namespace {

/// How many items of a file's kind are to be seen in another one.
std::ptrdiff_t countOf(const char* kind, const QQuickItem& item) {
    if (!item.isVisible()) {
        return 0;
    }
    std::ptrdiff_t count = QByteArray(item.metaObject()->className()).startsWith(kind) ? 1 : 0;
    for (const QQuickItem* const child : item.childItems()) {
        count += countOf(kind, *child);
    }
    return count;
}

} // namespace

TEST_F(MainWindowTest, AKindOfItemsIsReachedByTheKeyboardAndShowsItsRowsAlone) {
    QQuickWindow& window = open();
    ASSERT_TRUE(story.waitUntil([&] { return !story.app().items()->isLooking(); }));
    click(lumo::Words{"De cerca", "Closer Look"}.in());
    const std::string kinds = lumo::Words{"Lo del análisis", "What the scan found"}.in();
    ASSERT_TRUE(story.waitUntil([&] { return named(kinds) != nullptr; }));
    for (int tabs = 0; tabs < 40 && focused() != kinds; ++tabs) {
        press(Qt::Key_Tab);
    }
    ASSERT_EQ(focused(), kinds);
    press(Qt::Key_Down);
    EXPECT_THAT(focused(), StartsWith(lumo::titleOf(lumo::InventoryKind::large) + ", "));
    press(Qt::Key_Space);
    EXPECT_TRUE(named(focused())->state().checked);
    EXPECT_THAT(told(), Contains(StartsWith("RadioButton|" + lumo::titleOf(lumo::InventoryKind::large))));
    EXPECT_THAT(told(), Contains(StartsWith("CheckBox|Norway 2023.mp4, ")));
    EXPECT_EQ(story.app().rows()->count(), 3);
    // Some rows of the scan stayed to be seen among them.
    const auto rowsSeen = [&] { return countOf("RowDelegate", *window.contentItem()); };
    EXPECT_TRUE(story.waitUntil([&] { return rowsSeen() == 3; })) << rowsSeen();
    // What needs an administrator has the command, and no box to tick.
    story.app().list()->showKind(static_cast<int>(lumo::InventoryKind::system));
    ASSERT_TRUE(story.waitUntil([&] { return named("journal, ") != nullptr; }));
    EXPECT_EQ(named("journal, ")->role(), QAccessible::ListItem);
    story.app().places()->openRow(story.app().rows()->keyAt(0), true);
    const std::string copy = lumo::Words{"Copiar orden", "Copy Command"}.in();
    ASSERT_TRUE(story.waitUntil([&] { return named(copy) != nullptr; }));
    for (int tabs = 0; tabs < 40 && focused() != copy; ++tabs) {
        press(Qt::Key_Tab);
    }
    press(Qt::Key_Space);
    EXPECT_EQ(QGuiApplication::clipboard()->text(), "sudo journalctl --vacuum-time=2weeks");
    // With the kinds beside the list the window was wider than itself.
    const QQuickItem& all = *window.contentItem();
    for (QQuickItem* const item : all.childItems()) {
        EXPECT_LE(item->width(), all.width());
    }
    EXPECT_LE(named(lumo::Words{"Limpiar", "Clean"}.in())->rect().right(), window.x() + window.width());
    story.app().list()->showKind(static_cast<int>(lumo::InventoryKind::docker));
    const std::string why = lumo::Words{"Docker no está en marcha", "Docker is not running"}.in();
    EXPECT_TRUE(story.waitUntil([&] { return named(why) != nullptr; }));
}

TEST_F(MainWindowTest, ARowOpensToAllThatIsKnownOfItAndItsPreview) {
    open();
    const Row row = story.app().rows()->rows().front();
    for (int tabs = 0; tabs < 30 && !focused().starts_with(row.title); ++tabs) {
        press(Qt::Key_Tab);
    }
    ASSERT_THAT(focused(), StartsWith(row.title));
    const std::string preview(lumo::Words{"Vista previa", "Preview"}.in());
    EXPECT_EQ(named(preview), nullptr);
    press(Qt::Key_Right);
    EXPECT_NE(named(preview), nullptr);
    press(Qt::Key_Left);
    EXPECT_EQ(named(preview), nullptr);
    press(Qt::Key_Return, Qt::AltModifier);
    EXPECT_EQ(bytesOf(story.app().preview()->title()), row.title);
    EXPECT_EQ(story.app().map()->depth(), 0);
    ASSERT_TRUE(story.waitUntil([&] { return !story.app().preview()->isBusy(); }));
    EXPECT_EQ(story.app().preview()->kind(), PreviewDesk::Kind::Folder);
}

// A click on a tile that cannot be ticked did nothing, and the menu was out of the keyboard's reach.
TEST_F(MainWindowTest, ATileThatCannotBeTickedOpensWhatIsKnownOfItAndTheMenuComesByKeys) {
    open();
    PlacesDesk& places = *story.app().places();
    // Copied: what is shown is made anew whenever something joins it.
    const std::vector<Row> rows = story.app().ticked()->rows();
    const auto unknown = std::ranges::find(rows, RowGroup::unclassified, &Row::group);
    ASSERT_NE(unknown, rows.end());
    story.app().list()->setSearchText("no such thing");
    click(unknown->title + ", ");
    EXPECT_EQ(idOf(places.opened()), unknown->id);
    EXPECT_EQ(story.app().list()->searchText(), "") << "its row is to be seen";
    EXPECT_TRUE(story.waitUntil([&] { return focused().starts_with(unknown->title); }));
    const std::string open(lumo::Words{"Ver qué es", "See What It Is"}.in());
    press(Qt::Key_F10, Qt::ShiftModifier);
    EXPECT_TRUE(story.waitUntil([&] { return named(open) != nullptr; }));
    const auto enabled = [&](const lumo::Words& words) {
        return qobject_cast<QQuickItem*>(named(words.in())->object())->isEnabled();
    };
    EXPECT_TRUE(enabled({"Ver qué es", "See What It Is"}));
    EXPECT_FALSE(enabled({"Copiar ruta", "Copy Path"})) << "the disk is made up";
    press(Qt::Key_Escape);
    EXPECT_TRUE(story.waitUntil([&] { return named(open) == nullptr; }));
}

// The menu key after it opened the menu of the row that had the focus before.
TEST_F(MainWindowTest, ATileThatIsPressedHasTheFocus) {
    open();
    const Row row = story.app().rows()->rows().front();
    click(row.title + ", ");
    EXPECT_TRUE(story.waitUntil([&] { return focused().starts_with(row.title + ", "); }));
}

TEST_F(MainWindowTest, TheLegendNarrowsListAndMapUntilEscape) {
    open();
    const int all = story.app().rows()->count();
    const std::string safe = lumo::Words{"Solo «Se regenera solo»", "Only “Recreates itself”"}.in();
    EXPECT_THAT(told(), Contains("Button|" + safe));
    click(safe);
    EXPECT_LT(story.app().rows()->count(), all);
    const MapModel& map = *story.app().map();
    for (int at = 0; at < map.count(); ++at) {
        const QString key = map.tile(at, TileList::keyRole).toString();
        EXPECT_EQ(map.tile(at, TileList::dimmedRole).toBool(), story.app().rows()->indexOf(key) < 0);
    }
    EXPECT_TRUE(named(safe)->state().checked);
    press(Qt::Key_Escape);
    EXPECT_EQ(story.app().rows()->count(), all);
    EXPECT_FALSE(named(safe)->state().checked);
}

// With the kinds beside the list the legend was four dots without a word.
TEST_F(MainWindowTest, TheLegendKeepsItsWordsWhereTheMapIsNarrow) {
    QQuickWindow& window = open();
    const std::string last = lumo::Words{"Solo «Sin clasificar»", "Only “Unclassified”"}.in();
    const auto hasWords = [&] {
        QAccessibleInterface* const entry = named(last);
        return entry != nullptr && entry->rect().width() > 60;
    };
    EXPECT_TRUE(story.waitUntil(hasWords));
    const int wide = named(last)->rect().y();
    window.resize(1010, 760);
    EXPECT_TRUE(story.waitUntil([&] { return hasWords() && named(last)->rect().y() != wide; })) << "below";
}

TEST_F(MainWindowTest, SeveralRowsAreChosenByShiftAndTickedTogetherAndSortedOtherwise) {
    open();
    const std::vector<Row> rows = story.app().rows()->rows();
    for (int tabs = 0; tabs < 30 && !focused().starts_with(rows.front().title + ", "); ++tabs) {
        press(Qt::Key_Tab);
    }
    press(Qt::Key_Down, Qt::ShiftModifier);
    press(Qt::Key_Down, Qt::ShiftModifier);
    const std::string chosen = lumo::Words{"3 filas elegidas", "3 rows chosen"}.in();
    ASSERT_NE(named(chosen), nullptr);
    EXPECT_THAT(focused(), ::testing::HasSubstr(lumo::Words{"elegida", "chosen"}.in()));
    const auto ticked = [&] {
        return std::count_if(rows.begin(), rows.begin() + 3, [&](const Row& row) {
            return story.app().ticked()->plan().selection().contains(row.id);
        });
    };
    const auto before = ticked();
    press(Qt::Key_Space);
    EXPECT_NE(ticked(), before);
    press(Qt::Key_Escape);
    EXPECT_EQ(named(chosen), nullptr);
    story.app().list()->setOrder(static_cast<int>(Kinds::Order::ByName));
    EXPECT_NE(story.app().rows()->rows(), rows);
    EXPECT_NE(named(lumo::Words{"Orden: Nombre", "Sort: Name"}.in()), nullptr);
}

// All of the home was of one color, whatever was known of it.
TEST_F(MainWindowAtHomeTest, TheMapOfTheHomeHasTheColoursAndTheSumOfWhatIsKnown) {
    story.addCache(2'000'000);
    story.home.file("Videos/film", 3'000'000);
    open();
    MapModel& map = *story.app().map();
    story.app().places()->openHome();
    ASSERT_TRUE(story.waitUntil([&] { return map.depth() == 1; }));
    const int videos = [&] {
        int at = 0;
        while (at < map.count() && map.tile(at, TileList::keyRole).toString() !=
                                       keyOf(DiskMap::insideID(story.home.path("Videos")))) {
            ++at;
        }
        return at;
    }();
    EXPECT_EQ(bytesOf(map.tile(videos, TileList::wordRole).toString()), groupTitle(RowGroup::keep));
    EXPECT_NE(named(DiskMap::homeTitle() + ", " + bytesOf(map.zoomAmounts().front())), nullptr);
}

TEST_F(MainWindowAtHomeTest, WhatCannotBeArchivedIsSaidUntilItIsClosed) {
    story.addOwn(2'000'000);
    open();
    story.app().archiving()->requestArchive(AppStory::ownKey);
    ASSERT_TRUE(story.waitUntil([&] { return story.app().question()->isOpen(); }));
    ASSERT_TRUE(story.waitUntil([&] { return focused() == lumo::Words{"Cerrar", "Close"}.in(); }));
    EXPECT_NE(named(bytesOf(story.app().question()->title())), nullptr);
    press(Qt::Key_Return);
    EXPECT_TRUE(story.waitUntil([&] { return !story.app().question()->isOpen(); }));
}

TEST_F(MainWindowAtHomeTest, TheQuestionBeforeACleanupStandsOnCancelAndReturnDeletesNothing) {
    story.addCache(2'000'000);
    open();
    press(Qt::Key_Backspace, Qt::ControlModifier);
    ASSERT_TRUE(story.app().question()->isConfirming());
    const std::string cancel(lumo::Words{"Cancelar", "Cancel"}.in());
    ASSERT_TRUE(story.waitUntil([&] { return focused() == cancel; }));
    press(Qt::Key_Tab);
    EXPECT_EQ(focused(), bytesOf(story.app().ticked()->cleanTitleText()));
    press(Qt::Key_Return);
    EXPECT_TRUE(story.app().question()->isConfirming()) << "Return is no answer there";
    press(Qt::Key_Tab, Qt::ShiftModifier);
    press(Qt::Key_Return);
    EXPECT_FALSE(story.app().question()->isConfirming());
    EXPECT_FALSE(story.app().activity()->isBusy());
    EXPECT_TRUE(story.hasCache());
}

// Tiles were all of the neutral gray once, where the compiled window read a color otherwise than the source.
TEST_F(MainWindowTest, TilesAreDrawnInTheColourOfTheirSafety) {
    QQuickWindow& window = open();
    const MapModel& map = *story.app().map();
    const QAccessibleInterface* const tile =
        named(bytesOf(map.tile(0, TileList::labelRole).toString()) + ", ");
    ASSERT_NE(tile, nullptr);
    const QRect place(window.mapFromGlobal(tile->rect().topLeft()), tile->rect().size());
    const QPoint empty(place.center().x(), place.bottom() - 8);
    // Tiles are made a few a frame.
    EXPECT_TRUE(story.waitUntil([&] {
        return window.grabWindow().pixelColor(empty).rgb() ==
               map.tile(0, TileList::colorRole).value<QColor>().rgb();
    })) << window.grabWindow().pixelColor(empty).name().toStdString();
}

// The window refused to close while the disk was watched, and so neither Ctrl+Q nor its close button, which
// had no panel to hide it in, ended the application.
TEST_F(MainWindowAtHomeTest, TheKeysForItAndWithoutAPanelTheCloseButtonEndTheApplication) {
    using Leave = std::function<void(QQuickWindow&)>;
    for (const Leave& leave : {Leave([this](QQuickWindow&) { press(Qt::Key_Q, Qt::ControlModifier); }),
                               Leave([](QQuickWindow& window) { window.close(); })}) {
        QQuickWindow& window = open();
        EXPECT_TRUE(story.app().monitor()->isMonitoring());
        QTimer::singleShot(0, &window, [&] { leave(window); });
        QTimer tooLate;
        QObject::connect(&tooLate, &QTimer::timeout, [] { QGuiApplication::exit(1); });
        tooLate.start(5000);
        EXPECT_EQ(QGuiApplication::exec(), 0);
    }
}

// The free space came during the first scan and was written over the status, and its two parts over each
// other.
TEST_F(MainWindowAtHomeTest, TheHeaderMakesRoomForTheFreeSpaceDuringTheFirstScan) {
    std::latch mayEnd(1);
    story.services.desk.now = [this, &mayEnd, main = std::this_thread::get_id()] {
        if (std::this_thread::get_id() != main) {
            mayEnd.wait();
        }
        return story.now();
    };
    begin();
    AppModel& app = story.app();
    EXPECT_TRUE(story.waitUntil([&] { return !app.volumes()->freeNowText().isEmpty(); }));
    EXPECT_TRUE(story.waitUntil([&] {
        QAccessibleInterface* const figure = named(bytesOf(app.volumes()->freeNowText()));
        QAccessibleInterface* const status = named(bytesOf(app.scanning()->statusText()));
        return figure != nullptr && status != nullptr && figure->rect().bottom() <= status->rect().top();
    }));
    mayEnd.count_down();
    EXPECT_TRUE(story.waitUntilIdle());
}

// The question before a cleanup had no name and no words for a screen reader; free space, status, goal and
// whatever is known of a row were not there at all.
TEST_F(MainWindowAtHomeTest, AScreenReaderIsToldTheWholeStory) {
    story.addCache(2'000'000);
    story.addOwn(1'000'000);
    open();
    AppModel& app = story.app();
    const auto text = [](const QString& words) { return "StaticText|" + bytesOf(words); };
    const lumo::Words freeOf{" libres de ", " free of "};
    EXPECT_THAT(
        told(),
        IsSupersetOf({text(app.volumes()->freeNowText() + shown(freeOf.in()) + app.volumes()->capacityText()),
                      text(app.ticked()->selectedBytesText()), text(app.explaining()->summaryText()),
                      text(shown(lumo::Words{"Objetivo: ", "Goal: "}.in()) + app.ticked()->goalText())}));
    EXPECT_THAT(told(), Contains(StartsWith("ProgressBar|")));
    EXPECT_THAT(told(), Contains(::testing::HasSubstr(lumo::Words{"analizado en", "analyzed in"}.in())));
    const std::string freed = lumo::Words{"se aparta 7 días", "set aside for 7 days"}.in();
    EXPECT_THAT(told(), Not(Contains(StartsWith("StaticText|" + freed))));
    app.places()->openRow(AppStory::ownKey, true);
    EXPECT_TRUE(story.waitUntil([&] { return named(freed) != nullptr; })) << "a line of its details";
    app.ticked()->toggle(AppStory::ownKey);
    press(Qt::Key_Backspace, Qt::ControlModifier);
    ASSERT_TRUE(story.waitUntil([&] { return focused() == lumo::Words{"Cancelar", "Cancel"}.in(); }));
    const std::string question = lumo::Words{"¿{}?", "{}?"}.with(bytesOf(app.ticked()->cleanTitleText()));
    EXPECT_THAT(told(), IsSupersetOf({"Dialog|" + question, text(app.question()->message())}));
    press(Qt::Key_Tab);
    press(Qt::Key_Space);
    ASSERT_TRUE(story.waitUntil([&] { return !story.hasCache() && !app.activity()->isBusy(); }));
    EXPECT_THAT(told(),
                IsSupersetOf({text(app.scanning()->statusText()), text(app.holding()->holdingTitle())}));
}

// "Clean" looked as if it could be pressed, and did nothing, while a scan's first pass ran or nothing was
// ticked.
TEST_F(MainWindowAtHomeTest, AButtonThatWouldDoNothingIsDisabledAndSaysWhy) {
    story.addCache(2'000'000);
    open();
    AppModel& app = story.app();
    const auto disabled = [&](const QString& name) {
        return !qobject_cast<QQuickItem*>(named(bytesOf(name))->object())->isEnabled();
    };
    app.ticked()->deselectAll();
    const QString clean = shown(lumo::Words{"Limpiar…", "Clean…"}.in());
    EXPECT_TRUE(disabled(clean));
    EXPECT_THAT(bytesOf(named(bytesOf(clean))->text(QAccessible::Description)),
                StartsWith(lumo::Words{"Marca antes algo", "Select something"}.in()));
    app.ticked()->selectSafe();
    EXPECT_FALSE(disabled(app.ticked()->cleanTitleText()));
    app.scanning()->scan();
    EXPECT_TRUE(disabled(app.ticked()->cleanTitleText()));
    ASSERT_TRUE(story.waitUntilIdle());
    EXPECT_FALSE(disabled(app.ticked()->cleanTitleText()));
}

TEST_F(MainWindowTest, WhatIsNoBoxToTickIsNotAnnouncedAsOne) {
    QQuickWindow& window = open();
    const std::vector<std::string> items = told();
    for (const Row& row : story.app().rows()->rows()) {
        const auto box = StartsWith("CheckBox|" + row.title + ", ");
        if (story.app().ticked()->plan().canSelect(row.id)) {
            EXPECT_THAT(items, Contains(box));
        } else {
            EXPECT_THAT(items, Not(Contains(box)));
        }
    }
    window.resize(900, 700);
    ASSERT_TRUE(story.waitUntil([&] { return named(lumo::Words{"Mapa", "Map"}.in()) != nullptr; }));
    EXPECT_THAT(told(), Contains("PageTab|" + std::string(lumo::Words{"Mapa", "Map"}.in())));
}

TEST_F(MainWindowTest, EverythingThatCanBePressedHasAName) {
    QQuickWindow& window = open();
    int pressable = 0;
    visit(QAccessible::queryAccessibleInterface(&window), [&](QAccessibleInterface& item) {
        const QAccessible::Role role = item.role();
        if (role == QAccessible::Button || role == QAccessible::CheckBox ||
            role == QAccessible::EditableText || role == QAccessible::PageTab ||
            role == QAccessible::ListItem) {
            ++pressable;
            EXPECT_NE(item.text(QAccessible::Name), "") << item.object()->metaObject()->className();
        }
    });
    EXPECT_GT(pressable, story.app().map()->count());
}

// The dialog for a file was tried with the pointer alone.
TEST_F(MainWindowAtHomeTest, AReportIsFoundAndOpenedWithTheKeyboard) {
    story.addCache(2'000'000);
    story.home.folder("Documents/saved");
    open();
    AppModel& app = story.app();
    app.files()->saveReport(QUrl::fromLocalFile(shown(story.home.path("Documents/saved/report.json"))));
    ASSERT_TRUE(story.waitUntil([&] { return !app.activity()->notice().isEmpty(); }));
    const auto isIn = [&](const std::string& folder) {
        return story.waitUntil([&] {
            return !app.picking()->isBusy() && app.picking()->folder().toStdString() == folder &&
                   !focused().empty();
        });
    };
    press(Qt::Key_O, Qt::ControlModifier);
    ASSERT_TRUE(isIn("~")) << app.picking()->folder().toStdString();
    press(Qt::Key_Return);
    ASSERT_TRUE(isIn("~/Documents")) << app.picking()->folder().toStdString();
    press(Qt::Key_Backspace);
    ASSERT_TRUE(isIn("~")) << app.picking()->folder().toStdString();
    press(Qt::Key_Down);
    press(Qt::Key_Up);
    press(Qt::Key_Return);
    ASSERT_TRUE(isIn("~/Documents")) << app.picking()->folder().toStdString();
    press(Qt::Key_Return);
    ASSERT_TRUE(isIn("~/Documents/saved")) << app.picking()->folder().toStdString();
    press(Qt::Key_Return);
    ASSERT_TRUE(story.waitUntilIdle());
    EXPECT_NE(app.scanning()->openedText(), "");
    const std::string title(lumo::Words{"Abrir informe o plan…", "Open Report or Plan…"}.in());
    press(Qt::Key_O, Qt::ControlModifier);
    ASSERT_TRUE(story.waitUntil([&] { return named(title) != nullptr; }));
    press(Qt::Key_Escape);
    EXPECT_TRUE(story.waitUntil([&] { return named(title) == nullptr; }));
}

TEST(DiskMap, GoesToWhatLiesStraightAhead) {
    // A column at the left, and at the right three rows, the last of them as wide as both others.
    const std::vector<Rect> places{{0, 0, 40, 60}, {40, 0, 60, 30}, {40, 30, 60, 30}, {0, 60, 100, 40}};
    EXPECT_EQ(DiskMap::neighbour(places, 1, -1, 0), 0);
    EXPECT_EQ(DiskMap::neighbour(places, 1, 0, 1), 2);
    EXPECT_EQ(DiskMap::neighbour(places, 0, 0, 1), 3);
    EXPECT_EQ(DiskMap::neighbour(places, 0, -1, 0), std::nullopt);
    EXPECT_EQ(DiskMap::neighbour(places, 3, 0, 1), std::nullopt);
}
