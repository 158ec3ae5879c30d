#include "LumoCore/Basics/Words.h"
#include "Tests/App/WindowStory.h"

#include <QClipboard>
#include <QGuiApplication>

using namespace tarvo;
using namespace tarvo::testing;
using lumo::Words;
using ::testing::Contains;
using ::testing::StartsWith;
using ::testing::UnorderedElementsAre;

namespace {

const std::string copyPaths = Words{"Copiar rutas", "Copy Paths"}.in();
const std::string known = Words{"Ver qué es", "See What It Is"}.in();

} // namespace

class WindowMenuTest : public MainWindowAtHomeTest {
  protected:
    void goToFirstRow() {
        press(Qt::Key_F, Qt::ControlModifier);
        press(Qt::Key_Down);
        const std::string first = story.app().rows()->rows().front().title + ", ";
        ASSERT_TRUE(story.waitUntil([&] { return focused().starts_with(first); })) << focused();
    }
    void openMenu() {
        press(Qt::Key_F10, Qt::ShiftModifier);
        ASSERT_TRUE(story.waitUntil([&] { return named(known) != nullptr; }));
    }
    void choose(const std::string& words) {
        for (int steps = 0; steps < 20 && focused() != words; ++steps) {
            press(Qt::Key_Down);
        }
        ASSERT_EQ(focused(), words);
        press(Qt::Key_Return);
        ASSERT_TRUE(story.waitUntil([&] { return named(known) == nullptr; }));
    }
};

// With several rows chosen the menu was about one of them, which it covered.
TEST_F(WindowMenuTest, IsAboutAllRowsThatAreChosenAndSaysSo) {
    story.addCache(2'000'000);
    story.addOwn(1'000'000);
    open();
    goToFirstRow();
    press(Qt::Key_Down, Qt::ShiftModifier);
    openMenu();
    EXPECT_THAT(told(), Contains("StaticText|" + Words{"Estas 2 filas", "These 2 rows"}.in()));
    EXPECT_FALSE(qobject_cast<QQuickItem*>(named(known)->object())->isEnabled()) << "that is one row's";
    choose(copyPaths);
    EXPECT_THAT(
        QGuiApplication::clipboard()->text().split('\n'),
        UnorderedElementsAre(shown(story.home.path(".npm/_npx")), shown(story.home.path(".cache/whisper"))));
    openMenu();
    choose(Words{"No tocar nunca estas carpetas", "Never Touch These Folders"}.in());
    EXPECT_TRUE(story.waitUntil(
        [&] { return story.app().settings()->value(preference::protectedFolders).size() == 2; }));
    ASSERT_TRUE(story.waitUntilIdle());
}

TEST_F(WindowMenuTest, IsAboutOneRowByItsNameAndIsGoneThroughFromBothEnds) {
    story.addCache(2'000'000);
    story.addOwn(1'000'000);
    open();
    goToFirstRow();
    openMenu();
    const std::string title = story.app().rows()->rows().front().title;
    EXPECT_THAT(told(), Contains("StaticText|" + title));
    const std::string first = focused();
    press(Qt::Key_End);
    const std::string last = Words{"No tocar nunca esta carpeta", "Never Touch This Folder"}.in();
    EXPECT_EQ(focused(), last);
    press(Qt::Key_Home);
    EXPECT_EQ(focused(), first);
    press(Qt::Key_Escape);
    ASSERT_TRUE(story.waitUntil([&] { return named(known) == nullptr; }));
    // It found no window to open in where the row was gone at which it had been opened before.
    story.app().list()->setSearchText(shown(story.app().rows()->rows().back().title.text()));
    ASSERT_TRUE(story.waitUntil([&] { return story.app().rows()->count() == 1; }));
    const std::string other = story.app().rows()->rows().front().title + ", ";
    ASSERT_NE(other, title + ", ");
    QAccessibleInterface* const row = named(other);
    ASSERT_NE(row, nullptr);
    // By the pointer nothing in it is chosen yet.
    QQuickWindow& window = *qobject_cast<QQuickItem*>(row->object())->window();
    QTest::mouseClick(&window, Qt::RightButton, {}, window.mapFromGlobal(row->rect().center()));
    ASSERT_TRUE(story.waitUntil([&] { return named(known) != nullptr; }));
    press(Qt::Key_Up);
    EXPECT_EQ(focused(), last);
    press(Qt::Key_Escape);
    ASSERT_TRUE(story.waitUntil([&] { return named(known) == nullptr; }));
}
