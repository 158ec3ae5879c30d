#include "LumoCore/Basics/Words.h"
#include "Tests/App/WindowStory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <vector>

using namespace tarvo;
using namespace tarvo::testing;
using lumo::Words;
using ::testing::Contains;
using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::StartsWith;

namespace {

const std::string explore = Words{"Explorar", "Explore"}.in();

/// Opens the explorer with its key, and waits until it has measured.
void beginExploring(AppStory& story, const std::function<void()>& press) {
    press();
    const ExplorerDesk& explorer = *story.app().explorer();
    ASSERT_TRUE(story.waitUntil([&] {
        return explorer.isOpen() && !explorer.facts().contains(shown(Words{"midiendo", "measuring"}.in()));
    }));
}

} // namespace

TEST_F(MainWindowAtHomeTest, TheExplorerIsWalkedThroughMarkedSetAsideAndUndoneByTheKeyboard) {
    story.addCache(2'000'000);
    story.home.file("Videos/trip/b", 1'000'000);
    story.home.file("Videos/film", 3'000'000);
    open();
    beginExploring(story, [&] { press(Qt::Key_E, Qt::ControlModifier); });
    ExplorerDesk& explorer = *story.app().explorer();
    ASSERT_TRUE(story.waitUntil([&] { return focused().starts_with("Videos, "); })) << focused();
    press(Qt::Key_Return);
    ASSERT_TRUE(story.waitUntil([&] { return focused().starts_with("film, "); })) << focused();
    EXPECT_EQ(explorer.path(), story.home.path("Videos"));
    press(Qt::Key_End);
    ASSERT_TRUE(story.waitUntil([&] { return focused().starts_with("trip, "); })) << focused();
    EXPECT_THAT(focused(), HasSubstr(Words{"carpeta", "folder"}.in()));
    press(Qt::Key_Home);
    // Mark, and say so to a screen reader.
    press(Qt::Key_Space);
    ASSERT_TRUE(
        story.waitUntil([&] { return named("film, ") != nullptr && named("film, ")->state().checked; }));
    EXPECT_THAT(told(), Contains(StartsWith("CheckBox|film, ")));
    EXPECT_THAT(told(), Contains(StartsWith("List|" + explore + ", Videos")));
    EXPECT_THAT(told(), Contains(StartsWith("AlertMessage|" + Words{"1 marcado", "1 marked"}.in())));
    press(Qt::Key_Delete);
    const std::string cancel(Words{"Cancelar", "Cancel"}.in());
    ASSERT_TRUE(story.waitUntil([&] { return focused() == cancel; }));
    press(Qt::Key_Tab);
    press(Qt::Key_Space);
    const std::string film = story.home.path("Videos/film");
    ASSERT_TRUE(story.waitUntil([&] { return explorer.entries()->count() == 1; }));
    EXPECT_FALSE(std::filesystem::exists(film));
    ASSERT_TRUE(story.waitUntilIdle());
    ASSERT_TRUE(story.waitUntil([&] { return focused().starts_with("trip, "); })) << focused();
    press(Qt::Key_Z, Qt::ControlModifier);
    ASSERT_TRUE(story.waitUntil([&] { return explorer.entries()->count() == 2; }));
    EXPECT_TRUE(std::filesystem::exists(film));
    ASSERT_TRUE(story.waitUntilIdle());
    explorer.moveTo(0);
    press(Qt::Key_Tab, Qt::ShiftModifier);
    press(Qt::Key_Tab);
    press(Qt::Key_Backspace);
    EXPECT_EQ(explorer.path(), story.home.path());
}

