#include "LumoCore/Basics/Path.h"
#include "LumoCore/Rules/RuleCatalog.h"
#include "Tests/support/Golden.h"
#include "Tests/support/TempHome.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>

using namespace lumo;
using tarvo::testing::TempHome;
using testing::ElementsAre;

namespace {

std::string catalogue(Language language) {
    std::string lines;
    for (const Rule& rule : RuleCatalog::of(System::linux, language)) {
        lines += rule.id;
        for (const std::string& part : {std::string(nameOf(rule.category)), std::string(nameOf(rule.safety)),
                                        dumpJson(encode(rule.cleanup), JsonLayout::line),
                                        rule.closeFirst.value_or("-"), rule.name, rule.explanation}) {
            lines += " | " + part;
        }
        for (const std::string& place : rule.displayPlaces(System::linux, language)) {
            lines += "\n    " + place;
        }
        lines += "\n";
    }
    return lines;
}

std::vector<std::string> found(const std::string& id, const TempHome& home, HomePlaces places) {
    for (const Rule& rule : RuleCatalog::inHome(places, Language::en)) {
        if (rule.id == id) {
            return resolve(rule, home.path());
        }
    }
    return {"no such rule"};
}

std::vector<std::string> found(const std::string& id, const TempHome& home) {
    return found(id, home, HomePlaces(home.path(), System::linux));
}

} // namespace

TEST(LinuxCatalogue, IsWrittenAsAgreedAndNamesEachRuleOnce) {
    tarvo::testing::expectGolden("catalogue-linux-es.txt", catalogue(Language::es));
    tarvo::testing::expectGolden("catalogue-linux-en.txt", catalogue(Language::en));
    std::set<std::string> ids;
    for (const Rule& rule : RuleCatalog::of(System::linux)) {
        EXPECT_TRUE(ids.insert(rule.id).second) << rule.id;
    }
    EXPECT_EQ(RuleCatalog::of(System::macos), RuleCatalog::all());
}

// Two rules that own the same folder would count it twice, and clean it in two ways.
TEST(LinuxCatalogue, LooksNowhereTwice) {
    std::set<std::string> paths;
    for (const Rule& rule : RuleCatalog::of(System::linux)) {
        for (const Locator& place : rule.places) {
            if (const auto* path = std::get_if<locator::Path>(&place)) {
                EXPECT_TRUE(paths.insert(path->path).second) << rule.id << " " << path->path;
            }
        }
    }
    for (const std::string& path : paths) {
        const auto outer = std::ranges::find_if(
            paths, [&](const std::string& other) { return other != path && isInside(path, other); });
        EXPECT_EQ(outer, paths.end()) << path << " lies in " << *outer;
    }
}

TEST(LinuxCatalogue, SaysNothingOfAnotherSystemInWhatItShowsHere) {
    for (const Language language : {Language::es, Language::en}) {
        for (const Rule& rule : RuleCatalog::of(System::linux, language)) {
            if (rule.displayPlaces(System::linux).empty()) {
                continue; // Shown only to those who ask for what other systems have.
            }
            for (const char* word : {"macOS", "Mac ", "Mac.", "Finder", "Apple", "Xcode"}) {
                EXPECT_THAT(rule.name + rule.explanation + dumpJson(encode(rule.cleanup), JsonLayout::line),
                            testing::Not(testing::HasSubstr(word)))
                    << rule.id;
            }
        }
    }
}

TEST(LinuxCatalogue, FindsAPlaceOnceHoweverManyWaysLeadThere) {
    const TempHome home;
    const std::string games = home.folder(".local/share/Steam/steamapps/common");
    home.folder(".steam");
    home.link(".steam/steam", "../.local/share/Steam");
    EXPECT_THAT(found("steam-games", home), ElementsAre(games));

    home.folders({"snap/firefox/common/.cache", "snap/code/common", "Games"});
    EXPECT_THAT(found("snap-app-caches", home), ElementsAre(home.path("snap/firefox/common/.cache")));
    EXPECT_THAT(found("wine-prefixes", home), testing::IsEmpty());
    home.folder(".local/share/lutris");
    EXPECT_THAT(found("wine-prefixes", home), ElementsAre(home.path("Games")));
}

TEST(LinuxCatalogue, LooksInTheFoldersThatTheUserNamed) {
    const TempHome home;
    const std::string package = home.file("Descargas/a.tar.gz");
    home.file("Downloads/b.deb");
    const std::string shot = home.file("Imágenes/Captura desde 2026-01-01.png");
    home.fileWith(".config/user-dirs.dirs",
                  "XDG_DOWNLOAD_DIR=\"$HOME/Descargas\"\nXDG_PICTURES_DIR=\"$HOME/Imágenes\"\n");
    const HomePlaces places(home.path(), System::linux, [](const std::string&) { return std::nullopt; });
    EXPECT_THAT(found("downloaded-installers", home, places), ElementsAre(package));
    EXPECT_THAT(found("desktop-screenshots", home, places), ElementsAre(shot));
}

TEST(LinuxCatalogue, EmptiesWhatAToolWouldReachOnlyInPart) {
    const Rule tool{.id = "t", .safety = Safety::safe, .cleanup = cleanup::Command{"t clean"}};
    EXPECT_EQ(cleanupOf(tool, {"/h/a"}), tool.cleanup);
    EXPECT_EQ(cleanupOf(tool, {"/h/a", "/h/b"}), Cleanup(cleanup::DeleteContents{}));
    Rule review = tool;
    review.safety = Safety::review;
    EXPECT_EQ(cleanupOf(review, {"/h/a", "/h/b"}), review.cleanup);
}
