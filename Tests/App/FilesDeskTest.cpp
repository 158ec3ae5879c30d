#include "LumoCore/Basics/Words.h"
#include "TarvoApp/App/QtText.h"
#include "Tests/App/AppStory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QUrl>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>

using namespace tarvo;
using namespace tarvo::testing;
using ::testing::HasSubstr;

namespace {

/// Reports and plans that go from the window into files and back.
class FilesDeskTest : public ::testing::Test {
  protected:
    FilesDeskTest() {
        story.addCache(2'000'000);
        story.addOwn(1'000'000);
        scan();
    }

    void scan() {
        app().scanning()->scan();
        EXPECT_TRUE(story.waitUntilIdle());
    }
    AppModel& app() { return story.app(); }
    [[nodiscard]] QUrl file() const { return QUrl::fromLocalFile(shown(path())); }
    [[nodiscard]] std::string path() const { return story.home.path("saved ñ.json"); }

    void save(void (FilesDesk::*write)(const QUrl&)) {
        (app().files()->*write)(file());
        EXPECT_TRUE(story.waitUntil([this] { return !app().activity()->notice().isEmpty(); }));
        EXPECT_THAT(bytesOf(app().activity()->notice()), HasSubstr("~/saved ñ.json"));
        app().activity()->dismissNotice();
    }
    void open() {
        app().files()->open(file());
        EXPECT_TRUE(story.waitUntilIdle());
    }
    /// As somebody else might have written it.
    void replaceInFile(const std::string& what, const std::string& by) const {
        std::ifstream in(path());
        std::string bytes{std::istreambuf_iterator<char>(in), {}};
        for (std::size_t at = bytes.find(what); at != std::string::npos;
             at = bytes.find(what, at + by.size())) {
            bytes.replace(at, what.size(), by);
        }
        std::ofstream(path()) << bytes;
    }
    /// Agrees to what is asked.
    void accept() {
        ASSERT_TRUE(app().question()->isConfirming());
        app().question()->accept();
        EXPECT_TRUE(story.waitUntilIdle());
    }

    AppStory story;
};

} // namespace

TEST_F(FilesDeskTest, AnOpenedReportIsShownAsSuchAndIsCleanedByTheGuardsOfAFile) {
    save(&FilesDesk::saveReport);
    std::filesystem::remove_all(story.home.path(".npm"));
    scan();
    EXPECT_FALSE(app().ticked()->plan().canSelect(AppStory::cacheKey));
    story.addCache(1'000'000);
    open();
    EXPECT_THAT(bytesOf(app().scanning()->openedText()), HasSubstr(story.home.path()));
    EXPECT_TRUE(app().ticked()->plan().canSelect(AppStory::cacheKey)) << "as it was then";
    app().cleaning()->requestClean();
    EXPECT_THAT(bytesOf(app().question()->message()), HasSubstr("~/.npm/_npx")) << "named in full";
    accept();
    EXPECT_FALSE(story.hasCache());
    EXPECT_TRUE(story.hasOwn());
    EXPECT_EQ(app().scanning()->openedText(), "") << "the disk is shown again";
}

// What could not be read was told by the command alone.
TEST_F(FilesDeskTest, WhatCouldNotBeReadIsTold) {
    EXPECT_EQ(app().scanning()->unreadableText(), "");
    save(&FilesDesk::saveReport);
    replaceInFile("\"unreadableCount\": 0", "\"unreadableCount\": 1");
    open();
    EXPECT_THAT(bytesOf(app().scanning()->unreadableText()),
                HasSubstr(lumo::Words{"No he podido leer", "could not be read"}.in()));
}

TEST_F(FilesDeskTest, AReportOfAnotherHomeIsOnlyLookedAt) {
    save(&FilesDesk::saveReport);
    replaceInFile(story.home.path() + "\"", "/home/somebody\"");
    open();
    EXPECT_THAT(bytesOf(app().scanning()->openedText()), HasSubstr("/home/somebody"));
    ASSERT_FALSE(app().ticked()->rows().empty());
    for (const Row& row : app().ticked()->rows()) {
        EXPECT_FALSE(app().ticked()->plan().canSelect(row.id)) << row.id;
        EXPECT_FALSE(app().places()->offers({keyOf(row.id)}).value("archive").toBool());
    }
    // Neither the monitor nor what is protected meanwhile makes a plan of it.
    app().settings()->protectPaths({story.home.path("Documents")});
    app().settings()->setAutoCleanWeekly(true);
    EXPECT_TRUE(story.lookAround());
    EXPECT_FALSE(app().ticked()->hasTicked());
    EXPECT_TRUE(story.hasCache());
    scan();
    EXPECT_TRUE(app().ticked()->plan().canSelect(AppStory::cacheKey));
}