// Of what could not be read the window told nothing: it looked like something small.
TEST_F(MainWindowAtHomeTest, TheExplorerTellsWhatIsOldAndWhatCouldNotBeRead) {
    story.addCache(2'000'000);
    story.home.file("Videos/shut/film", 3'000'000);
    story.home.file("Videos/old", 1'000'000);
    story.home.setModified("Videos/old", 1'600'000'000);
    story.services.measure = [measure = story.services.measure, shut = story.home.path("Videos/shut")](
                                 lumo::NamedTree& tree, lumo::platform::WalkProgress& progress,
                                 const std::stop_token& stop) {
        const std::int64_t unreadable = measure(tree, progress, stop);
        tree.markUnreadable(*tree.entryAt(shut));
        return unreadable + 1;
    };
    open();
    beginExploring(story, [&] { press(Qt::Key_E, Qt::ControlModifier); });
    const auto description = [&](const std::string& name) {
        return bytesOf(named(name)->text(QAccessible::Description));
    };
    ASSERT_TRUE(story.waitUntil([&] { return focused().starts_with("Videos, "); })) << focused();
    EXPECT_THAT(description("Videos, "),
                HasSubstr(Words{"Algo de lo que contiene no", "Something in it"}.in()));
    press(Qt::Key_Return);
    ASSERT_TRUE(story.waitUntil([&] { return focused().starts_with("shut, "); })) << focused();
    EXPECT_THAT(description("shut, "), HasSubstr(Words{"No se pudo leer", "It could not be read"}.in()));
    EXPECT_THAT(description("old, "), Not(HasSubstr(Words{"leer", "read"}.in())));
    press(Qt::Key_A);
    ASSERT_TRUE(story.waitUntil([&] { return focused().starts_with("old, "); })) << focused();
    EXPECT_EQ(named("shut, "), nullptr);
    const std::string unchanged = Words{"Sin cambios en ", "Unchanged for "}.in();
    EXPECT_THAT(told(), Contains(StartsWith("AlertMessage|" + unchanged)));
    click(Words{"Ver solo lo antiguo", "Show only the old"}.in());
    const std::string any = Words{"De cualquier edad", "Of any age"}.in();
    ASSERT_TRUE(story.waitUntil([&] { return named(any) != nullptr; }));
    EXPECT_FALSE(named(any)->state().checked);
    click(any);
    ASSERT_TRUE(story.waitUntil([&] { return named("shut, ") != nullptr; }));
}

// The first mark pushed the rows down, and the next click took it away again.
TEST_F(MainWindowAtHomeTest, TheRowsOfTheExplorerStayWhereTheyAreWhenOneIsMarked) {
    story.addCache(2'000'000);
    story.home.file("Videos/film", 3'000'000);
    QQuickWindow& window = open();
    beginExploring(story, [&] { press(Qt::Key_E, Qt::ControlModifier); });
    ASSERT_TRUE(story.waitUntil([&] { return focused().starts_with("Videos, "); })) << focused();
    for (const QSize size : {QSize(1180, 760), QSize(800, 560)}) {
        window.resize(size);
        QTest::qWait(0);
        const QRect before = named("Videos, ")->rect();
        press(Qt::Key_Space);
        const std::string marked = "AlertMessage|" + Words{"1 marcado", "1 marked"}.in();
        ASSERT_TRUE(story.waitUntil([&] {
            return std::ranges::any_of(told(),
                                       [&](const std::string& line) { return line.starts_with(marked); });
        }));
        EXPECT_EQ(named("Videos, ")->rect(), before);
        press(Qt::Key_Space);
    }
}

// With large writing in a small window what is told above the rows left room for none of them.
TEST_F(MainWindowAtHomeTest, TheExplorerShowsWholeRowsInASmallWindowWithLargeWriting) {
    story.addCache(2'000'000);
    story.home.file("Videos/trip/b", 1'000'000);
    story.home.file("Videos/film", 3'000'000);
    QQuickWindow& window = open();
    story.app().settings()->setTextScale(1.6);
    window.resize(800, 560);
    beginExploring(story, [&] { press(Qt::Key_E, Qt::ControlModifier); });
    ExplorerDesk& explorer = *story.app().explorer();
    ASSERT_TRUE(story.waitUntil([&] { return focused().starts_with("Videos, "); })) << focused();
    const auto wholeRows = [&] {
        const QRect list = named(explore + ", ")->rect();
        int rows = 0;
        for (const char* name : {"Videos, ", "film, ", "trip, "}) {
            QAccessibleInterface* const row = named(name);
            rows += row != nullptr && list.contains(row->rect()) ? 1 : 0;
        }
        return rows;
    };
    press(Qt::Key_Return);
    ASSERT_TRUE(story.waitUntil([&] { return focused().starts_with("film, "); })) << focused();
    press(Qt::Key_Space);
    story.app().activity()->say(std::string(90, 'x') + " " + std::string(20, 'y'));
    EXPECT_TRUE(story.waitUntil([&] { return wholeRows() == 2; })) << wholeRows();
    story.app().activity()->say({});
    explorer.setAside(-1);
    ASSERT_TRUE(story.waitUntil([&] { return story.app().question()->isOpen(); }));
    story.app().question()->accept();
    ASSERT_TRUE(story.waitUntil([&] { return story.app().holding()->canUndo(); }));
    ASSERT_TRUE(story.waitUntilIdle());
    // With what a cleanup came to, and what was set aside.
    story.app().activity()->say(std::string(90, 'x') + " " + std::string(20, 'y'));
    EXPECT_TRUE(story.waitUntil([&] { return wholeRows() == 1; })) << wholeRows();
}

TEST_F(MainWindowAtHomeTest, TheExplorersMenuProtectsAndArchivesByTheKeyboard) {
    story.addCache(2'000'000);
    story.home.file("Documents/Notes/x", 3'000'000);
    story.home.file("Documents/Thesis/draft", 1'000'000);
    open();
    beginExploring(story, [&] { press(Qt::Key_E, Qt::ControlModifier); });
    ExplorerDesk& explorer = *story.app().explorer();
    ASSERT_TRUE(story.waitUntil([&] { return focused().starts_with("Documents, "); })) << focused();
    const auto choose = [&](const Words& words) {
        press(Qt::Key_F10, Qt::ShiftModifier);
        ASSERT_TRUE(story.waitUntil([&] { return named(words.in()) != nullptr; }));
        for (int steps = 0; steps < 20 && focused() != words.in(); ++steps) {
            press(Qt::Key_Down);
        }
        ASSERT_EQ(focused(), words.in());
        press(Qt::Key_Space);
    };
    press(Qt::Key_Return);
    ASSERT_TRUE(story.waitUntil([&] { return focused().starts_with("Notes, "); })) << focused();
    choose({"No tocar nunca esta carpeta", "Never Touch This Folder"});
    const std::string notes = story.home.path("Documents/Notes");
    const auto isProtected = [&] {
        return Preferences::load(story.home.path()).value(preference::protectedFolders) == std::vector{notes};
    };
    EXPECT_TRUE(story.waitUntil(isProtected));
    EXPECT_TRUE(story.waitUntil([&] {
        return story.app().activity()->notice().contains(Words{"Ajustes", "Settings"}.in().c_str());
    }));
    ASSERT_TRUE(story.waitUntilIdle());
    ASSERT_TRUE(story.waitUntil([&] { return focused().starts_with("Notes, "); })) << focused();
    const std::string never = Words{"no se toca nunca", "never touched"}.in();
    EXPECT_TRUE(story.waitUntil([&] { return focused().find(never) != std::string::npos; })) << focused();
    // The menu offered what would only have been refused.
    const std::string kept =
        Words{"No tocar nunca: ya está protegido", "Never Touch: Already Protected"}.in();
    press(Qt::Key_F10, Qt::ShiftModifier);
    ASSERT_TRUE(story.waitUntil([&] { return named(kept) != nullptr; }));
    for (const std::string& words :
         {kept, Words{"Marcar", "Mark"}.in(), Words{"Archivar…", "Archive…"}.in()}) {
        EXPECT_FALSE(qobject_cast<QQuickItem*>(named(words)->object())->isEnabled()) << words;
    }
    press(Qt::Key_Escape);
    ASSERT_TRUE(story.waitUntil([&] { return named(kept) == nullptr; }));
    ASSERT_TRUE(story.waitUntil([&] { return focused().starts_with("Notes, "); })) << focused();
    press(Qt::Key_Delete);
    EXPECT_TRUE(story.waitUntil([&] { return story.app().activity()->notice().startsWith("Notes: "); }));
    EXPECT_FALSE(story.app().question()->isAsking());

    press(Qt::Key_Down);
    ASSERT_TRUE(story.waitUntil([&] { return focused().starts_with("Thesis, "); })) << focused();
    choose({"Archivar…", "Archive…"});
    const std::string cancel(Words{"Cancelar", "Cancel"}.in());
    ASSERT_TRUE(story.waitUntil([&] { return focused() == cancel; })) << focused();
    press(Qt::Key_Tab);
    press(Qt::Key_Space);
    ASSERT_TRUE(story.waitUntil([&] { return explorer.entries()->count() == 2 && named("Thesis.zip, "); }));
    EXPECT_TRUE(std::filesystem::exists(story.home.path("Documents/Thesis.zip")));
    EXPECT_FALSE(std::filesystem::exists(story.home.path("Documents/Thesis")));
    EXPECT_TRUE(std::filesystem::exists(story.home.path("Documents/Notes/x")));
    ASSERT_TRUE(story.waitUntilIdle());
    // What is set aside is looked up beside what the window does.
    ASSERT_TRUE(story.waitUntil([&] { return story.app().holding()->canUndo(); }));
    // The keys are the window's again when the question has closed.
    ASSERT_TRUE(story.waitUntil([&] { return focused().starts_with("Thesis.zip, "); })) << focused();
    press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_TRUE(
        story.waitUntil([&] { return std::filesystem::exists(story.home.path("Documents/Thesis/draft")); }));
    ASSERT_TRUE(story.waitUntilIdle());
}

TEST_F(MainWindowTest, TheExplorerFiltersHasItsMenuAndGivesWayToTheList) {
    QQuickWindow& window = open();
    beginExploring(story, [&] { click(explore); });
    ExplorerDesk& explorer = *story.app().explorer();
    ASSERT_TRUE(story.waitUntil([&] { return explorer.entries()->count() > 3; }));
    const int all = explorer.entries()->count();
    const std::string setAside = Words{"Apartar…", "Set Aside…"}.in();
    EXPECT_FALSE(qobject_cast<QQuickItem*>(named(setAside)->object())->isEnabled());
    EXPECT_THAT(bytesOf(named(setAside)->text(QAccessible::Description)),
                StartsWith(Words{"Marca antes algo", "Mark something first"}.in()));
    press(Qt::Key_F, Qt::ControlModifier);
    EXPECT_EQ(focused(), (Words{"Filtrar por nombre", "Filter by name"}.in()));
    QTest::sendKeyEvent(QTest::Click, &window, Qt::Key_Z, "z", {});
    QTest::sendKeyEvent(QTest::Click, &window, Qt::Key_Z, "z", {});
    EXPECT_EQ(explorer.entries()->count(), 0);
    press(Qt::Key_Escape);
    EXPECT_EQ(explorer.entries()->count(), all);
    press(Qt::Key_Down);
    press(Qt::Key_F10, Qt::ShiftModifier);
    const std::string goIn = Words{"Entrar", "Go In"}.in();
    ASSERT_TRUE(story.waitUntil([&] { return named(goIn) != nullptr; }));
    for (const Words& words : {Words{"Marcar", "Mark"}, Words{"Ver qué es", "See What It Is"},
                               Words{"Mostrar en el gestor", "Show in File"}, Words{"Archivar…", "Archive…"},
                               Words{"No tocar nunca", "Never Touch"}}) {
        EXPECT_NE(named(words.in()), nullptr) << words.in();
    }
    press(Qt::Key_Escape);
    ASSERT_TRUE(story.waitUntil([&] { return named(goIn) == nullptr; }));
    click(Words{"Lista", "List"}.in());
    EXPECT_FALSE(explorer.isOpen());
    EXPECT_EQ(named(setAside), nullptr);
    EXPECT_NE(named(story.app().rows()->rows().front().title), nullptr);
    // The kinds lay over the rows when the list had been hidden before.
    click(Words{"De cerca", "Closer Look"}.in());
    const std::string kinds = Words{"Qué enseña la lista", "What the list shows"}.in();
    const std::string row = story.app().rows()->rows().front().title;
    EXPECT_TRUE(story.waitUntil([&] {
        return named(kinds) != nullptr && named(kinds)->rect().width() > 100 &&
               !named(kinds)->rect().intersects(named(row)->rect());
    }));
    // By the keys a tab was another one, and what it stands for was not shown.
    auto* const tab = qobject_cast<QQuickItem*>(named(Words{"Lista", "List"}.in())->object());
    tab->forceActiveFocus(Qt::TabFocusReason);
    press(Qt::Key_Right);
    EXPECT_TRUE(explorer.isOpen());
    press(Qt::Key_Left);
    EXPECT_FALSE(explorer.isOpen());
}