TEST_F(FilesDeskTest, ASavedPlanHoldsWhatIsTickedAndIsAskedAboutBeforeItIsCarriedOut) {
    save(&FilesDesk::savePlan);
    story.addOwn(2'000'000);
    open();
    EXPECT_THAT(bytesOf(app().question()->message()), HasSubstr("~/.npm/_npx"));
    accept();
    EXPECT_FALSE(story.hasCache());
    EXPECT_TRUE(story.hasOwn()) << "it was not ticked";
    // The same plan asked once more, with the amounts of the day on which it was saved.
    app().activity()->dismissNotice();
    open();
    EXPECT_FALSE(app().question()->isConfirming()) << "what is gone meanwhile is nothing to do";
    EXPECT_THAT(bytesOf(app().question()->title()),
                HasSubstr(lumo::Words{"no limpiaría nada ahora", "would clean nothing now"}.in()));
    app().question()->cancel();
    story.addCache(7'000'000);
    open();
    EXPECT_THAT(bytesOf(app().question()->acceptText()), HasSubstr(" 7 MB"));
    accept();
    EXPECT_FALSE(story.hasCache());
    EXPECT_TRUE(story.hasOwn());
}

TEST_F(FilesDeskTest, AFileThatDoesWhatNobodyWouldIsRefusedAndNothingIsTouched) {
    save(&FilesDesk::savePlan);
    story.home.file("Documents/letter", 1000);
    replaceInFile("/.npm/_npx", "/Documents");
    open();
    EXPECT_FALSE(app().question()->isConfirming());
    EXPECT_THAT(bytesOf(app().question()->title()), HasSubstr("saved ñ.json"));
    EXPECT_TRUE(std::filesystem::exists(story.home.path("Documents/letter")));
    app().question()->cancel();
    save(&FilesDesk::saveReport);
    replaceInFile("\"safe\"", "\"review\"");
    open();
    EXPECT_THAT(bytesOf(app().activity()->notice()),
                HasSubstr(lumo::Words{"No se ha abierto", "was not opened"}.in()));
    // The parser's own words stood in the Spanish sentence.
    for (const char* damaged : {"no report", "[{\"action\": {", "{\"version\": 1, \"findings\": [ {\"rule"}) {
        app().activity()->dismissNotice();
        std::ofstream(path()) << damaged;
        open();
        EXPECT_THAT(bytesOf(app().activity()->notice()),
                    HasSubstr(lumo::Words{"No se ha abierto saved ñ.json: está dañado o",
                                          "saved ñ.json was not opened: it is damaged, or"}
                                  .in()));
    }
    EXPECT_EQ(app().scanning()->openedText(), "");
}

// The toolkit's own dialog began in the wrong home, in the wrong language, and in colors that could not be
// read.
TEST_F(FilesDeskTest, TheDialogForAFileBeginsInTheHomeAndKnowsWhatIsTaken) {
    story.home.file("plan.json", 10);
    story.home.file("notes.txt", 10);
    story.home.file(".hidden.json", 10);
    story.home.folder("Documents/caf\xE9");
    PickDesk& picking = *app().picking();
    const auto names = [&] {
        EXPECT_TRUE(story.waitUntil([&] { return !picking.isBusy(); }));
        std::vector<std::string> list;
        for (const QVariant& entry : picking.entries()) {
            list.push_back(bytesOf(entry.toMap().value("name").toString()));
        }
        return list;
    };
    picking.begin(".json");
    EXPECT_THAT(names(), ::testing::ElementsAre("Documents", "Library", "plan.json"));
    EXPECT_EQ(picking.folder(), "~");
    EXPECT_TRUE(picking.isTaken("plan")) << "with the ending that it would get";
    EXPECT_FALSE(picking.isTaken("other.json"));
    EXPECT_EQ(pathOf(picking.placeNamed(" other ")), story.home.path("other.json"));
    // A sentence that begins with a Hebrew name was turned round, its end first.
    const QString hebrew = shown("\u05e9\u05dc.json");
    EXPECT_FALSE(shown("\u00ab" + bytesOf(hebrew) + "\u00bb stays").isRightToLeft());
    EXPECT_EQ(pathOf(picking.placeNamed(hebrew)), story.home.path("\u05e9\u05dc.json"));
    picking.enter("Documents");
    ASSERT_EQ(names().size(), 1U);
    picking.enter(picking.entries().front().toMap().value("key").toString());
    EXPECT_THAT(names(), ::testing::IsEmpty());
    EXPECT_EQ(pathOf(picking.here()), story.home.path("Documents/caf\xE9")) << "byte for byte";
    picking.leave();
    EXPECT_EQ(picking.folder(), "~/Documents");
}
